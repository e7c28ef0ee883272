#include <cctype>
#include <charconv>
#include <string>

#include "core/formatting.h"

namespace quillet {

// Up to 15 significant digits with trailing zeros dropped; exponent form ("1E+20",
// "1E-05") where the plain form would need more digits than that. to_chars, unlike
// printf, ignores the C locale, which the window toolkit sets to the user's: a German
// desktop must not turn the point into a comma here.
std::string GeneralNumber(double value) {
  if (value == 0.0) return "0";
  char buf[64];
  const auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, 15);
  std::string s(buf, res.ptr);
  for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  const std::size_t e = s.find('E');
  std::string mant = e == std::string::npos ? s : s.substr(0, e);
  std::string expo = e == std::string::npos ? "" : s.substr(e);
  if (mant.find('.') != std::string::npos) {
    while (!mant.empty() && mant.back() == '0') mant.pop_back();
    if (!mant.empty() && mant.back() == '.') mant.pop_back();
  }
  return mant + expo;
}

}  // namespace quillet
