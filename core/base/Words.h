#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The words of a line of a layout or a story, parted by blanks. A word with blanks stands in double quotes
/// with C escapes (\n, \r, \t; any other character stands for itself); a # that begins a word begins a
/// comment. Throws std::runtime_error when a quoted text does not end.
std::vector<std::string> SplitWords(std::string_view line);
