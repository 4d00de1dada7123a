#pragma once

#include <QByteArray>
#include <QRawFont>

#include <vector>

/// The part of a font that a file needs.
struct FontSubset {
    QByteArray program;      // TrueType, or only the outlines of a font with PostScript outlines
    bool postScript = false; // outlines, as in most fonts for Chinese, Japanese and Korean
};

namespace FontSubsets {

/// Whether a font has outlines: one of pictures of dots has none.
bool hasOutlines(const QRawFont& font);

/// The font with the outlines of these glyphs only, which keep their numbers. Throws Fault 51 if the font is
/// damaged.
FontSubset subset(const QRawFont& font, const std::vector<quint32>& glyphs);

} // namespace FontSubsets
