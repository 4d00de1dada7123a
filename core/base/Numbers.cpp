#include "core/base/Numbers.h"

#include "core/base/Fault.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Removes the integer part from the front of a text and returns it without separators; nothing if a group
/// does not have three digits.
std::optional<std::string> takeIntegerPart(std::string_view& text) {
    std::string digits;
    std::size_t group = 0;
    bool separated = false;
    std::size_t i = 0;
    for (; i < text.size() && (isDigit(text[i]) || text[i] == ','); ++i) {
        if (text[i] != ',') {
            digits += text[i];
            ++group;
            continue;
        }
        if (group == 0 || group > 3 || (separated && group != 3))
            return std::nullopt;
        separated = true;
        group = 0;
    }
    if (separated && group != 3)
        return std::nullopt;
    text.remove_prefix(i);
    return digits;
}

std::string takeDigits(std::string_view& text) {
    std::size_t i = 0;
    while (i < text.size() && isDigit(text[i]))
        ++i;
    std::string digits(text.substr(0, i));
    text.remove_prefix(i);
    return digits;
}

} // namespace

std::optional<double> parseNumber(std::string_view text) {
    text = trimmed(text);
    std::string plain;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        if (text.front() == '-')
            plain = "-";
        text.remove_prefix(1);
        text = trimmed(text);
    }
    const auto whole = takeIntegerPart(text);
    if (!whole)
        return std::nullopt;
    std::string fraction;
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        fraction = takeDigits(text);
    }
    if (whole->empty() && fraction.empty())
        return std::nullopt;
    plain += (whole->empty() ? "0" : *whole) + (fraction.empty() ? "" : "." + fraction);
    if (!text.empty() && (text.front() == 'e' || text.front() == 'E')) {
        text.remove_prefix(1);
        plain += 'e';
        if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
            plain += text.front();
            text.remove_prefix(1);
        }
        const std::string exponent = takeDigits(text);
        if (exponent.empty())
            return std::nullopt;
        plain += exponent;
    }
    if (!text.empty())
        return std::nullopt;
    const char* begin = plain.data();
    const char* end = plain.data() + plain.size();
    double value = 0;
    const auto result = std::from_chars(begin, end, value);
    if (result.ec == std::errc::result_out_of_range && plain.find("e-") != std::string::npos)
        return 0.0; // below the smallest double, so as good as zero
    if (result.ec != std::errc() || result.ptr != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

double toDouble(std::string_view text) {
    const auto value = parseNumber(text);
    if (!value)
        throw Fault(Fault::TypeMismatch, "Type mismatch");
    return *value;
}

std::string NumberText(double value) {
    if (value == 0)
        return "0";
    std::array<char, 32> buffer{};
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific);
    std::string_view text(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data()));
    std::string sign;
    if (text.front() == '-') {
        sign = "-";
        text.remove_prefix(1);
    }
    const auto e = text.find('e');
    if (e == std::string_view::npos)
        return sign + std::string(text); // infinity or not a number
    std::string digits(1, text[0]);
    if (e > 1)
        digits += text.substr(2, e - 2);
    int exponent = 0;
    const auto exponentText = text.substr(text[e + 1] == '+' ? e + 2 : e + 1);
    std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);

    constexpr int largestPlainExponent = 14;
    constexpr int smallestPlainExponent = -5;
    if (exponent > largestPlainExponent || exponent < smallestPlainExponent) {
        const std::string magnitude = std::to_string(std::abs(exponent));
        return sign + digits.substr(0, 1) + (digits.size() > 1 ? "." + digits.substr(1) : "") + "E" +
               (exponent < 0 ? "-" : "+") + (magnitude.size() < 2 ? "0" : "") + magnitude;
    }
    if (exponent < 0)
        return sign + "." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    const auto point = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= point)
        return sign + digits + std::string(point - digits.size(), '0');
    return sign + digits.substr(0, point) + "." + digits.substr(point);
}

std::string shownNumberText(double value) {
    std::string text = NumberText(value);
    const std::size_t point = text.starts_with('-') ? 1 : 0;
    if (text.size() > point && text[point] == '.')
        text.insert(point, 1, '0');
    return text;
}

double Round(double value, int digits) {
    const double power = std::pow(10.0, digits);
    const double scaled = value * power;
    // From 2^52 on a double has no fraction left to round.
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 4503599627370496.0)
        return value;
    const double floor = std::floor(scaled);
    const double rest = scaled - floor;
    double whole = floor;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(floor, 2.0) != 0.0))
        whole += 1.0;
    return whole / power;
}

double Divide(double numerator, double denominator) {
    if (denominator == 0)
        throw Fault(Fault::DivisionByZero, "Division by zero");
    const double quotient = numerator / denominator;
    if (!std::isfinite(quotient))
        throw Fault(Fault::Overflow, "Overflow");
    return quotient;
}

std::int16_t ToInt16(double value) {
    const double whole = Round(value, 0);
    if (!(whole >= -32768.0 && whole <= 32767.0))
        throw Fault(Fault::Overflow, "Overflow");
    return static_cast<std::int16_t>(whole);
}

std::int32_t toInt32(double value) {
    const double whole = Round(value, 0);
    if (!(whole >= -2147483648.0 && whole <= 2147483647.0))
        throw Fault(Fault::Overflow, "Overflow");
    return static_cast<std::int32_t>(whole);
}
