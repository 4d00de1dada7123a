#pragma once

#include <string>
#include <string_view>

/// A number in a display pattern such as "#,##0.0 psi" or "#,##0.0%". In a pattern, 0 is a digit that
/// always shows, # one that shows when it is needed, a comma asks for thousands separators, % shows the
/// value times 100, words in double quotes and all other characters stand for themselves.
/// Halves round away from zero, unlike Round.
std::string Format(double value, std::string_view pattern);
