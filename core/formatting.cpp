#include "core/formatting.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "core/fault.h"

namespace quillet {

namespace {

// Significant digits a double is taken to before a pattern rounds it: what the user
// would have typed, so 2.675 rounds as the decimal 2.675 and not as its binary
// neighbour 2.67499999999999982236431605997495353221893310546875.
constexpr int kSignificantDigits = 15;

// A non-negative number as a decimal digit string m and a point position: the value is
// 0.m times ten to the power point. No leading zeros in m; an empty m is zero.
struct Decimal {
  std::string digits;
  int point = 0;

  // Digit i of m counted from the left, with zeros beyond either end.
  char At(int i) const {
    return i >= 0 && i < static_cast<int>(digits.size()) ? digits[static_cast<std::size_t>(i)] : '0';
  }
};

// |value| to 15 significant digits, then rounded half away from zero to `decimals`
// places after the point.
Decimal RoundedDecimal(double value, int decimals) {
  Decimal d;
  if (value == 0.0) return d;
  char buf[64];
  const auto res = std::to_chars(buf, buf + sizeof buf, std::fabs(value), std::chars_format::scientific,
                                 kSignificantDigits - 1);
  const std::string s(buf, res.ptr);  // "d.dddddddddddddde+XX"
  const std::size_t e = s.find('e');
  d.digits = s.substr(0, 1) + s.substr(2, e - 2);
  d.point = std::stoi(s.substr(e + 1)) + 1;

  const int keep = d.point + decimals;  // digits of m that survive the rounding
  if (keep >= static_cast<int>(d.digits.size())) return d;
  if (keep < 0) return Decimal{};
  const bool up = d.digits[static_cast<std::size_t>(keep)] >= '5';
  d.digits.resize(static_cast<std::size_t>(keep));
  if (up) {
    int i = keep - 1;
    while (i >= 0 && d.digits[static_cast<std::size_t>(i)] == '9') {
      d.digits[static_cast<std::size_t>(i)] = '0';
      --i;
    }
    if (i >= 0) {
      ++d.digits[static_cast<std::size_t>(i)];
    } else {
      d.digits.insert(d.digits.begin(), '1');
      ++d.point;
    }
  }
  while (!d.digits.empty() && d.digits.back() == '0') d.digits.pop_back();
  if (d.digits.empty()) d.point = 0;
  return d;
}

bool IsDigitPlaceholder(char c) { return c == '#' || c == '0'; }

std::vector<std::string_view> SplitSections(std::string_view pattern) {
  std::vector<std::string_view> out;
  std::size_t start = 0;
  for (;;) {
    const std::size_t semi = pattern.find(';', start);
    out.push_back(pattern.substr(start, semi == std::string_view::npos ? semi : semi - start));
    if (semi == std::string_view::npos) return out;
    start = semi + 1;
  }
}

// One section applied to a non-negative value.
std::string FormatSection(double value, std::string_view section) {
  const std::size_t dot = section.find('.');
  const bool hasPoint = dot != std::string_view::npos;
  const std::string_view intPart = hasPoint ? section.substr(0, dot) : section;
  const std::string_view fracPart = hasPoint ? section.substr(dot + 1) : std::string_view{};

  // Integer placeholders, the first required one, and what the commas do: a comma with a
  // placeholder after it groups by thousands; commas right after the last placeholder
  // divide by a thousand each.
  int intSlots = 0, firstRequired = -1, lastSlotPos = -1;
  for (std::size_t i = 0; i < intPart.size(); ++i) {
    if (!IsDigitPlaceholder(intPart[i])) continue;
    if (intPart[i] == '0' && firstRequired < 0) firstRequired = intSlots;
    ++intSlots;
    lastSlotPos = static_cast<int>(i);
  }
  bool grouping = false;
  int scaleCommas = 0;
  for (std::size_t i = 0; i < intPart.size(); ++i) {
    if (intPart[i] != ',') continue;
    if (static_cast<int>(i) < lastSlotPos) grouping = true;
  }
  if (lastSlotPos >= 0) {
    for (std::size_t i = static_cast<std::size_t>(lastSlotPos) + 1; i < intPart.size() && intPart[i] == ',';
         ++i)
      ++scaleCommas;
  }
  for (int i = 0; i < scaleCommas; ++i) value /= 1000.0;

  int decimals = 0, requiredDecimals = 0;
  for (char c : fracPart) {
    if (!IsDigitPlaceholder(c)) continue;
    ++decimals;
    if (c == '0') requiredDecimals = decimals;
  }

  const Decimal d = RoundedDecimal(value, decimals);

  // Integer digits, padded with zeros to the required count.
  std::string intDigits;
  for (int i = 0; i < d.point; ++i) intDigits += d.At(i);
  const int required = firstRequired < 0 ? 0 : intSlots - firstRequired;
  if (static_cast<int>(intDigits.size()) < required)
    intDigits.insert(0, static_cast<std::size_t>(required) - intDigits.size(), '0');
  const int n = static_cast<int>(intDigits.size());

  std::string out;
  // Digit idx of intDigits, with a separator behind it where a group of three begins.
  auto putDigit = [&](int idx) {
    out += intDigits[static_cast<std::size_t>(idx)];
    const int fromRight = n - 1 - idx;
    if (grouping && fromRight > 0 && fromRight % 3 == 0) out += ',';
  };

  // Placeholders are filled from the right; digits beyond them all go into the leftmost.
  int slot = 0;
  for (char c : intPart) {
    if (IsDigitPlaceholder(c)) {
      const int fromRight = intSlots - 1 - slot;
      if (slot == 0) {
        for (int idx = 0; idx <= n - 1 - fromRight; ++idx) putDigit(idx);
      } else if (fromRight < n) {
        putDigit(n - 1 - fromRight);
      }
      ++slot;
    } else if (c != ',') {
      out += c;
    }
  }
  if (intSlots == 0)
    for (int idx = 0; idx < n; ++idx) putDigit(idx);

  if (!hasPoint) return out;
  out += '.';

  // Fraction digits, with the trailing zeros of optional places dropped.
  std::string frac;
  for (int j = 0; j < decimals; ++j) frac += d.At(d.point + j);
  while (static_cast<int>(frac.size()) > requiredDecimals && frac.back() == '0') frac.pop_back();
  std::size_t next = 0;
  for (char c : fracPart) {
    if (IsDigitPlaceholder(c)) {
      if (next < frac.size()) out += frac[next];
      ++next;
    } else if (c != ',') {
      out += c;
    }
  }
  return out;
}

}  // namespace

std::string FormatNumber(Number value, std::string_view pattern) {
  if (value.IsEmpty()) return "";
  const double v = value.Value();
  if (!std::isfinite(v)) throw Fault(kFaultOverflow, "number to format is not finite");
  if (pattern.empty()) return GeneralNumber(v);

  const std::vector<std::string_view> sections = SplitSections(pattern);
  // A negative section shows the magnitude: any sign is its own literal text. The
  // section is chosen by the value's sign before rounding, so -0.001 shows as negative.
  if (v < 0 && sections.size() > 1 && !sections[1].empty()) return FormatSection(-v, sections[1]);
  if (v == 0 && sections.size() > 2 && !sections[2].empty()) return FormatSection(0, sections[2]);
  if (sections[0].empty()) return GeneralNumber(v);
  return v < 0 ? "-" + FormatSection(-v, sections[0]) : FormatSection(v, sections[0]);
}

namespace {

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool StartsWithNoCase(std::string_view text, std::size_t at, std::string_view word) {
  if (text.size() - at < word.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i)
    if (Lower(text[at + i]) != word[i]) return false;
  return true;
}

std::string Padded(int v, int width) {
  std::string s = std::to_string(v);
  if (static_cast<int>(s.size()) < width) s.insert(0, static_cast<std::size_t>(width) - s.size(), '0');
  return s;
}

}  // namespace

std::string FormatDateTime(DateTime value, std::string_view pattern) {
  const DateParts p = SplitDateTime(value);

  bool twelveHour = false;
  for (std::size_t i = 0; i < pattern.size(); ++i)
    if (StartsWithNoCase(pattern, i, "am/pm") || StartsWithNoCase(pattern, i, "a/p")) twelveHour = true;
  int hour = p.hour;
  if (twelveHour) {
    hour %= 12;
    if (hour == 0) hour = 12;
  }
  const bool afternoon = p.hour >= 12;

  std::string out;
  bool afterHour = false;  // the token just written was an hour
  std::size_t i = 0;
  while (i < pattern.size()) {
    // The am/pm marker is written as it stands in the pattern, in its own case.
    if (StartsWithNoCase(pattern, i, "am/pm")) {
      out += afternoon ? pattern.substr(i + 3, 2) : pattern.substr(i, 2);
      i += 5;
      afterHour = false;
      continue;
    }
    if (StartsWithNoCase(pattern, i, "a/p")) {
      out += afternoon ? pattern[i + 2] : pattern[i];
      i += 3;
      afterHour = false;
      continue;
    }
    const char c = Lower(pattern[i]);
    std::size_t run = 1;
    while (i + run < pattern.size() && Lower(pattern[i + run]) == c) ++run;
    const bool minuteContext = afterHour || (i > 0 && pattern[i - 1] == ':');
    bool isHour = false;
    std::size_t used = std::min<std::size_t>(run, 2);
    switch (c) {
      case 'd':
        out += Padded(p.day, static_cast<int>(used));
        break;
      case 'm':
        out += Padded(minuteContext ? p.minute : p.month, static_cast<int>(used));
        break;
      case 'n':
        out += Padded(p.minute, static_cast<int>(used));
        break;
      case 's':
        out += Padded(p.second, static_cast<int>(used));
        break;
      case 'h':
        out += Padded(hour, static_cast<int>(used));
        isHour = true;
        break;
      case 'y':
        if (run >= 4) {
          used = 4;
          out += Padded(p.year, 4);
        } else if (run >= 2) {
          out += Padded(p.year % 100, 2);
        } else {
          const std::int64_t dayOfYear = DaySerial(p.year, p.month, p.day) - DaySerial(p.year, 1, 1) + 1;
          out += std::to_string(dayOfYear);
        }
        break;
      default:
        out += pattern[i];
        used = 1;
        break;
    }
    afterHour = isHour;
    i += used;
  }
  return out;
}

double LeadingNumber(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';

  auto isDigit = [&](std::size_t k) { return k < text.size() && text[k] >= '0' && text[k] <= '9'; };
  const std::size_t start = i;
  int intDigits = 0, leadingZeros = 0, fracZerosBeforeFirst = 0;
  bool seenNonZero = false;
  while (isDigit(i)) {
    if (text[i] != '0') seenNonZero = true;
    if (!seenNonZero) ++leadingZeros;
    ++intDigits;
    ++i;
  }
  int fracDigits = 0;
  if (i < text.size() && text[i] == '.') {
    ++i;
    while (isDigit(i)) {
      if (text[i] != '0') seenNonZero = true;
      if (!seenNonZero) ++fracZerosBeforeFirst;
      ++fracDigits;
      ++i;
    }
  }
  if (intDigits + fracDigits == 0) return 0.0;
  std::size_t end = i;

  // An exponent counts only with at least one digit; "12E" is the number 12.
  long long exponent = 0;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    std::size_t k = i + 1;
    bool expNegative = false;
    if (k < text.size() && (text[k] == '+' || text[k] == '-')) expNegative = text[k++] == '-';
    if (isDigit(k)) {
      while (isDigit(k)) {
        if (exponent < 100000) exponent = exponent * 10 + (text[k] - '0');
        ++k;
      }
      if (expNegative) exponent = -exponent;
      end = k;
    }
  }

  double v = 0.0;
  const auto res = std::from_chars(text.data() + start, text.data() + end, v, std::chars_format::general);
  if (res.ec == std::errc::result_out_of_range) {
    // Too small is zero; too large is the platform's overflow.
    const long long magnitude =
        exponent + (intDigits > leadingZeros ? intDigits - leadingZeros : -fracZerosBeforeFirst);
    if (seenNonZero && magnitude > 0) throw Fault(kFaultOverflow, "number too large");
    v = 0.0;
  }
  return negative ? -v : v;
}

}  // namespace quillet
