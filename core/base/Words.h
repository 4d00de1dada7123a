#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Splits a line of a layout or a story into words at blanks. A word that contains blanks goes in double
/// quotes, with C escapes (\n, \r, \t; any other character after a backslash is itself); a # at the start of
/// a word begins a comment. Throws std::runtime_error for an unterminated quote.
std::vector<std::string> splitWords(std::string_view line);
