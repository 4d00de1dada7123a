#include "core/base/Format.h"

#include "core/base/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

struct Pattern {
    std::string before;
    std::string after;
    std::size_t wholeDigits = 0;   // digits always shown before the point
    std::size_t fixedDecimals = 0; // decimals always shown
    std::size_t decimals = 0;      // decimals shown at most
    bool thousands = false;
    bool percent = false;
};

Pattern parsed(std::string_view text) {
    Pattern pattern;
    bool quoted = false;
    bool number = false;
    bool fraction = false;
    for (const char c : text) {
        if (c == '"') {
            quoted = !quoted;
            continue;
        }
        const bool placeholder = c == '#' || c == '0' || (number && (c == ',' || c == '.'));
        if (quoted || !placeholder || (number && !pattern.after.empty())) {
            (number ? pattern.after : pattern.before) += c;
            pattern.percent = pattern.percent || (!quoted && c == '%');
            continue;
        }
        number = true;
        if (c == ',') {
            pattern.thousands = true;
        } else if (c == '.') {
            fraction = true;
        } else if (fraction) {
            ++pattern.decimals;
            if (c == '0')
                pattern.fixedDecimals = pattern.decimals;
        } else if (c == '0') {
            ++pattern.wholeDigits;
        }
    }
    return pattern;
}

/// A positive number as decimal digits, with the point after the first `point` of them.
struct Decimal {
    std::string digits;
    int point = 0;
};

Decimal decimalOf(double value) {
    char buffer[40];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    const std::string_view text(buffer, static_cast<std::size_t>(written.ptr - buffer));
    const auto e = text.find('e');
    Decimal decimal;
    for (const char c : text.substr(0, e))
        if (c != '.')
            decimal.digits += c;
    const auto exponent = text.substr(text[e + 1] == '+' ? e + 2 : e + 1);
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), decimal.point);
    ++decimal.point;
    return decimal;
}

/// Cuts the digits to the given number of decimals; halves round away from zero.
void roundTo(Decimal& number, std::size_t decimals) {
    const int keep = number.point + static_cast<int>(decimals);
    if (keep < 0) {
        number = {}; // no digit is left
        return;
    }
    const auto kept = static_cast<std::size_t>(keep);
    number.digits.resize(kept + 1, '0'); // the next digit decides
    const bool up = number.digits.back() >= '5';
    number.digits.pop_back();
    if (!up)
        return;
    for (auto digit = number.digits.rbegin(); digit != number.digits.rend(); ++digit) {
        if (*digit != '9') {
            ++*digit;
            return;
        }
        *digit = '0';
    }
    number.digits.insert(0, 1, '1');
    ++number.point;
}

} // namespace

std::string formatted(double value, std::string_view text) {
    const Pattern pattern = parsed(text);
    if (!std::isfinite(value))
        return pattern.before + NumberText(value) + pattern.after;
    Decimal number = decimalOf(std::fabs(value));
    if (pattern.percent)
        number.point += 2;
    roundTo(number, pattern.decimals);

    const auto digitAt = [&](int position) {
        return position >= 0 && static_cast<std::size_t>(position) < number.digits.size()
                   ? number.digits[static_cast<std::size_t>(position)]
                   : '0';
    };
    std::string whole;
    for (int i = 0; i < number.point; ++i)
        whole += digitAt(i);
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    if (whole.size() < pattern.wholeDigits)
        whole.insert(0, pattern.wholeDigits - whole.size(), '0');
    std::string fraction;
    for (std::size_t i = 0; i < pattern.decimals; ++i)
        fraction += digitAt(number.point + static_cast<int>(i));
    while (fraction.size() > pattern.fixedDecimals && fraction.back() == '0')
        fraction.pop_back();

    const bool negative = value < 0 && (whole + fraction).find_first_not_of('0') != std::string::npos;
    if (pattern.thousands)
        for (auto i = static_cast<int>(whole.size()) - 3; i > 0; i -= 3)
            whole.insert(static_cast<std::size_t>(i), 1, ',');
    return (negative ? "-" : "") + pattern.before + whole + (fraction.empty() ? "" : "." + fraction) +
           pattern.after;
}
