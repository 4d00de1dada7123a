#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The number that a text stands for, or nothing. Accepts what users type: blanks around, a sign,
/// thousands separators in groups of three ("1,234.5"), a decimal point, an exponent. A comma anywhere
/// else is refused, so that a decimal comma ("1,5") is never read as a larger number.
std::optional<double> ParseNumber(std::string_view text);

/// Like ParseNumber, for text that must be a number. Throws Fault 13 when it is not.
double ToDouble(std::string_view text);

/// The shortest decimal text that reads back to the same double, with no zero before the point (".5")
/// and an exponent for very large and very small numbers ("1E+15"). For statements.
std::string NumberText(double value);

/// The same as people read it: with a zero before the point ("0.5").
std::string ShownNumberText(double value);

/// Rounds to a number of decimals (0 to 15), halves to the even digit.
double Round(double value, int digits);

/// numerator / denominator. Throws Fault 11 when the denominator is 0 and Fault 6 when the quotient is
/// not a finite number.
double Divide(double numerator, double denominator);

/// The whole number nearest to a value, halves to the even one. Throws Fault 6 outside the 16-bit range.
std::int16_t ToInt16(double value);
/// The same for 32 bits.
std::int32_t ToInt32(double value);
