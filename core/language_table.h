#pragma once
// The language table: all words of the user interface, read from loglang.txt. A language
// is a column; string n of language i is LanguageTable[i][n].
#include <cstdint>
#include <string>

#include "core/bounded_table.h"

namespace quillet {

constexpr int kLanguages = 8;
constexpr int kStrings = 200;

struct LanguageData {
  Table<Table<std::string, 0, kStrings>, 0, kLanguages> LanguageTable;
  std::int16_t LanguageCount = 0;
  Table<std::string, 0, kLanguages> LanguageName;
  Table<std::string, 0, kLanguages> LanguageHelpFile;
  std::string CurrentHelpFile;
};

// Reads the counts, names, help file names and strings of the file at path. A fault
// stops the reading where it happened; what was read before it stays.
void ReadLanguageFile(const std::string& path, LanguageData& L);

}  // namespace quillet
