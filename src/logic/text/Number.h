#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kelvo {

// Number texts. A box's text is the number: what these functions write is what the next step reads, so
// they live here alone, behave the same whatever the locale, and know nothing of widgets.

/// The number at the head of a text: blanks and tabs are skipped, then the longest decimal number counts
/// (sign, digits, dot, exponent `E` or `e` with digits), else 0. "12abc" is 12, "1E" is 1, ".5" is 0.5,
/// "" is 0. A number beyond the range of a double reads as the largest double of its sign: 0 would be wrong
/// and infinity would spread. A number too small for a double is 0, and 0 never has a sign.
double Val(std::string_view text);

/// Whether the whole text is a number that `Val` reads to its end: sign, digits with one dot at most, exponent. "+.5",
/// "7." and "1e400" are, "12abc", "1E", "-" and " 1" are not. Two modules ask for something else on purpose: a cell of
/// a spreadsheet must be shown again digit by digit (`NumberText`), one of a recording need only begin as a number.
bool IsNumber(std::string_view text);

/// Shortest decimal text that reads back to the same value at its width (a float by way of `Val` too), with one leading
/// blank when the number is not negative, a dot as decimal mark and a digit before it: " 0.5", "-61.5", " 1.5E-30".
/// Numbers from 1E-5 up to below 1E15 (double) or 1E7 (float) are written without an exponent; an exponent has
/// its sign and at least two digits: " 1E+15". Zero has no sign. @throws RuntimeError 6 for an infinity or no number.
std::string Str(double value);
std::string Str(float value);
std::string Str(int value);

/// `Str` without its leading blank.
std::string TrimStr(double value);
std::string TrimStr(float value);
std::string TrimStr(int value);

/// A number by a mask. `0` is a digit always, `#` a digit when needed (so "#.0" gives ".5" and "#0.00" gives
/// "0.50"), a `,` between digits groups thousands, `E-` and `E+` ask for an exponent with at least as many
/// digits as `0`s follow; `E-` signs only negative exponents. With an exponent the mantissa fills the digit
/// places before the dot ("#.00E-0" of 0.001866 is "1.87E-3", of 0 "0.00E0"); a mask with no place before the
/// dot has one. A mantissa that rounds up to ten moves on: 9.999 by "0.00E-00" is "1.00E01".
/// Rounds half away from zero on the decimal value the analyst would write down: 15 significant digits for a
/// double, 7 for a float; 2.675 by "0.00" is "2.68". A value that rounds to zero has no sign.
/// Any other character of the mask stands for itself, and so does the dot when no digit follows: 2 by "0.###" is
/// "2.". "#" of 0 is empty. The sign leads the whole text. @throws RuntimeError 6 for an infinity or no number.
std::string Format(double value, std::string_view mask);
std::string Format(float value, std::string_view mask);

/// Whole number of 16 bits, half to even. @throws RuntimeError 6 outside -32768 to 32767.
std::int16_t ToInt16(double value);

/// Rounds to a 32-bit float. @throws RuntimeError 6 when it does not fit.
float ToSingle(double value);

/// Text without its leading and trailing blanks (code 32 alone).
std::string Trim(std::string_view text);

/// Text with its letters in upper case; letters of the code page beyond ASCII too (UTF-8 in and out).
std::string Upper(std::string_view text);

/// Equal but for the case of ASCII letters.
bool EqualNoCase(std::string_view a, std::string_view b);

}  // namespace kelvo
