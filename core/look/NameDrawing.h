#pragma once

#include <QImage>
#include <QPainterPath>

#include <array>

namespace Appearance {

/// The program's name, drawn from its outline for a font's size in pixels. The outline is for a size of
/// 1,000.
QImage drawnName(const QPainterPath& outline, double pixels, const QColor& color);
/// How large that image is.
QSize sizeOfName(const QPainterPath& outline, double pixels);

/// The sizes in points that the program begins with. The build draws them, for 96 pixels an inch.
inline constexpr std::array nameSizes = {20, 30};
inline constexpr double pixelsInPoint = 96. / 72;

} // namespace Appearance
