#pragma once
// The one reader and the one writer of the system's text files: fields separated by
// commas or line ends; a field that starts with a double quote runs to the next double
// quote (there is no escape for a quote inside); blanks around unquoted fields are
// dropped; reading past the end is fault 62. Strings are written quoted, numbers bare
// with a decimal point whatever the locale, unassigned cells as nothing.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "core/cell.h"
#include "core/number.h"

namespace quillet {

struct TextField {
  std::string text;
  bool quoted = false;
};

class TextReader {
 public:
  // Reads the whole file at once; a missing file is fault 53, an unreadable one 75.
  static TextReader Open(const std::string& path);
  static TextReader FromText(std::string content);

  TextField Next();           // fault 62 past the end
  std::string ReadText();     // a field as text
  Cell ReadCell();            // number, empty text, text or nothing
  double ReadNumber();        // a numeric field; text that is not a number is fault 13
  // Reads the rest of the present line as it stands (for line-oriented sections).
  std::string ReadLine();
  bool AtEnd() const;         // only line ends and blanks remain

 private:
  explicit TextReader(std::string content) : data_(std::move(content)) {}
  void SkipBlanks();
  std::string data_;
  std::size_t pos_ = 0;
};

// Whole-number text of a number as the platform's Str gives it: a leading blank in
// place of the sign for numbers not below 0.
std::string StrOfNumber(Number value);

// Builds a file in memory and puts it in place as core/file_commit.h tells: a crash or a
// full disk never leaves half a file where a good one was.
class TextWriter {
 public:
  explicit TextWriter(std::string lineEnd = "\n") : lineEnd_(std::move(lineEnd)) {}
  void Text(std::string_view s);
  void Num(Number n);   // empty number: nothing
  void Put(const Cell& c);
  void Raw(std::string_view s);  // unquoted, as it stands
  void EndLine();
  const std::string& content() const { return out_; }
  // Faults: 75 when the file cannot be created or written, 61 when the disk is full.
  void CommitTo(const std::string& path) const;

 private:
  void Separator();
  std::string lineEnd_;
  std::string out_;
  bool lineStarted_ = false;
};

// True when the text is a whole decimal number (blanks around allowed).
bool ParseWholeNumber(std::string_view text, double& out);

}  // namespace quillet
