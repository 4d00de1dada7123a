#pragma once

#include <optional>
#include <string_view>

/// Texts as people compare them: without regard to the case of any letter of any script. All in UTF-8.

/// Below, at or above 0 as the one text comes before, is, or comes behind the other.
int CompareLetters(std::string_view one, std::string_view other);

/// Whether a text has the form of a pattern, in which % stands for any characters and _ for one. A character
/// behind the escape, if there is one, stands for itself.
bool HasForm(std::string_view text, std::string_view pattern, std::optional<char32_t> escape = {});

/// The first character of a text, which must not be empty, and how many bytes it takes. A byte that begins
/// none is one by itself.
struct Letter {
    char32_t code;
    std::size_t bytes;
};
Letter FirstLetter(std::string_view text);
