#include "documents/export/PageGrid.h"

#include "documents/report/PagePainter.h"
#include "documents/report/TextFit.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

namespace {

constexpr double sameRow = 4;    // points between the first baselines
constexpr double sameColumn = 5; // points between the left edges

double firstBaseline(const PageText& text) {
    double top = text.place.top();
    if (text.style.alignment & Qt::AlignVCenter)
        top = text.place.center().y() - TextFit::lineHeight(text.style) * double(text.lines().size()) / 2;
    return top + TextFit::ascent(text.style);
}

} // namespace

QList<GridRow> RowsOf(const Page& page) {
    QList<std::pair<double, const PageText*>> texts;
    for (const PageText& text : page.texts)
        texts.append({firstBaseline(text), &text});
    std::stable_sort(texts.begin(), texts.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    QList<GridRow> rows;
    double baseline = -1e9;
    for (const auto& [y, text] : texts) {
        if (y - baseline > sameRow) {
            rows.append(GridRow());
            baseline = y;
        }
        rows.last().append(text);
    }
    for (GridRow& row : rows)
        std::stable_sort(row.begin(), row.end(), [](const PageText* a, const PageText* b) {
            return a->place.left() < b->place.left();
        });
    return rows;
}

QList<double> ColumnEdges(const Pages& pages) {
    QList<double> lefts;
    for (const Page& page : pages)
        for (const PageText& text : page.texts)
            lefts.append(text.place.left());
    std::sort(lefts.begin(), lefts.end());
    QList<double> edges;
    for (const double left : lefts)
        if (edges.isEmpty() || left - edges.last() > sameColumn)
            edges.append(left);
    return edges;
}

int ColumnOf(const QList<double>& edges, const PageText& text) {
    const auto after = std::upper_bound(edges.begin(), edges.end(), text.place.left());
    return std::max(0, int(after - edges.begin()) - 1);
}

QByteArray PictureAsPng(const PagePicture& picture) {
    constexpr double scale = 200 / 72.0;
    QImage image((picture.place.size() * scale).toSize(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QSvgRenderer renderer(picture.file);
    renderer.render(&painter, PicturePlace(renderer.defaultSize(), QRectF(image.rect())));
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}
