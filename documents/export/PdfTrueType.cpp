#include "documents/export/PdfTrueType.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {

void put16(QByteArray& target, int value) {
    target += char(value >> 8);
    target += char(value);
}

void put32(QByteArray& target, std::uint32_t value) {
    put16(target, int(value >> 16));
    put16(target, int(value & 0xffffU));
}

struct Point {
    int x = 0;
    int y = 0;
    bool on = true; // the curve passes through it
    bool operator==(const Point&) const = default;
};
using Contour = std::vector<Point>;

Point pointAt(const QPointF& place, bool on) {
    return {int(std::lround(place.x())), int(std::lround(-place.y())), on};
}

/// Appends a cubic curve as quadratic ones that stay within half a unit of it. Those of a TrueType font come
/// back as they were.
void addCurve(Contour& contour, const QPointF& p0, const QPointF& c1, const QPointF& c2, const QPointF& p1,
              int depth = 0) {
    constexpr double allowed = .5;
    constexpr double share = 0.0481; // of the third difference that the error is at most
    constexpr int deepest = 4;
    const QPointF third = p1 - 3 * c2 + 3 * c1 - p0;
    if (std::hypot(third.x(), third.y()) * share <= allowed || depth == deepest) {
        contour.push_back(pointAt((3 * (c1 + c2) - p0 - p1) / 4, false));
        contour.push_back(pointAt(p1, true));
        return;
    }
    const QPointF a = (p0 + c1) / 2;
    const QPointF b = (c1 + c2) / 2;
    const QPointF c = (c2 + p1) / 2;
    const QPointF left = (a + b) / 2;
    const QPointF right = (b + c) / 2;
    const QPointF middle = (left + right) / 2;
    addCurve(contour, p0, a, left, middle, depth + 1);
    addCurve(contour, middle, right, c, p1, depth + 1);
}

std::vector<Contour> contoursOf(const QPainterPath& path) {
    std::vector<Contour> all;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo())
            all.push_back({pointAt(element, true)});
        else if (element.isLineTo())
            all.back().push_back(pointAt(element, true));
        else if (element.type == QPainterPath::CurveToElement) {
            addCurve(all.back(), path.elementAt(i - 1), element, path.elementAt(i + 1),
                     path.elementAt(i + 2));
            i += 2;
        }
    }
    for (Contour& contour : all)
        if (contour.size() > 1 && contour.back() == contour.front())
            contour.pop_back(); // a contour closes by itself
    std::erase_if(all, [](const Contour& contour) { return contour.size() < 2; });
    return all;
}

struct Most {
    int points = 0;
    int contours = 0;
};

/// Tells the left edge, at which readers put the letter.
QByteArray glyph(const QPainterPath& path, Most& most, int& left) {
    const std::vector<Contour> contours = contoursOf(path);
    left = 0;
    if (contours.empty())
        return {};
    QByteArray ends;
    QByteArray flags;
    QByteArray xs;
    QByteArray ys;
    Point last;
    Point low = contours.front().front();
    Point high = low;
    for (const Contour& contour : contours) {
        for (const Point& point : contour) {
            flags += char(point.on ? 1 : 0);
            put16(xs, point.x - last.x);
            put16(ys, point.y - last.y);
            last = point;
            low = {std::min(low.x, point.x), std::min(low.y, point.y)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        }
        put16(ends, int(flags.size()) - 1);
    }
    left = low.x;
    most.points = std::max(most.points, int(flags.size()));
    most.contours = std::max(most.contours, int(contours.size()));
    QByteArray whole;
    for (const int value : {int(contours.size()), low.x, low.y, high.x, high.y})
        put16(whole, value);
    whole += ends;
    put16(whole, 0); // instructions
    whole += flags + xs + ys;
    while (whole.size() % 4 != 0)
        whole += '\0';
    return whole;
}

std::uint32_t sumOf(const QByteArray& table) {
    std::uint32_t sum = 0;
    for (qsizetype i = 0; i < table.size(); ++i)
        sum += std::uint32_t(std::uint8_t(table[i])) << (24 - 8 * (i % 4));
    return sum;
}

QByteArray fileOf(const std::vector<std::pair<const char*, QByteArray>>& tables) {
    QByteArray file;
    put32(file, 0x00010000);
    put16(file, int(tables.size()));
    int power = 0;
    while ((2 << power) <= int(tables.size()))
        ++power;
    put16(file, 16 << power);
    put16(file, power);
    put16(file, int(tables.size()) * 16 - (16 << power));
    auto place = std::uint32_t(file.size()) + 16 * std::uint32_t(tables.size());
    QByteArray content;
    for (const auto& [name, table] : tables) {
        file += name;
        put32(file, sumOf(table));
        put32(file, place + std::uint32_t(content.size()));
        put32(file, std::uint32_t(table.size()));
        content += table;
        while (content.size() % 4 != 0)
            content += '\0';
    }
    return file + content;
}

} // namespace

QByteArray PdfTrueType::font(const std::vector<PdfOutline>& letters) {
    const int count = int(letters.size());
    Most most;
    QByteArray glyf;
    QByteArray loca;
    QByteArray hmtx;
    for (const PdfOutline& letter : letters) {
        put32(loca, std::uint32_t(glyf.size()));
        int left = 0;
        glyf += glyph(letter.path, most, left);
        put16(hmtx, int(std::lround(letter.advance)));
        put16(hmtx, left);
    }
    put32(loca, std::uint32_t(glyf.size()));
    QByteArray head;
    put32(head, 0x00010000);
    put32(head, 0x00010000);
    put32(head, 0); // the sum of the whole file, which a PDF does not need
    put32(head, 0x5F0F3CF5);
    put16(head, 1); // the baseline is at 0
    put16(head, em);
    head += QByteArray(16, '\0'); // dates
    for (const int edge : {-em, -em / 2, 2 * em, em + em / 4})
        put16(head, edge);
    for (const int value : {0, 6, 2, 1, 0}) // style, smallest size, direction, long loca, format
        put16(head, value);
    QByteArray hhea;
    put32(hhea, 0x00010000);
    for (const int value : {em * 9 / 10, -em * 2 / 10, 0, 2 * em, -em, -em, 2 * em, 1})
        put16(hhea, value);
    hhea += QByteArray(14, '\0'); // the slope of the caret, and formats
    put16(hhea, count);           // widths
    QByteArray maxp;
    put32(maxp, 0x00010000);
    for (const int value : {count, most.points, most.contours, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0})
        put16(maxp, value);
    return fileOf(
        {{"glyf", glyf}, {"head", head}, {"hhea", hhea}, {"hmtx", hmtx}, {"loca", loca}, {"maxp", maxp}});
}
