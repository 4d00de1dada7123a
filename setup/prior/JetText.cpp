#include "setup/prior/JetText.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <memory>

namespace Jet {

namespace {

constexpr std::array<unsigned char, 2> compressionMark = {0xff, 0xfe};

bool isControl(unsigned char byte) {
    return byte < 0x20 || (byte >= 0x7f && byte < 0xa0);
}

/// Whether the mark that starts a text also occurs within it. Single-byte characters misread as two-byte ones
/// can have it at any offset and contain no control characters; East Asian text occasionally has it across
/// two characters, but then has bytes that would be control characters.
bool containsMark(Bytes stored, bool compressed, const std::u16string& text) {
    if (text.find(u'\ufeff') != std::u16string::npos || text.find(u"\u00ff\u00fe") != std::u16string::npos)
        return true;
    const auto found =
        std::search(stored.begin(), stored.end(), compressionMark.begin(), compressionMark.end());
    return !compressed && found != stored.end() && std::ranges::none_of(stored, isControl);
}

/// Appends characters of two bytes each.
void appendWide(std::u16string& text, Bytes bytes) {
    if (bytes.size() % 2 != 0)
        throw Damaged("half a character");
    for (size_t i = 0; i < bytes.size(); i += 2)
        text += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8U);
}

/// The end of a run of two-byte characters: the first character position that starts with a NUL.
size_t endOfWide(Bytes bytes, size_t begin) {
    size_t end = begin;
    while (end < bytes.size() && bytes[end] != 0)
        end += 2;
    return std::min(end, bytes.size());
}

std::u16string decompressed(Bytes bytes) {
    std::u16string text;
    bool wide = false;
    for (size_t begin = 0; begin < bytes.size();) {
        const auto found = std::ranges::find(bytes.subspan(begin), 0);
        const size_t end = wide ? endOfWide(bytes, begin)
                                : static_cast<size_t>(found - bytes.subspan(begin).begin()) + begin;
        const bool changesAtOnce = begin == 0 && !wide && end == 0;
        if ((end == begin && !changesAtOnce) || end + 1 == bytes.size())
            throw Damaged("a text that changes its way for nothing");
        if (wide)
            appendWide(text, bytes.subspan(begin, end - begin));
        else
            text.append(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                        bytes.begin() + static_cast<std::ptrdiff_t>(end));
        wide = !wide;
        begin = end + 1; // after the NUL
    }
    return text;
}

} // namespace

std::string textOf(Bytes stored) {
    const bool compressed = stored.size() >= compressionMark.size() &&
                            std::ranges::equal(stored.first(compressionMark.size()), compressionMark);
    std::u16string text;
    if (compressed)
        text = decompressed(stored.subspan(compressionMark.size()));
    else
        appendWide(text, stored);
    if (text.find(u'\0') != std::u16string::npos)
        throw Damaged("a text of NULs");
    if (containsMark(stored, compressed, text))
        throw Damaged("a text that begins twice");
    glong length = 0;
    const std::unique_ptr<char, decltype(&g_free)> utf8(
        g_utf16_to_utf8(reinterpret_cast<const gunichar2*>(text.data()), static_cast<glong>(text.size()),
                        nullptr, &length, nullptr),
        g_free);
    if (!utf8)
        throw Damaged("half a character");
    return {utf8.get(), static_cast<size_t>(length)};
}

} // namespace Jet
