#include "core/base/Words.h"

#include <stdexcept>

namespace {

char escaped(char letter) {
    switch (letter) {
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return letter;
    }
}

} // namespace

std::vector<std::string> splitWords(std::string_view line) {
    constexpr std::string_view blanks = " \t\r\n\v\f";
    std::vector<std::string> words;
    bool inWord = false;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char letter = line[i];
        const bool blank = !quoted && blanks.find(letter) != std::string_view::npos;
        if (!quoted && !inWord && letter == '#')
            break;
        if (!blank && !inWord)
            words.emplace_back();
        inWord = !blank;
        if (blank)
            continue;
        if (letter == '"')
            quoted = !quoted;
        else if (quoted && letter == '\\' && i + 1 < line.size())
            words.back() += escaped(line[++i]);
        else
            words.back() += letter;
    }
    if (quoted)
        throw std::runtime_error("a quoted text does not end");
    return words;
}
