#include "documents/viewer/TextPlaces.h"

#include "documents/report/TextFit.h"

#include <limits>

namespace {

struct Line {
    QString text;
    int start; // offset in the whole text
    QRectF place;
};

QList<Line> linesOf(const PageText& text) {
    const double height = TextFit::lineHeight(text.style);
    const QStringList all = text.lines();
    double top = text.place.top();
    if (text.style->alignment & Qt::AlignVCenter)
        top = text.place.center().y() - height * double(all.size()) / 2;
    QList<Line> lines;
    int start = 0;
    for (const QString& line : all) {
        const double width = TextFit::width(line, text.style);
        const double free = text.place.width() - width;
        const double left = text.place.left() + (text.style->alignment & Qt::AlignRight     ? free
                                                 : text.style->alignment & Qt::AlignHCenter ? free / 2
                                                                                            : 0);
        lines.append({line, start, {left, top, width, height}});
        top += height;
        start += int(line.size()) + 1;
    }
    return lines;
}

double distance(const QRectF& place, const QPointF& point) {
    const double x = std::max({place.left() - point.x(), 0.0, point.x() - place.right()});
    const double y = std::max({place.top() - point.y(), 0.0, point.y() - place.bottom()});
    constexpr double rowsFirst = 20; // weighs rows higher: a text in the same row is nearer than one above
    return x + y * rowsFirst;
}

int letterAt(const Line& line, const TextStyle& style, double x) {
    int letter = 0;
    double before = 0;
    while (letter < line.text.size()) {
        const double after = TextFit::width(QStringView(line.text).left(letter + 1), style);
        if (line.place.left() + (before + after) / 2 > x)
            break;
        before = after;
        ++letter;
    }
    return line.start + letter;
}

/// The characters that a reader sees, and the position of each in the text.
struct Readable {
    QString letters;
    QList<int> places;
};

Readable readable(const QString& text) {
    Readable result;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == PageText::WordBreak)
            continue;
        result.letters += text[i] == PageText::BlankBreak || text[i] == u'\n' ? QChar(u' ') : text[i];
        result.places.append(i);
    }
    return result;
}

} // namespace

TextPlace placeAt(const Pages& pages, int page, const QPointF& point) {
    TextPlace nearest{page, -1, 0};
    double least = std::numeric_limits<double>::max();
    const auto& texts = pages[page].texts;
    for (int i = 0; i < texts.size(); ++i)
        for (const Line& line : linesOf(texts[i])) {
            const double away = distance(line.place, point);
            if (away >= least)
                continue;
            least = away;
            nearest = {page, i, letterAt(line, texts[i].style, point.x())};
        }
    return nearest;
}

bool isOnText(const Page& page, const QPointF& point) {
    return std::any_of(page.texts.begin(), page.texts.end(), [&](const PageText& text) {
        if (!QRectF(text.place).adjusted(-2, -2, 2, text.place.height()).contains(point))
            return false;
        const QList<Line> lines = linesOf(text);
        return std::any_of(lines.begin(), lines.end(),
                           [&](const Line& line) { return line.place.contains(point); });
    });
}

QList<QRectF> placesOf(const PageText& text, int from, int to) {
    QList<QRectF> places;
    for (const Line& line : linesOf(text)) {
        const int first = std::max(0, from - line.start);
        const int last = std::min(int(line.text.size()), to - line.start);
        if (first >= last)
            continue;
        QRectF place = line.place;
        place.setRight(place.left() + TextFit::width(QStringView(line.text).left(last), text.style));
        place.setLeft(place.left() + TextFit::width(QStringView(line.text).left(first), text.style));
        places.append(place);
    }
    return places;
}

QList<TextRange> findAll(const Pages& pages, const QString& wanted) {
    QList<TextRange> found;
    if (wanted.isEmpty())
        return found;
    for (int page = 0; page < pages.size(); ++page)
        for (int i = 0; i < pages[page].texts.size(); ++i) {
            const Readable text = readable(pages[page].texts[i].text);
            for (qsizetype at = text.letters.indexOf(wanted, 0, Qt::CaseInsensitive); at >= 0;
                 at = text.letters.indexOf(wanted, at + wanted.size(), Qt::CaseInsensitive))
                found.append({{page, i, text.places[at]}, text.places[at + wanted.size() - 1] + 1});
        }
    return found;
}

QString textBetween(const Pages& pages, const TextPlace& from, const TextPlace& to) {
    QStringList lines;
    for (int page = std::max(0, from.page); page <= to.page; ++page) {
        const auto& texts = pages[page].texts;
        const int first = page == from.page ? std::max(0, from.text) : 0;
        const int last = page == to.page ? to.text : int(texts.size()) - 1;
        for (int i = first; i <= last; ++i) {
            const bool begins = page == from.page && i == from.text;
            const bool ends = page == to.page && i == to.text;
            PageText part = texts[i];
            const int start = begins ? from.letter : 0;
            part.text = part.text.mid(start, ends ? to.letter - start : -1);
            if (!part.text.isEmpty())
                lines.append(part.plain());
        }
    }
    return lines.join(u'\n');
}
