#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>

#include <array>

namespace Appearance {

/// A line drawing in a colour and size, in pixels.
QImage drawnIcon(const QByteArray& svg, const QColor& color, const QSize& size);

/// How much of each pixel an image covers: a byte a pixel, row by row.
inline QByteArray coverageOf(const QImage& image) {
    QByteArray covered;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            covered.append(char(qAlpha(image.pixel(x, y))));
    return covered;
}

/// How much of each pixel the lines of an icon cover: for each line a byte a pixel, row by row. The build
/// draws these for the sizes in pixels that the main window begins with, as drawing is most of what painting
/// takes at the start.
using IconMasks = QByteArray;
inline constexpr std::array maskSizes = {24, 34};
IconMasks masksOf(const QByteArray& svg, int size);
/// The drawing of the masks in a colour, just as `drawnIcon` has it.
QImage coloredMasks(const IconMasks& masks, const QColor& color, const QSize& size);

} // namespace Appearance
