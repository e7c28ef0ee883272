#pragma once
// Picture formatting of numbers and date-times, as every label, file and printout of
// the system shows them.
#include <string>
#include <string_view>

#include "core/date_time.h"
#include "core/number.h"

namespace quillet {

// Sections split by ";" are positive and zero, then negative. "#" optional digit, "0"
// required digit, "." the decimal point (printed even with no digits after it), ","
// thousands separator. Rounds half away from zero. The empty number gives "". An empty
// pattern gives the plain (general) form of the number.
std::string FormatNumber(Number value, std::string_view pattern);

// The plain form of a number: up to 15 significant digits, no trailing zeros, no
// leading zero before the point (".5", "-.25"), exponent form for very large or small.
std::string GeneralNumber(double value);

// Date patterns: "m", "mm", "d", "dd", "yy", "h", "hh", "mm" after an hour or a colon as
// minutes, "ss", "am/pm" (12-hour clock, written in lower case as in the pattern); any
// other character stands for itself.
std::string FormatDateTime(DateTime value, std::string_view pattern);

// The longest leading decimal number of a text: blanks skipped, a sign, digits, one
// point, an exponent. Empty or non-numeric text gives 0.
double LeadingNumber(std::string_view text);

}  // namespace quillet
