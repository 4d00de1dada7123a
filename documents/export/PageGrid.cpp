#include "documents/export/PageGrid.h"

#include "documents/report/PagePainter.h"
#include "documents/report/TextFit.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSet>
#include <QSvgRenderer>

#include <algorithm>

namespace {

constexpr double sameRow = 4;    // points between the first baselines
constexpr double nearRow = 6;    // the same, of single lines side by side
constexpr double sameColumn = 5; // points between the left edges

double heightOf(const PageText& text) {
    return TextFit::lineHeight(text.style) * double(text.lines().size());
}

/// Whether a wrapped text has no other text beside it.
bool hasNothingBeside(const PageText& text, const Page& page) {
    const double top = topOf(text);
    const double bottom = top + heightOf(text);
    const auto beside = [&](const PageText& other) {
        return &other != &text && topOf(other) < bottom && topOf(other) + heightOf(other) > top;
    };
    return std::none_of(page.texts.begin(), page.texts.end(), beside) &&
           std::none_of(page.pictures.begin(), page.pictures.end(), [&](const PagePicture& picture) {
               return picture.mark && beside(picture.inWords());
           });
}

/// Whether a text has the texts of a row to its left or right, none above or below it.
bool isFreeBeside(const PageText& text, const GridRow& row) {
    return std::none_of(row.begin(), row.end(), [&](const PageText* other) {
        return other->place.left() < text.place.right() && text.place.left() < other->place.right();
    });
}

PageText lineOf(const PageText& text, const QString& line, int number) {
    PageText single = text;
    single.text = line;
    TextStyle style = text.style;
    style.alignment &= ~Qt::AlignVCenter;
    single.style = style;
    single.place.setTop(topOf(text) + number * TextFit::lineHeight(text.style));
    return single;
}

} // namespace

double topOf(const PageText& text) {
    return text.style->alignment & Qt::AlignVCenter ? text.place.center().y() - heightOf(text) / 2
                                                    : text.place.top();
}

PageGrid::PageGrid(const Page& page, Lines lines) {
    QList<std::pair<double, const PageText*>> texts;
    const auto add = [&](const PageText& text) {
        texts.append({topOf(text) + TextFit::ascent(text.style), &text});
    };
    const auto addLines = [&](const PageText& text) {
        int number = 0;
        for (const QString& line : text.lines())
            add(own.emplace_back(lineOf(text, line, number++)));
    };
    for (const PageText& text : page.texts)
        if (lines == Lines::Whole || !text.breaks() || hasNothingBeside(text, page))
            add(text);
        else
            addLines(text);
    for (const PageCheck& check : page.checks)
        add(own.emplace_back(check.inWords()));
    for (const PagePicture& picture : page.pictures)
        if (picture.mark && lines == Lines::Split)
            addLines(picture.inWords());
        else if (picture.mark)
            add(own.emplace_back(picture.inWords()));
    std::stable_sort(texts.begin(), texts.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    double baseline = -1e9;
    for (const auto& [y, text] : texts) {
        const double limit =
            lines == Lines::Split && !allRows.isEmpty() && isFreeBeside(*text, allRows.last()) ? nearRow
                                                                                               : sameRow;
        if (y - baseline > limit) {
            allRows.append(GridRow());
            baseline = y;
        }
        allRows.last().append(text);
    }
    for (GridRow& row : allRows)
        std::stable_sort(row.begin(), row.end(), [](const PageText* a, const PageText* b) {
            return a->place.left() < b->place.left();
        });
}

QList<const PageText*> PageGrid::readingOrder() const {
    QHash<int, GridRow> fields;
    for (const GridRow& row : allRows)
        for (const PageText* text : row)
            if (text->field >= 0)
                fields[text->field].append(text);
    QList<const PageText*> order;
    for (const GridRow& row : allRows)
        for (const PageText* text : row)
            if (text->field < 0)
                order.append(text);
            else
                order.append(fields.take(text->field));
    return order;
}

QList<double> columnEdges(const Pages& pages) {
    QList<double> lefts;
    for (const Page& page : pages) {
        for (const PageText& text : page.texts)
            lefts.append(text.place.left());
        for (const PageCheck& check : page.checks)
            lefts.append(check.place.left());
        for (const PagePicture& picture : page.pictures)
            if (picture.mark)
                lefts.append(picture.place.left());
    }
    return distinctEdges(std::move(lefts));
}

QList<double> distinctEdges(QList<double> lefts) {
    std::sort(lefts.begin(), lefts.end());
    QList<double> edges;
    for (const double left : lefts)
        if (edges.isEmpty() || left - edges.last() > sameColumn)
            edges.append(left);
    return edges;
}

int columnOf(const QList<double>& edges, const PageText& text) {
    const auto after = std::upper_bound(edges.begin(), edges.end(), text.place.left());
    return std::max(0, int(after - edges.begin()) - 1);
}

const QByteArray& PngPictures::of(const PagePicture& picture) {
    constexpr double scale = 200 / 72.0;
    const QSize room = (picture.place.size() * scale).toSize();
    QByteArray& bytes = known[{picture.svg, room}];
    if (!bytes.isEmpty())
        return bytes;
    QSvgRenderer renderer(picture.svg);
    const QRectF place = picturePlace(renderer.defaultSize(), picture.place);
    QImage image((place.size() * scale).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(image.rect()));
    painter.end();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}
