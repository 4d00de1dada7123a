#include "core/base/EntryRules.h"

#include "core/base/Text.h"

namespace EntryRules {

std::optional<QString> objectionToNumber(const QString& text) {
    if (text.isEmpty())
        return std::nullopt;
    const auto value = parseNumber(text.toStdString());
    if (!value)
        return QStringLiteral("Please enter a valid numeric value!");
    if (*value < 0)
        return QStringLiteral("Please enter a positive number!");
    return std::nullopt;
}

std::optional<QString> objectionToValue(double value, double minimum, double maximum) {
    if (value == 0 || (value >= minimum && value <= maximum))
        return std::nullopt;
    return "Please enter a value between " + shownNumber(minimum) + " and " + shownNumber(maximum) + ".";
}

} // namespace EntryRules
