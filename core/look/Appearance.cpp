#include "core/look/Appearance.h"

#include "core/look/FlatStyle.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace Appearance {

namespace {

/// The colours of one scheme.
struct Colors {
    QColor text, quiet, faint, accent, window, base, alternate, button, frame;
};

const Colors lightColors{{0x1E, 0x27, 0x30}, {0x5F, 0x6B, 0x76}, {0x84, 0x8F, 0x9A},
                         {0x1F, 0x6F, 0xA8}, {0xF6, 0xF8, 0xFA}, {0xFF, 0xFF, 0xFF},
                         {0xF1, 0xF4, 0xF7}, {0xFF, 0xFF, 0xFF}, {0xDC, 0xE3, 0xEA}};
const Colors darkColors{{0xE6, 0xEA, 0xEE}, {0xA3, 0xAE, 0xB8}, {0x7C, 0x87, 0x92},
                        {0x3D, 0x8F, 0xC9}, {0x27, 0x2D, 0x34}, {0x1C, 0x21, 0x26},
                        {0x21, 0x27, 0x2D}, {0x33, 0x3B, 0x44}, {0x17, 0x1B, 0x20}};

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

/// An icon of the set that is drawn when it is first shown, in the colours that the palette has then.
class SetIcon : public QIconEngine {
  public:
    explicit SetIcon(QString iconName) : name(std::move(iconName)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        painter->drawPixmap(rect, pixmap(rect.size() * painter->device()->devicePixelRatioF(), mode, state));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override {
        const QColor color = QApplication::palette().color(
            mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
        const QString key =
            QStringLiteral("icon %1 %2 %3x%4").arg(name, color.name()).arg(size.width()).arg(size.height());
        QPixmap drawn;
        if (!QPixmapCache::find(key, &drawn)) {
            drawn = rendered(drawingOf(name), color, size);
            QPixmapCache::insert(key, drawn);
        }
        return drawn;
    }

    QIconEngine* clone() const override { return new SetIcon(name); } // the icon owns it

  private:
    QString name;
};

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
    palette.setColor(QPalette::PlaceholderText, colors.quiet);
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
    return QIcon(new SetIcon(name)); // the icon owns its engine
}

QPixmap splashPicture(const QSize& size, qreal pixelRatio) {
    QPixmap pixmap((QSizeF(size) * pixelRatio).toSize());
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette palette = QApplication::palette();
    const QColor accent = palette.color(QPalette::Highlight);
    const QRectF place(QPointF(0, 0), QSizeF(size));
    const double floor = place.height() * .86;
    // Water in the building's line, from left to right behind the tank.
    QColor water = accent;
    water.setAlphaF(.18F);
    QPainterPath line(QPointF(0, floor - 34));
    for (int wave = 0; wave < 8; ++wave) {
        const double step = place.width() / 8;
        line.quadTo(step * (wave + .5), floor - 34 + (wave % 2 ? 9 : -9), step * (wave + 1), floor - 34);
    }
    line.lineTo(place.width(), floor);
    line.lineTo(0, floor);
    painter.fillPath(line, water);
    painter.setPen(QPen(accent, 2));
    painter.drawLine(QPointF(0, floor), QPointF(place.width(), floor));
    const double side = place.height() * .92;
    drawMark(painter, {place.center().x() - side / 2, floor - side * .94, side, side}, accent,
             palette.color(QPalette::Base), .5);
    return pixmap;
}

QPalette errorPalette(QPalette palette) {
    for (const auto role : {QPalette::Base, QPalette::Window, QPalette::Button})
        palette.setColor(role, QColor(0xFF, 0xFF, 0x80));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(role, QColor(0xFF, 0, 0));
    return palette;
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
