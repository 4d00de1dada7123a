#pragma once

#include <QString>

#include <optional>
#include <vector>

/// What is wrong with the text of an entry box.
struct Objection {
    QString box; // its name
    QString text;
};
using Objections = std::vector<Objection>;

/// Rules for what users enter, in the words in which the screens refuse it.
namespace EntryRules {

inline constexpr const char* nothingEntered = "Please enter a valid value!";
inline constexpr const char* wrongOrder = "The maximum value must be greater than the minimum value!";

/// Why a text is not a number of 0 or more; nothing if it is one, or is empty.
std::optional<QString> objectionToNumber(const QString& text);

/// Why a value is outside its limits, which are allowed themselves. 0 always passes: an empty field becomes
/// 0.
std::optional<QString> objectionToValue(double value, double minimum, double maximum);

} // namespace EntryRules
