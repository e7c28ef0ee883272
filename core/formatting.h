#pragma once
// Picture formatting of numbers and date-times, as every label, file and printout of
// the system shows them.
#include <string>
#include <string_view>

#include "core/date_time.h"
#include "core/number.h"

namespace quillet {

// Sections split by ";" are positive and zero, then negative (then zero, if a third is
// given). A negative section shows the magnitude, its sign being literal text of its own;
// with one section a negative value gets a leading "-", also when it rounds to zero
// ("-0.00"). "#" optional digit, "0" required digit, "." the decimal point (printed even
// with no digits after it), "," thousands separator when a placeholder follows it, a
// division by 1000 when it ends the integer placeholders. Any other character is copied
// as it stands. Integer digits beyond the placeholders all show. The value is taken to
// 15 significant digits, then rounded half away from zero (2.675 -> "2.68"). The empty
// number gives ""; an empty pattern gives GeneralNumber. Not finite: Fault 6.
std::string FormatNumber(Number value, std::string_view pattern);

// The plain form of a number: up to 15 significant digits, no trailing zeros ("0.5",
// "-2"), exponent form for very large or small ("1E+20", "1E-05").
std::string GeneralNumber(double value);

// Date patterns: "m"/"mm" month, "d"/"dd" day, "yy"/"yyyy" year ("y" the day of the
// year), "h"/"hh" hour, "m"/"mm" right after an hour or a ":" and "n"/"nn" minutes,
// "s"/"ss" seconds; letters in either case. "am/pm" (or "a/p") makes a 12-hour clock and
// writes the half that applies exactly as the pattern spells it. Any other character
// stands for itself. The time is rounded to the second, and faults, as SplitDateTime.
std::string FormatDateTime(DateTime value, std::string_view pattern);

// The longest leading decimal number of a text: blanks skipped, a sign, digits, one
// point, an exponent ("E" or "e", a sign, digits). Empty or non-numeric text gives 0;
// a number beyond the range of a double is Fault 6.
double LeadingNumber(std::string_view text);

}  // namespace quillet
