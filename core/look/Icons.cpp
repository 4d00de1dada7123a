#include "core/look/Icons.h"

#include "core/look/IconDrawing.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

namespace Appearance {

namespace {

QByteArray drawingOf(const QString& name) {
    QFile file(":/icons/" + name + ".svg");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap drawn(const QString& name, const QColor& color, const QSize& size) {
    QFile mask(QStringLiteral(":/icons/%1-%2.mask").arg(name).arg(size.width()));
    if (size.width() == size.height() && mask.open(QIODevice::ReadOnly))
        return QPixmap::fromImage(coloredMasks(mask.readAll(), color, size));
    return QPixmap::fromImage(drawnIcon(drawingOf(name), color, size));
}

/// An icon of the set, drawn when first shown, in the palette's colours at that moment.
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
        QPixmap icon;
        if (!QPixmapCache::find(key, &icon)) {
            icon = drawn(name, color, size);
            QPixmapCache::insert(key, icon);
        }
        return icon;
    }

    QIconEngine* clone() const override { return new SetIcon(name); } // the icon takes ownership

  private:
    QString name;
};

} // namespace

QPixmap picture(const QString& name, const QSize& size, qreal pixelRatio) {
    QPixmap pixmap = drawn(name, QApplication::palette().color(QPalette::WindowText),
                           (QSizeF(size) * pixelRatio).toSize());
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

QIcon icon(const QString& name) {
    return QIcon(new SetIcon(name)); // the icon takes ownership of the engine
}

} // namespace Appearance
