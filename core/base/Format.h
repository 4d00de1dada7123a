#pragma once

#include <string>
#include <string_view>

/// Formats a number with a display pattern such as "#,##0.0 psi" or "#,##0.0%". In a pattern, 0 is a digit
/// that is always shown, # one shown only when needed, a comma turns on thousands separators, % shows the
/// value times 100; text in double quotes and all other characters are copied. Halves round away from zero,
/// unlike Round.
std::string formatted(double value, std::string_view pattern);
