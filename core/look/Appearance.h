#pragma once

#include "core/look/Icons.h"

#include <QPixmap>

class QPainter;
class QPalette;
class QRectF;

/// The one look of the program: palette, style, icons and the mark.
namespace Appearance {

enum class Scheme { Light, Dark };

void apply(Scheme scheme);

/// The picture of the splash screen: a tank on its water line, in the colours of the scheme.
QPixmap splashPicture(const QSize& size, qreal pixelRatio);

/// A palette with the colours of a field in error: red on pale yellow, the same in light and dark.
QPalette errorPalette(QPalette palette);

/// Draws the program's mark, a standing tank, into a rectangle; the line in 16ths of its side.
void drawMark(QPainter& painter, const QRectF& place, const QColor& color, const QColor& fill,
              qreal lineWidth = 1.2);

} // namespace Appearance
