#pragma once

#include "core/look/Icons.h"

#include <QPixmap>

class QPainter;
class QPalette;
class QRectF;

/// The program's look: palette, style, icons and the mark.
namespace Appearance {

enum class Scheme { Light, Dark };

void apply(Scheme scheme);

/// The splash screen's picture: a tank on its water line, in the scheme's colours.
QPixmap splashPicture(const QSize& size, qreal pixelRatio);

/// A palette for a field in error: red on pale yellow, the same in light and dark.
QPalette errorPalette(QPalette palette);

/// Draws the program's mark, an upright tank, into a rectangle; the line width is in 16ths of its side.
void drawMark(QPainter& painter, const QRectF& place, const QColor& color, const QColor& fill,
              qreal lineWidth = 1.2);

} // namespace Appearance
