#pragma once
// What the commands of quillet-cli share: options, files, and the one-line error.
#include <map>
#include <set>
#include <string>

#include "core/platform.h"

namespace quillet {
struct App;

using Options = std::map<std::string, std::string>;

// Thrown by a command to end with one line on standard error and a non-zero exit.
struct CommandError {
  std::string message;
  int exitCode = 1;
};

// "--name value" pairs after the command. Positional arguments, where known holds "", go
// under "" in order, joined by a newline. Anything else unknown is a CommandError.
Options ParseOptions(const std::string& command, int argc, char** argv, int first,
                     const std::set<std::string>& known, const std::set<std::string>& flags = {});

const std::string* Find(const Options& opts, const std::string& name);
std::string Required(const Options& opts, const std::string& command, const std::string& name);

// The folder of the running program, where loglang.txt and probes.dat lie.
std::string ProgramDir();

// A settings path that never exists: without --settings a command starts as a first start.
std::string NoSettingsFile();

// The language index in the settings file that a --settings among the arguments after the
// command names (the last one counts, as among the options); 0 when none is named or the
// file cannot be read whole, as the program's own start-up would take it.
double SettingsLanguage(int argc, char** argv);

// The program's folder and the current one, with the files --settings and --probes name.
FilePlaces CommandPlaces(const Options& opts);

// StartProgram through the dispatcher; a start-up that ends the program ends the command.
void StartCommandApp(App& app);

std::string ReadBinaryFile(const std::string& path);
// Writes through a temporary file and a rename: the file is whole or not there.
void WriteBinaryFile(const std::string& path, const std::string& bytes);

// Fails unless the serial device can be opened for reading and writing.
void CheckDevice(const std::string& device);

// --timeout in seconds, above 0; 0 when not given.
double TimeoutOption(const Options& opts);

// 1200 or 4800, or empty when not given.
std::string BaudOption(const Options& opts);

}  // namespace quillet
