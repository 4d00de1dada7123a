#include "core/look/NameDrawing.h"

#include <QPainter>

#include <cmath>

namespace Appearance {

namespace {
constexpr double sizeOfOutline = 1000;
constexpr double lineHeight = 1.15; // sizes, as in the font of the outline
constexpr double ascent = .905;
} // namespace

QSize sizeOfName(const QPainterPath& outline, double pixels) {
    const double width = outline.boundingRect().right() / sizeOfOutline * pixels;
    return {int(std::ceil(width)) + 1, int(std::ceil(lineHeight * pixels))};
}

QImage drawnName(const QPainterPath& outline, double pixels, const QColor& color) {
    QImage image(sizeOfName(outline, pixels), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0, ascent * pixels);
    // In pixels: Qt divides the curves of a scaled painter far too finely.
    const double scale = pixels / sizeOfOutline;
    painter.fillPath(QTransform::fromScale(scale, scale).map(outline), color);
    return image;
}

} // namespace Appearance
