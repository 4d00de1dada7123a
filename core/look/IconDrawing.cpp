#include "core/look/IconDrawing.h"

#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>

namespace Appearance {

QImage drawnIcon(const QByteArray& svg, const QColor& color, const QSize& size) {
    QSvgRenderer renderer(QByteArray(svg).replace("currentColor", color.name().toLatin1()));
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

IconMasks masksOf(const QByteArray& svg, int size) {
    static const QRegularExpression line("<(path|circle|ellipse|rect|line|polyline|polygon)\\b[^>]*/>");
    const QString whole = QString::fromUtf8(svg);
    IconMasks masks;
    for (auto lines = line.globalMatch(whole); lines.hasNext();) {
        QString alone = whole;
        alone.remove(line).insert(alone.indexOf("</svg>"), lines.next().captured());
        masks += coverageOf(drawnIcon(alone.toUtf8(), Qt::black, {size, size}));
    }
    return masks;
}

QImage coloredMasks(const IconMasks& masks, const QColor& color, const QSize& size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const auto share = [](int value, int of255) { // rounded as Qt does when it paints
        const int product = value * of255;
        return (product + (product >> 8) + 128) >> 8;
    };
    const QRgb ink = color.rgb();
    auto* const pixels = reinterpret_cast<QRgb*>(image.bits());
    const qsizetype count = qsizetype(size.width()) * size.height();
    for (qsizetype i = 0; i < masks.size(); ++i) {
        const int covered = static_cast<unsigned char>(masks[i]);
        if (covered == 0)
            continue;
        QRgb& pixel = pixels[i % count];
        if (covered == 255) {
            pixel = ink;
            continue;
        }
        const int left = 255 - covered;
        pixel = qRgba(share(qRed(ink), covered) + share(qRed(pixel), left),
                      share(qGreen(ink), covered) + share(qGreen(pixel), left),
                      share(qBlue(ink), covered) + share(qBlue(pixel), left),
                      covered + share(qAlpha(pixel), left));
    }
    return image;
}

} // namespace Appearance
