#include "core/look/Appearance.h"

#include "core/look/FlatStyle.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmapCache>

namespace Appearance {

namespace {

/// The colours of one scheme. Text has a contrast of at least 4.5 to 1 with its background, borders and marks
/// 3 to 1.
struct Colors {
    QColor text, faint, link, accent, window, base, alternate, button, frame;
};

const Colors lightColors{{0x1E, 0x27, 0x30}, {0x56, 0x61, 0x6C}, {0x1A, 0x62, 0x96},
                         {0x1F, 0x6F, 0xA8}, {0xF6, 0xF8, 0xFA}, {0xFF, 0xFF, 0xFF},
                         {0xF1, 0xF4, 0xF7}, {0xFF, 0xFF, 0xFF}, {0xDC, 0xE3, 0xEA}};
const Colors darkColors{{0xE6, 0xEA, 0xEE}, {0xA8, 0xB2, 0xBC}, {0x6C, 0xB4, 0xE4},
                        {0x2F, 0x7C, 0xB3}, {0x27, 0x2D, 0x34}, {0x1C, 0x21, 0x26},
                        {0x21, 0x27, 0x2D}, {0x33, 0x3B, 0x44}, {0x17, 0x1B, 0x20}};

/// The program's icon. A desktop asks for the sizes that it shows, and some ask for none.
class ProgramIcon : public QIconEngine {
  public:
    explicit ProgramIcon(const QColor& accent) : color(accent) {}

    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return {{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}, {128, 128}};
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const QString key =
            QStringLiteral("program %1 %2x%3").arg(color.name()).arg(size.width()).arg(size.height());
        QPixmap drawn;
        if (!QPixmapCache::find(key, &drawn)) {
            drawn = QPixmap(size);
            drawn.fill(Qt::transparent);
            QPainter painter(&drawn);
            drawMark(painter, QRectF(QPointF(), size), color, Qt::white);
            QPixmapCache::insert(key, drawn);
        }
        return drawn;
    }

    void paint(QPainter* painter, const QRect& place, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        drawMark(*painter, place, color, Qt::white);
    }

    QIconEngine* clone() const override { return new ProgramIcon(color); } // the icon takes ownership

  private:
    QColor color;
};

} // namespace

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
    palette.setColor(QPalette::Link, colors.link);
    palette.setColor(QPalette::LinkVisited, colors.link);
    QApplication::setStyle(new FlatStyle); // the application takes ownership
    QApplication::setPalette(palette);
    QApplication::setWindowIcon(QIcon(new ProgramIcon(colors.accent))); // the icon takes ownership
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
    // Water in the building's pipe, from left to right behind the tank.
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
    palette.setColor(QPalette::PlaceholderText, QColor(0x4A, 0x4A, 0x4A)); // the hint of an empty field
    return palette;
}

void drawMark(QPainter& painter, const QRectF& place, const QColor& color, const QColor& fill,
              qreal lineWidth) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    // In pixels: Qt divides the curves of a scaled painter far too finely.
    const double unit = place.width() / 16;
    const auto at = [&](double x, double y) { return place.topLeft() + QPointF(x, y) * unit; };
    const auto box = [&](double x, double y, double width, double height) {
        return QRectF(at(x, y), QSizeF(width, height) * unit);
    };
    painter.setPen(QPen(color, lineWidth * unit, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(fill);
    painter.drawRoundedRect(box(4, 1, 8, 11.5), 3.5 * unit, 3.5 * unit);
    painter.drawLine(at(5.2, 12.2), at(5.2, 15));
    painter.drawLine(at(10.8, 12.2), at(10.8, 15));
    painter.drawArc(box(4, 5.6, 8, 2.2), 180 * 16, 180 * 16); // the bladder's edge
    painter.restore();
}

} // namespace Appearance
