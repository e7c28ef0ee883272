#include "core/text_file.h"

#include <cerrno>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <system_error>

#include "core/fault.h"
#include "core/file_commit.h"
#include "core/formatting.h"

namespace quillet {

namespace {
bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }
}  // namespace

TextReader TextReader::Open(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::FILE* probe = std::fopen(path.c_str(), "rb");
    if (probe) std::fclose(probe);
    throw Fault(errno == ENOENT ? kFaultFileNotFound : kFaultPathAccess, path);
  }
  std::ostringstream ss;
  ss << in.rdbuf();
  if (in.bad()) throw Fault(kFaultPathAccess, path);
  return TextReader(ss.str());
}

TextReader TextReader::FromText(std::string content) { return TextReader(std::move(content)); }

void TextReader::SkipBlanks() {
  while (pos_ < data_.size() && IsBlank(data_[pos_])) ++pos_;
}

bool TextReader::AtEnd() const {
  for (std::size_t i = pos_; i < data_.size(); ++i) {
    const char c = data_[i];
    if (!IsBlank(c) && !IsLineEnd(c) && c != '\x1a') return false;
  }
  return true;
}

TextField TextReader::Next() {
  SkipBlanks();
  if (pos_ >= data_.size()) throw Fault(kFaultInputPastEnd);
  TextField f;
  if (data_[pos_] == '"') {
    f.quoted = true;
    const std::size_t close = data_.find('"', pos_ + 1);
    if (close == std::string::npos) {
      f.text = data_.substr(pos_ + 1);
      pos_ = data_.size();
      return f;
    }
    f.text = data_.substr(pos_ + 1, close - pos_ - 1);
    pos_ = close + 1;
    // Whatever stands between the closing quote and the next separator is dropped.
    while (pos_ < data_.size() && data_[pos_] != ',' && !IsLineEnd(data_[pos_])) ++pos_;
  } else {
    const std::size_t start = pos_;
    while (pos_ < data_.size() && data_[pos_] != ',' && !IsLineEnd(data_[pos_])) ++pos_;
    std::size_t end = pos_;
    while (end > start && IsBlank(data_[end - 1])) --end;
    f.text = data_.substr(start, end - start);
  }
  // Consume one separator: a comma (and a line end right behind it is not a new field
  // only when the comma ends the line), or one line end (CR LF counts as one).
  if (pos_ < data_.size()) {
    if (data_[pos_] == ',') {
      ++pos_;
    } else if (data_[pos_] == '\r') {
      ++pos_;
      if (pos_ < data_.size() && data_[pos_] == '\n') ++pos_;
    } else if (data_[pos_] == '\n') {
      ++pos_;
    }
  }
  return f;
}

std::string TextReader::ReadText() { return Next().text; }

Cell TextReader::ReadCell() {
  TextField f = Next();
  if (f.quoted) return f.text.empty() ? Cell::OfEmptyText() : Cell::OfText(f.text);
  if (f.text.empty()) return Cell();
  double v = 0;
  if (ParseWholeNumber(f.text, v)) return Cell::OfNumber(v);
  return Cell::OfText(f.text);
}

double TextReader::ReadNumber() {
  TextField f = Next();
  if (f.text.empty()) return 0.0;
  double v = 0;
  if (!ParseWholeNumber(f.text, v)) throw Fault(kFaultTypeMismatch, f.text);
  return v;
}

std::string TextReader::ReadLine() {
  if (pos_ >= data_.size()) throw Fault(kFaultInputPastEnd);
  const std::size_t start = pos_;
  while (pos_ < data_.size() && !IsLineEnd(data_[pos_])) ++pos_;
  std::string line = data_.substr(start, pos_ - start);
  if (pos_ < data_.size() && data_[pos_] == '\r') ++pos_;
  if (pos_ < data_.size() && data_[pos_] == '\n') ++pos_;
  return line;
}

bool ParseWholeNumber(std::string_view text, double& out) {
  std::size_t b = 0, e = text.size();
  while (b < e && IsBlank(text[b])) ++b;
  while (e > b && IsBlank(text[e - 1])) --e;
  if (b == e) return false;
  std::string_view s = text.substr(b, e - b);
  if (s.front() == '+') s.remove_prefix(1);
  if (s.empty()) return false;
  double v = 0;
  const auto [ptr, ec] = std::from_chars(s.data(), s.data() + s.size(), v, std::chars_format::general);
  if (ec != std::errc() || ptr != s.data() + s.size()) return false;
  out = v;
  return true;
}

std::string StrOfNumber(Number value) {
  const double v = value.Value();
  std::string g = GeneralNumber(v);
  // Str drops the zero before the point: " .5", "-.25".
  const std::size_t digit = v < 0 ? 1 : 0;
  if (g.size() > digit + 1 && g[digit] == '0' && g[digit + 1] == '.') g.erase(digit, 1);
  return v < 0 ? g : " " + g;
}

void TextWriter::Separator() {
  if (lineStarted_) out_ += ',';
  lineStarted_ = true;
}

void TextWriter::Text(std::string_view s) {
  Separator();
  out_ += '"';
  out_ += s;
  out_ += '"';
}

void TextWriter::Num(Number n) {
  Separator();
  if (!n.IsEmpty()) out_ += GeneralNumber(n.Value());
}

void TextWriter::Put(const Cell& c) {
  switch (c.kind()) {
    case Cell::Kind::Nothing: Separator(); break;
    case Cell::Kind::EmptyText: Text(""); break;
    case Cell::Kind::Text: Text(c.Text()); break;
    case Cell::Kind::Number: Num(c.Number()); break;
  }
}

void TextWriter::Raw(std::string_view s) {
  Separator();
  out_ += s;
}

void TextWriter::EndLine() {
  out_ += lineEnd_;
  lineStarted_ = false;
}

void TextWriter::CommitTo(const std::string& path) const { CommitBytesTo(path, out_); }

}  // namespace quillet
