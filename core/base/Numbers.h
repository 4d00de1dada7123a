#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The number in a text, or nothing. Accepts what users type: surrounding blanks, a sign, thousands
/// separators in groups of three ("1,234.5"), a decimal point, an exponent. Rejects a comma anywhere else, so
/// that a decimal comma ("1,5") is never read as a larger number.
std::optional<double> parseNumber(std::string_view text);

/// Like parseNumber, for text that must be a number. Throws Fault 13 if it is not.
double toDouble(std::string_view text);

/// The shortest decimal text that reads back as the same double, without a zero before the point (".5") and
/// with an exponent for very large and very small numbers ("1E+15"). For SQL statements.
std::string NumberText(double value);

/// The same for people to read: with a zero before the point ("0.5").
std::string shownNumberText(double value);

/// Rounds to 0 to 15 decimals, halves to even.
double Round(double value, int digits);

/// numerator / denominator. Throws Fault 11 if the denominator is 0 and Fault 6 if the quotient is not a
/// finite number.
double Divide(double numerator, double denominator);

/// Rounds to the nearest whole number, halves to even. Throws Fault 6 outside the 16-bit range.
std::int16_t ToInt16(double value);
/// The same for 32 bits.
std::int32_t toInt32(double value);
