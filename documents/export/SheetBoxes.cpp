#include "documents/export/SheetBoxes.h"

#include "documents/report/PagePainter.h"
#include "documents/report/TextFit.h"

#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace SheetBoxes {

namespace {

// All lengths are points.
constexpr double nearby = 5;        // that counts as the same place
constexpr double ownHeight = 12.75; // of a row without a height
constexpr double inset = 3;         // of a picture in its rows, which keeps their lines in sight
constexpr double mostHeight = 400;  // of a row, below the format's limit

int columnAt(const QList<double>& edges, double x) {
    return std::max(0, int(std::upper_bound(edges.begin(), edges.end(), x + nearby / 2) - edges.begin()) - 1);
}

/// The last column that ends at or before a box's right side.
int lastColumn(const QList<double>& edges, const QRectF& box) {
    const int at = columnAt(edges, box.right());
    return edges[at] >= box.right() - nearby ? at - 1 : at;
}

double heightOf(const Row& row) {
    return row.height > 0 ? row.height : ownHeight;
}

/// Where a picture is on its page. Marks and formulas have none: they are written as words.
std::optional<QRectF> placeOf(const PagePicture& picture) {
    if (picture.mark || picture.isText)
        return std::nullopt;
    return picturePlace(QSvgRenderer(picture.svg).defaultSize(), picture.place);
}

/// The first row at or below a height, up to and without the first row at or below another.
std::pair<qsizetype, qsizetype> rowsBetween(const QList<Row>& rows, double top, double bottom) {
    const auto at = [&](double y) {
        return std::find_if(rows.begin(), rows.end(), [y](const Row& row) { return row.top >= y - nearby; }) -
               rows.begin();
    };
    const qsizetype first = at(top);
    return {first, std::max(first, at(bottom))};
}

} // namespace

QList<double> columnEdges(const Pages& pages) {
    QList<double> lefts = ::columnEdges(pages);
    for (const Page& page : pages)
        for (const PageBox& box : page.boxes)
            lefts.append(box.place.left());
    return distinctEdges(std::move(lefts));
}

void makeRoom(const Page& page, QList<Row>& rows) {
    for (const PagePicture& picture : page.pictures) {
        const auto place = placeOf(picture);
        if (!place)
            continue;
        auto [first, end] = rowsBetween(rows, place->top(), place->bottom());
        double missing = place->height() + 2 * inset;
        for (qsizetype i = first; i < end; ++i) {
            rows[i].height = heightOf(rows[i]);
            missing -= rows[i].height;
        }
        if (missing <= 0)
            continue;
        const double each = missing / double(std::max<qsizetype>(1, end - first));
        if (end > first && each < mostHeight / 2) {
            for (qsizetype i = first; i < end; ++i)
                rows[i].height += each;
            continue;
        }
        const int added = int(std::ceil(missing / mostHeight));
        for (int i = 0; i < added; ++i)
            rows.insert(end,
                        {{}, std::min(place->bottom() - nearby - 1, place->top() + nearby), missing / added});
    }
}

QList<QHash<int, Workbook::Frame>> framesOf(const Page& page, const QList<Row>& rows,
                                            const QList<double>& edges) {
    QList<QHash<int, Workbook::Frame>> frames(rows.size());
    for (const PageBox& box : page.boxes) {
        QList<qsizetype> inside;
        for (qsizetype i = 0; i < rows.size(); ++i) {
            const double middle =
                rows[i].top +
                (rows[i].texts.isEmpty() ? nearby : TextFit::lineHeight(rows[i].texts.first()->style) / 2);
            if (middle > box.place.top() && middle < box.place.bottom())
                inside.append(i);
        }
        if (inside.isEmpty())
            continue;
        const int first = columnAt(edges, box.place.left());
        const int last = std::max(first, lastColumn(edges, box.place));
        for (const qsizetype row : inside)
            for (int column = first; column <= last; ++column) {
                Workbook::Frame& frame = frames[row][column];
                frame.filled = frame.filled || box.fill.isValid();
                if (box.width <= 0)
                    continue;
                frame.left = frame.left || column == first;
                frame.right = frame.right || column == last;
                frame.top = frame.top || row == inside.first();
                frame.bottom = frame.bottom || row == inside.last();
            }
    }
    return frames;
}

void addPictures(const Page& page, const QList<Row>& rows, const QList<double>& edges, int firstRow,
                 PngPictures& pictures, Workbook& book) {
    const auto across = [&](double x) {
        const int column = columnAt(edges, x);
        const double next = column + 1 < edges.size() ? edges[column + 1] : page.size.width() - edges.first();
        return std::pair(column, std::clamp((x - edges[column]) / (next - edges[column]), 0., 1.));
    };
    for (const PagePicture& picture : page.pictures) {
        const auto place = placeOf(picture);
        if (!place)
            continue;
        const auto [first, end] = rowsBetween(rows, place->top(), place->bottom());
        if (first == rows.size())
            continue; // a later sheet's writer has left no room
        SheetPictures::Corner upperLeft{.row = firstRow + int(first), .down = inset / heightOf(rows[first])};
        std::tie(upperLeft.column, upperLeft.across) = across(place->left());
        SheetPictures::Corner lowerRight;
        std::tie(lowerRight.column, lowerRight.across) = across(place->right());
        qsizetype row = first;
        double left = place->height() + inset;
        while (row + 1 < rows.size() && left > heightOf(rows[row]))
            left -= heightOf(rows[row++]);
        lowerRight.row = firstRow + int(row);
        lowerRight.down = std::min(1., left / heightOf(rows[row]));
        book.picture(pictures.of(picture), picture.description, upperLeft, lowerRight);
    }
}

} // namespace SheetBoxes
