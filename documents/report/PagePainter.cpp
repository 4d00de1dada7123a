#include "documents/report/PagePainter.h"

#include "documents/report/TextFit.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

namespace {

void paintText(QPainter& painter, const PageText& text) {
    const QStringList lines = text.lines();
    const double lineHeight = TextFit::lineHeight(text.style);
    double y = text.place.top();
    if (text.style.alignment & Qt::AlignVCenter)
        y = text.place.center().y() - lineHeight * double(lines.size()) / 2;
    painter.save();
    painter.scale(1.0 / TextFit::fontScale, 1.0 / TextFit::fontScale);
    painter.setFont(TextFit::font(text.style));
    painter.setPen(text.style.color);
    for (const QString& line : lines) {
        double x = text.place.left();
        if (text.style.alignment & (Qt::AlignRight | Qt::AlignHCenter)) {
            const double free = text.place.width() - TextFit::width(line, text.style);
            x += text.style.alignment & Qt::AlignRight ? free : free / 2;
        }
        painter.drawText(QPointF(x, y + TextFit::ascent(text.style)) * TextFit::fontScale, line);
        y += lineHeight;
    }
    painter.restore();
}

void paintCheck(QPainter& painter, const PageCheck& check) {
    painter.setPen(QPen(Qt::black, .6));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(check.place);
    if (!check.checked)
        return;
    QPainterPath tick(check.place.topLeft() + QPointF(check.place.width() * .2, check.place.height() * .55));
    tick.lineTo(check.place.topLeft() + QPointF(check.place.width() * .42, check.place.height() * .78));
    tick.lineTo(check.place.topLeft() + QPointF(check.place.width() * .82, check.place.height() * .22));
    painter.setPen(QPen(Qt::black, 1.1));
    painter.drawPath(tick);
}

} // namespace

QRectF PicturePlace(const QSizeF& picture, const QRectF& place) {
    QSizeF size = picture;
    size.scale(place.size(), Qt::KeepAspectRatio);
    return {place.center() - QPointF(size.width() / 2, size.height() / 2), size};
}

void PaintPage(QPainter& painter, const Page& page) {
    painter.setRenderHint(QPainter::Antialiasing);
    for (const PageBox& box : page.boxes) {
        painter.setPen(box.width > 0 ? QPen(Qt::black, box.width) : QPen(Qt::NoPen));
        painter.setBrush(box.fill.isValid() ? QBrush(box.fill) : QBrush(Qt::NoBrush));
        painter.drawRect(box.place);
    }
    for (const PageLine& line : page.lines) {
        painter.setPen(QPen(Qt::black, line.width));
        painter.drawLine(line.from, line.to);
    }
    for (const PagePicture& picture : page.pictures) {
        QSvgRenderer renderer(picture.file);
        renderer.render(&painter, PicturePlace(renderer.defaultSize(), picture.place));
    }
    for (const PageCheck& check : page.checks)
        paintCheck(painter, check);
    for (const PageText& text : page.texts)
        paintText(painter, text);
}
