#include "documents/report/TextFit.h"

#include <QFontMetricsF>
#include <QHash>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace TextFit {

namespace {

constexpr int latinLetters = 256; // of Latin-1, which nearly all texts consist of

QFont fontOf(bool bold, bool italic, int pixels) {
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    font.setItalic(italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// The widths of a face's characters, measured once. Without hinting, the width of a text is the sum of its
/// characters and the kerning of each pair, in proportion to the size, so laying out a page needs no shaping.
class Face {
  public:
    Face(bool bold, bool italic)
        : metrics(fontOf(bold, italic, UnitsPerEm)),
          kerning(std::size_t(latinLetters) * latinLetters, Unknown) {
        for (int i = 0; i < latinLetters; ++i)
            advances[std::size_t(i)] = float(metrics.horizontalAdvance(QChar(i)));
    }

    /// In ems.
    double width(QStringView line) {
        double units = 0;
        for (qsizetype i = 0; i < line.size(); ++i) {
            if (line[i].unicode() >= latinLetters)
                return metrics.horizontalAdvance(line.toString()) / UnitsPerEm;
            units += advances[line[i].unicode()];
            if (i > 0)
                units += pair(line[i - 1], line[i]);
        }
        return units / UnitsPerEm;
    }

    /// What a character adds to the width of a line that starts at a position, in ems; a surrogate pair
    /// counts at its second half.
    double step(const QString& text, qsizetype at, qsizetype lineStart) {
        const QChar letter = text[at];
        if (letter.unicode() < latinLetters) {
            const bool follows = at > lineStart && text[at - 1].unicode() < latinLetters;
            return (advances[letter.unicode()] + (follows ? pair(text[at - 1], letter) : 0)) / UnitsPerEm;
        }
        if (letter.isHighSurrogate())
            return 0;
        const bool whole = letter.isLowSurrogate() && at > lineStart;
        const QString sign = whole ? text.mid(at - 1, 2) : QString(letter);
        auto known = others.constFind(sign);
        if (known == others.cend())
            known = others.insert(sign, metrics.horizontalAdvance(sign) / UnitsPerEm);
        return *known;
    }

    /// In ems, of two letters of Latin-1.
    double kern(QChar left, QChar right) { return pair(left, right) / UnitsPerEm; }

  private:
    static constexpr int UnitsPerEm = 2048;
    static constexpr float Unknown = std::numeric_limits<float>::max();

    float pair(QChar left, QChar right) {
        float& known = kerning[std::size_t(left.unicode()) * latinLetters + right.unicode()];
        if (known == Unknown)
            known = float(metrics.horizontalAdvance(QString(left) + right)) - advances[left.unicode()] -
                    advances[right.unicode()];
        return known;
    }

    QFontMetricsF metrics;
    std::array<float, latinLetters> advances{};
    std::vector<float> kerning;
    QHash<QString, double> others;
};

Face& face(const TextStyle& style) {
    static std::array<Face, 4> faces = {Face(false, false), Face(false, true), Face(true, false),
                                        Face(true, true)};
    return faces[(style.bold ? 2U : 0U) + (style.italic ? 1U : 0U)];
}

/// The font and line metrics of one size.
struct Sized {
    QFont font;
    double ascent;
    double lineHeight;
};

const Sized& sized(const TextStyle& style) {
    static QHash<int, Sized> all;
    const int pixels = std::max(1, int(std::lround(style.size * fontScale)));
    const int key = pixels * 4 + (style.bold ? 2 : 0) + (style.italic ? 1 : 0);
    auto found = all.constFind(key);
    if (found == all.cend()) {
        const QFont font = fontOf(style.bold, style.italic, pixels);
        const QFontMetricsF metrics(font);
        found = all.insert(key, {font, metrics.ascent() / fontScale, metrics.height() / fontScale});
    }
    return *found;
}

/// Whether a line may end after a character: at a blank, or after the hyphen of a compound word.
bool breaksBehind(const QString& text, qsizetype at) {
    return text[at] == u' ' || (text[at] == u'-' && at + 1 < text.size() && text[at + 1].isLetter() &&
                                at > 0 && text[at - 1].isLetter());
}

/// Whether a text must not break between a character and the one before it.
bool joinsBefore(const QString& text, qsizetype at) {
    return text[at].isLowSurrogate() || text[at].isMark();
}

/// The end of the line that starts at a position; the text has no carriage returns.
qsizetype lineEnd(const QString& text, qsizetype from, Face& letters, double ems) {
    double used = 0;
    qsizetype lastBreak = from;
    for (qsizetype at = from; at < text.size() && text[at] != u'\n'; ++at) {
        used += letters.step(text, at, from);
        if (used > ems && text[at] != u' ') {
            if (lastBreak > from)
                return lastBreak;
            qsizetype cut = std::max(at, from + 1);
            while (cut > from + 1 && joinsBefore(text, cut))
                --cut;
            return cut;
        }
        if (breaksBehind(text, at))
            lastBreak = at + 1;
    }
    const auto end = text.indexOf(u'\n', from);
    return end < 0 ? text.size() : end;
}

} // namespace

const QFont& font(const TextStyle& style) {
    return sized(style).font;
}

double width(QStringView line, const TextStyle& style) {
    return face(style).width(line) * style.size;
}

double kerning(QChar left, QChar right, const TextStyle& style) {
    return face(style).kern(left, right);
}

double lineHeight(const TextStyle& style) {
    return sized(style).lineHeight;
}

double ascent(const TextStyle& style) {
    return sized(style).ascent;
}

Wrapped wrapped(const QString& text, const TextStyle& style, double width, int mostLines) {
    Wrapped result;
    Face& letters = face(style);
    const double ems = (width + .01) / style.size;
    QChar separator;
    while (result.lines < mostLines && result.taken <= text.size()) {
        const qsizetype from = result.taken;
        qsizetype end = lineEnd(text, from, letters, ems);
        const bool paragraphEnds = end >= text.size() || text[end] == u'\n';
        QStringView line = QStringView(text).mid(from, end - from);
        while (line.endsWith(u' '))
            line.chop(1);
        if (result.lines > 0)
            result.text += separator;
        result.text += line;
        ++result.lines;
        separator = paragraphEnds              ? QChar(u'\n')
                    : line.size() < end - from ? PageText::BlankBreak
                                               : PageText::WordBreak;
        result.taken = paragraphEnds ? end + 1 : end;
    }
    result.taken = std::min(result.taken, text.size());
    return result;
}

Fitted fit(const QString& text, TextStyle style, const QSizeF& place, double smallest) {
    constexpr double step = .25; // points
    const QString clean = QString(text).remove(u'\r');
    for (;;) {
        const int most = std::max(1, int((place.height() + .01) / lineHeight(style)));
        Wrapped lines = wrapped(clean, style, place.width(), most);
        if (lines.taken == clean.size() || style.size - step < smallest)
            return {lines.text, style, clean.mid(lines.taken)};
        style.size -= step;
    }
}

} // namespace TextFit
