#include "core/look/ProgramName.h"

#include "core/look/IconDrawing.h"
#include "core/look/NameDrawing.h"

#include <QDataStream>
#include <QFile>
#include <QPainter>
#include <QStyle>

namespace {

/// Reads what the build has drawn. False if it has not.
bool read(const QString& name, auto&... parts) {
    QFile file(":/look/" + name);
    QDataStream stream(&file);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    (stream >> ... >> parts);
    return stream.status() == QDataStream::Ok;
}

} // namespace

const QImage& ProgramName::drawing(qreal pixelRatio) const {
    const double pixelsInPoint = logicalDpiY() / 72. * pixelRatio;
    const QColor color = palette().color(QPalette::WindowText);
    const Look look{font().pointSize(), pixelsInPoint, color};
    if (look == drawn)
        return image;
    drawn = look;
    image = {};
    QSize size;
    QByteArray mask;
    QPainterPath outline;
    if (pixelsInPoint == Appearance::pixelsInPoint &&
        read(QStringLiteral("name-%1.mask").arg(look.points), size, mask))
        image = Appearance::coloredMasks(mask, color, size);
    else if (read(QStringLiteral("name.path"), outline))
        image = Appearance::drawnName(outline, look.points * pixelsInPoint, color);
    image.setDevicePixelRatio(pixelRatio);
    return image;
}

QSize ProgramName::sizeHint() const {
    const QImage& shown = drawing(devicePixelRatioF());
    return shown.isNull() ? QLabel::sizeHint() : shown.deviceIndependentSize().toSize();
}

void ProgramName::paintEvent(QPaintEvent* event) {
    const QImage& shown = drawing(devicePixelRatioF());
    if (shown.isNull())
        return QLabel::paintEvent(event);
    const QRect place = QStyle::alignedRect(layoutDirection(), alignment(), sizeHint(), rect());
    QPainter(this).drawImage(place.topLeft(), shown);
}
