#pragma once

#include <optional>
#include <string_view>

/// Case-insensitive comparison of texts, for letters of any script. All texts are UTF-8.

/// Negative, zero or positive as `one` sorts before, equal to or after `other`.
int compareLetters(std::string_view one, std::string_view other);

/// Whether a text matches a pattern in which % matches any characters and _ a single one. A character after
/// the escape, if there is one, matches itself.
bool hasForm(std::string_view text, std::string_view pattern, std::optional<char32_t> escape = {});

/// The first character of a non-empty text, and its length in bytes. An invalid byte counts as a character of
/// its own.
struct Letter {
    char32_t code;
    std::size_t bytes;
};
Letter firstLetter(std::string_view text);
