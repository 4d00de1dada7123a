#include "core/look/Appearance.h"

#include "core/look/FlatStyle.h"

#include <QApplication>
#include <QFile>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

namespace Appearance {

namespace {

/// The colours of one scheme.
struct Colors {
    QColor text, faint, accent, window, base, alternate, button, frame;
};

const Colors lightColors{{0x1E, 0x27, 0x30}, {0x84, 0x8F, 0x9A}, {0x1F, 0x6F, 0xA8}, {0xF6, 0xF8, 0xFA},
                         {0xFF, 0xFF, 0xFF}, {0xF1, 0xF4, 0xF7}, {0xFF, 0xFF, 0xFF}, {0xDC, 0xE3, 0xEA}};
const Colors darkColors{{0xE6, 0xEA, 0xEE}, {0x7C, 0x87, 0x92}, {0x3D, 0x8F, 0xC9}, {0x27, 0x2D, 0x34},
                        {0x1C, 0x21, 0x26}, {0x21, 0x27, 0x2D}, {0x33, 0x3B, 0x44}, {0x17, 0x1B, 0x20}};

QIcon programIcon(const QColor& color) {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        drawMark(painter, QRectF(0, 0, size, size), color, Qt::white);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

QPixmap rendered(const QByteArray& svg, const QColor& color, const QSize& size) {
    QSvgRenderer renderer(QByteArray(svg).replace("currentColor", color.name().toLatin1()));
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    return pixmap;
}

QByteArray drawingOf(const QString& name) {
    QFile file(":/icons/" + name + ".svg");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

Scheme systemScheme() {
    const QPalette palette = QApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness()
               ? Scheme::Dark
               : Scheme::Light;
}

void apply(Scheme scheme) {
    const Colors& colors = scheme == Scheme::Dark ? darkColors : lightColors;
    QPalette palette;
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternate);
    palette.setColor(QPalette::Button, colors.button);
    palette.setColor(QPalette::Mid, colors.frame);
    palette.setColor(QPalette::ToolTipBase, colors.button);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, colors.text);
        palette.setColor(QPalette::Disabled, role, colors.faint);
    }
    palette.setColor(QPalette::PlaceholderText, colors.faint);
    palette.setColor(QPalette::Highlight, colors.accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, colors.accent);
    QApplication::setStyle(new FlatStyle); // the application owns its style
    QApplication::setPalette(palette);
    QApplication::setWindowIcon(programIcon(colors.accent));
}

QPixmap picture(const QString& name, const QSize& size, qreal pixelRatio) {
    QPixmap pixmap = rendered(drawingOf(name), QApplication::palette().color(QPalette::WindowText),
                              (QSizeF(size) * pixelRatio).toSize());
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

QIcon icon(const QString& name) {
    const QByteArray svg = drawingOf(name);
    const QPalette palette = QApplication::palette();
    QIcon icon;
    for (const int size : {16, 20, 24, 32, 40, 48, 64}) {
        icon.addPixmap(rendered(svg, palette.color(QPalette::Active, QPalette::ButtonText), {size, size}));
        icon.addPixmap(rendered(svg, palette.color(QPalette::Disabled, QPalette::ButtonText), {size, size}),
                       QIcon::Disabled);
    }
    return icon;
}

void drawMark(QPainter& painter, const QRectF& place, const QColor& color, const QColor& fill,
              qreal lineWidth) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(place.topLeft());
    painter.scale(place.width() / 16, place.height() / 16);
    painter.setPen(QPen(color, lineWidth, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(4, 1, 8, 11.5), 3.5, 3.5);
    painter.drawLine(QPointF(5.2, 12.2), QPointF(5.2, 15));
    painter.drawLine(QPointF(10.8, 12.2), QPointF(10.8, 15));
    painter.drawArc(QRectF(4, 5.6, 8, 2.2), 180 * 16, 180 * 16); // the bladder's edge
    painter.restore();
}

} // namespace Appearance
