#include "core/base/Letters.h"

#include <QChar>

namespace {

char32_t folded(char32_t code) {
    constexpr char32_t lastAscii = 0x7F;
    if (code <= lastAscii)
        return code >= U'A' && code <= U'Z' ? code + (U'a' - U'A') : code;
    return QChar::toCaseFolded(code);
}

/// Removes the first character of a text and returns it case-folded.
char32_t takeFolded(std::string_view& text) {
    const Letter letter = firstLetter(text);
    text.remove_prefix(letter.bytes);
    return folded(letter.code);
}

} // namespace

Letter firstLetter(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return {lead, 1};
    const std::size_t length = lead >= 0xF0 && lead < 0xF8   ? 4
                               : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xC2 && lead < 0xE0 ? 2
                                                             : 1;
    constexpr char32_t strayByte = 0x110000; // sorts after every character
    if (length == 1 || length > text.size())
        return {strayByte + lead, 1};
    char32_t code = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U)
            return {strayByte + lead, 1};
        code = (code << 6U) | (byte(i) & 0x3FU);
    }
    return {code, length};
}

int compareLetters(std::string_view one, std::string_view other) {
    while (!one.empty() && !other.empty()) {
        const char32_t left = takeFolded(one);
        const char32_t right = takeFolded(other);
        if (left != right)
            return left < right ? -1 : 1;
    }
    return one.empty() == other.empty() ? 0 : one.empty() ? -1 : 1;
}

bool hasForm(std::string_view text, std::string_view pattern, std::optional<char32_t> escape) {
    // The last % seen, and where matching resumes in the text; no earlier % ever needs a retry.
    std::optional<std::string_view> afterPercent;
    std::string_view retry;
    while (true) {
        if (pattern.empty() && text.empty())
            return true;
        bool fits = false;
        if (!pattern.empty()) {
            Letter wanted = firstLetter(pattern);
            const bool escaped = escape && wanted.code == *escape && pattern.size() > wanted.bytes;
            if (!escaped && wanted.code == U'%') {
                pattern.remove_prefix(1);
                if (pattern.empty())
                    return true;
                afterPercent = pattern;
                retry = text;
                continue;
            }
            if (escaped) {
                pattern.remove_prefix(wanted.bytes);
                wanted = firstLetter(pattern);
            }
            if (!text.empty()) {
                pattern.remove_prefix(wanted.bytes);
                const char32_t found = takeFolded(text);
                fits = (!escaped && wanted.code == U'_') || found == folded(wanted.code);
            }
        }
        if (fits)
            continue;
        if (!afterPercent || retry.empty())
            return false;
        takeFolded(retry);
        text = retry;
        pattern = *afterPercent;
    }
}
