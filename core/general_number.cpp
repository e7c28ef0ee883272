#include <cstdio>
#include <cstring>
#include <string>

#include "core/formatting.h"

namespace quillet {

// Up to 15 significant digits with trailing zeros dropped; exponent form ("1E+20",
// "1E-05") where the plain form would need more digits than that.
std::string GeneralNumber(double value) {
  if (value == 0.0) return "0";
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.15G", value);
  std::string s(buf);
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
