#pragma once
// A cell of the settings file's scale tables and of the profile tables: a number, the
// empty text (written as two quote marks) or nothing at all (nothing between commas).
// Nothing and the empty text both compare equal to the empty text, so both make an
// undefined table point.
#include <string>

namespace quillet {

class Cell {
 public:
  enum class Kind { Nothing, EmptyText, Number, Text };

  constexpr Cell() = default;
  static Cell OfNumber(double v) { Cell c; c.kind_ = Kind::Number; c.num_ = v; return c; }
  static Cell OfEmptyText() { Cell c; c.kind_ = Kind::EmptyText; return c; }
  static Cell OfText(std::string t) {
    Cell c;
    c.kind_ = t.empty() ? Kind::EmptyText : Kind::Text;
    c.text_ = std::move(t);
    return c;
  }

  Kind kind() const { return kind_; }
  bool IsNothing() const { return kind_ == Kind::Nothing; }
  bool IsNumber() const { return kind_ == Kind::Number; }
  // True where the cell compares equal to "": nothing and the empty text.
  bool EqualsEmptyText() const { return kind_ == Kind::Nothing || kind_ == Kind::EmptyText; }
  double Number() const { return kind_ == Kind::Number ? num_ : 0.0; }
  const std::string& Text() const { return text_; }

  bool operator==(const Cell& o) const {
    return kind_ == o.kind_ && num_ == o.num_ && text_ == o.text_;
  }

 private:
  Kind kind_ = Kind::Nothing;
  double num_ = 0.0;
  std::string text_;
};

}  // namespace quillet
