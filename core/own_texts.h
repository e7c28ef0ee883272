#pragma once
// The program's own words, those that no row of loglang.txt holds (the help viewer, the
// port dialog's device notes, a failed save of the settings), in the eight languages of
// the language file, by LanguageIndex. Outside 1..8 they are English.
#include <string>

namespace quillet {

enum class OwnText {
  TypeAKeyword,      // the help viewer's search box
  Help,              // the help viewer's title when the file has none
  HelpFileMissing,   // %1: the help file's path
  NoDevice,          // a port choice that means no device here
  Yes,
  No,
  SettingsNotSaved,  // %1: the settings file's path
};

const std::string& OwnTextIn(double languageIndex, OwnText text);

// The rows that start-up can show before a language has been chosen (the port message
// and its title, the port and language dialogs), in English, for language 0.
struct StartupRow {
  int row;
  const char* text;
};
const StartupRow* StartupRows(int& count);

}  // namespace quillet
