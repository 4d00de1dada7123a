#include "documents/export/Export.h"
#include "documents/report/PagePainter.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

QByteArray Export::pdf(const Document& document) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(document.title);
    writer.setCreator(QStringLiteral("Brennoval"));
    constexpr int resolution = 1200; // dots an inch, so that places round to nothing the eye sees
    writer.setResolution(resolution);
    QPainter painter;
    for (const Page& page : document.pages) {
        writer.setPageSize(QPageSize(page.size, QPageSize::Point));
        writer.setPageMargins(QMarginsF());
        if (!painter.isActive())
            painter.begin(&writer);
        else
            writer.newPage();
        painter.save();
        painter.scale(resolution / 72.0, resolution / 72.0);
        PaintPage(painter, page);
        painter.restore();
    }
    painter.end();
    return bytes;
}
