#include "documents/export/PdfReading.h"

#include "documents/export/PageGrid.h"
#include "documents/report/TextFit.h"

#include <algorithm>
#include <cmath>

namespace PdfReading {

namespace {

constexpr double overlap = 1; // points by which neighbours may cover each other
constexpr double sameRow = 4; // points between baselines

QRectF extentOf(const PageText& text) {
    return {text.place.left(), topOf(text), text.place.width(),
            TextFit::lineHeight(text.style) * double(text.lines().size())};
}

double baselineOf(const PageText& text) {
    return topOf(text) + TextFit::ascent(text.style);
}

/// The box of a field around one of its texts.
QRectF boxAround(const PageText& text, const Page& page) {
    const QRectF extent = extentOf(text);
    QRectF best = extent;
    double smallest = page.size.width() * page.size.height();
    for (const PageBox& box : page.boxes) {
        const double area = box.place.width() * box.place.height();
        if (box.width > 0 && area < smallest && box.place.contains(extent.center())) {
            best = box.place;
            smallest = area;
        }
    }
    return best;
}

using Edge = double (*)(const QRectF&);

/// Cuts pieces where a gap runs across all of them, at every gap or at the widest only; one part if there is
/// none.
QList<QList<Piece>> cut(QList<Piece> pieces, Edge begins, Edge ends, bool widestOnly) {
    std::stable_sort(pieces.begin(), pieces.end(),
                     [begins](const Piece& a, const Piece& b) { return begins(a.at) < begins(b.at); });
    QList<qsizetype> places;
    double widest = -overlap;
    double reached = ends(pieces.first().at);
    for (qsizetype i = 1; i < pieces.size(); ++i) {
        const double gap = begins(pieces[i].at) - reached;
        if (widestOnly ? gap > widest + .01 : gap >= -overlap) {
            if (widestOnly)
                places.clear();
            places.append(i);
            widest = std::max(gap, widest);
        }
        reached = std::max(reached, ends(pieces[i].at));
    }
    places.append(pieces.size());
    QList<QList<Piece>> parts;
    qsizetype from = 0;
    for (const qsizetype to : places) {
        parts.append(pieces.mid(from, to - from));
        from = to;
    }
    return parts;
}

/// Rows before columns, as far as gaps go through. Columns are parted at the widest gap first, so that
/// neighbours stay together.
void order(const QList<Piece>& pieces, QList<Piece>& ordered) {
    if (pieces.size() < 2) {
        ordered += pieces;
        return;
    }
    const auto top = [](const QRectF& r) { return r.top(); };
    const auto bottom = [](const QRectF& r) { return r.bottom(); };
    const auto left = [](const QRectF& r) { return r.left(); };
    const auto right = [](const QRectF& r) { return r.right(); };
    auto parts = cut(pieces, top, bottom, false);
    if (parts.size() == 1)
        parts = cut(pieces, left, right, true);
    if (parts.size() == 1) { // they overlap; sorted from left to right
        ordered += parts.first();
        return;
    }
    for (const QList<Piece>& part : std::as_const(parts))
        order(part, ordered);
}

/// Whether a piece says what the one behind it is, in the same row.
bool isLabelOf(const Piece& label, const Piece& value) {
    return label.texts.size() == 1 && value.texts.size() == 1 && label.texts.first()->field < 0 &&
           value.texts.first()->field < 0 && label.texts.first()->label && !value.texts.first()->label &&
           std::abs(baselineOf(*label.texts.first()) - baselineOf(*value.texts.first())) < sameRow;
}

QList<Piece> inOrder(const QList<Piece>& pieces) {
    QList<Piece> ordered;
    order(pieces, ordered);
    QList<Piece> joined;
    for (const Piece& piece : std::as_const(ordered)) {
        if (!joined.isEmpty() && isLabelOf(joined.last(), piece)) {
            joined.last().texts += piece.texts;
            joined.last().at |= piece.at;
        } else {
            joined.append(piece);
        }
    }
    return joined;
}

void addText(QList<Piece>& pieces, const PageText& text, const Page& page) {
    if (text.field >= 0)
        for (Piece& piece : pieces)
            if (!piece.texts.isEmpty() && piece.texts.first()->field == text.field) {
                piece.texts.insert(text.label ? 0 : piece.texts.size(), &text);
                return;
            }
    pieces.append({.at = text.field >= 0 ? boxAround(text, page) : extentOf(text), .texts = {&text}});
}

double topOf(const Row& row) {
    return ::topOf(*row.texts.first());
}

/// Puts what is no text into the strip of pieces at its height.
void addPiece(QList<Strip>& strips, const Piece& piece) {
    qsizetype behind = 0; // the strips above
    while (behind < strips.size() && (strips[behind].rows.isEmpty() ||
                                      topOf(strips[behind].rows.first()) < piece.at.bottom() - overlap))
        ++behind;
    if (behind == 0 || !strips[behind - 1].rows.isEmpty())
        strips.insert(behind++, Strip());
    strips[behind - 1].pieces.append(piece);
}

/// A check box in a table belongs to the row at its height.
bool addToRow(QList<Strip>& strips, const PageCheck& check) {
    Row* best = nullptr;
    double nearest = check.place.height();
    for (Strip& strip : strips)
        for (Row& row : strip.rows) {
            const double distance =
                std::abs(extentOf(*row.texts.first()).center().y() - check.place.center().y());
            if (row.section == check.caption.section && distance < nearest) {
                nearest = distance;
                best = &row;
            }
        }
    if (best)
        best->checks.append(&check);
    return best != nullptr;
}

} // namespace

int Piece::heading() const {
    int found = 0;
    for (const PageText* text : texts)
        found = std::max(found, int(text->heading));
    return found;
}

bool isFurniture(const PageText& text) {
    return text.repeated || text.section == Section::PageFooter || text.section == Section::RunningHeader;
}

QList<Strip> stripsOf(const Page& page) {
    QList<Strip> strips;
    for (const PageText& text : page.texts) {
        if (isFurniture(text))
            continue;
        if (strips.isEmpty() || strips.last().rows.isEmpty() == text.cell)
            strips.append(Strip());
        Strip& strip = strips.last();
        if (!text.cell)
            addText(strip.pieces, text, page);
        else if (text.starts || strip.rows.isEmpty())
            strip.rows.append({text.section, {&text}, {}});
        else
            strip.rows.last().texts.append(&text);
    }
    for (const PagePicture& picture : page.pictures)
        addPiece(strips, {.at = picture.place, .texts = {}, .picture = &picture});
    for (const PageCheck& check : page.checks) {
        if (isFurniture(check.caption) || (check.caption.cell && addToRow(strips, check)))
            continue;
        addPiece(strips, {.at = check.place | extentOf(check.caption), .texts = {}, .check = &check});
    }
    for (Strip& strip : strips)
        strip.pieces = inOrder(strip.pieces);
    return strips;
}

} // namespace PdfReading
