#pragma once
// The record file: the saved record, which the program opens again, and the user's text
// export in one. Lines 1 to 13 are comma-file fields (texts quoted, numbers with a
// point); each sample is one line of time, a tab and the value.
#include <string>

namespace quillet {
struct App;

// The value format of a record's samples and statistics, by RecordModelCode; empty means
// the general form of the number.
std::string RecordValueFormat(double modelCode);

// Writes the record to path, replacing the file. With displayedOnly the shown part and
// its statistics are written, otherwise the whole record. Composes RecordStats.
void WriteRecordFile(App& app, const std::string& path, bool displayedOnly);

// Replaces the record on screen with the one in path, then redraws. Handles its own
// faults: the user is told, and the Open command runs again for another choice.
void ReadRecordFile(App& app, const std::string& path);

// The Open command.
void MnuOpen(App& app);

}  // namespace quillet
