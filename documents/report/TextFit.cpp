#include "documents/report/TextFit.h"

#include <QFontMetricsF>
#include <QHash>
#include <QTextLayout>

#include <cmath>

namespace TextFit {

namespace {

/// Fonts and their metrics are asked for with every text of a report of many pages.
struct Measured {
    QFont font;
    QFontMetricsF metrics;
};

const Measured& measured(const TextStyle& style) {
    static QHash<QByteArray, Measured> all;
    const QByteArray key = QByteArray::number(int(std::lround(style.size * fontScale))) +
                           (style.bold ? 'b' : '-') + (style.italic ? 'i' : '-');
    auto found = all.constFind(key);
    if (found == all.cend()) {
        QFont font(QStringLiteral("Liberation Sans"));
        font.setPixelSize(std::max(1, int(std::lround(style.size * fontScale))));
        font.setBold(style.bold);
        font.setItalic(style.italic);
        font.setHintingPreference(QFont::PreferNoHinting);
        found = all.insert(key, {font, QFontMetricsF(font)});
    }
    return *found;
}

} // namespace

QFont font(const TextStyle& style) {
    return measured(style).font;
}

double width(const QString& line, const TextStyle& style) {
    return measured(style).metrics.horizontalAdvance(line) / fontScale;
}

double lineHeight(const TextStyle& style) {
    return measured(style).metrics.height() / fontScale;
}

double ascent(const TextStyle& style) {
    return measured(style).metrics.ascent() / fontScale;
}

QString wrapped(const QString& text, const TextStyle& style, double width) {
    QStringList paragraphs;
    for (const QString& paragraph : QString(text).remove(u'\r').split(u'\n')) {
        QTextLayout layout(paragraph, font(style));
        layout.beginLayout();
        QStringList lines;
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width * fontScale);
            QString piece = paragraph.mid(line.textStart(), line.textLength());
            while (piece.endsWith(u' '))
                piece.chop(1);
            lines.append(piece);
        }
        layout.endLayout();
        paragraphs.append(lines.join(QChar::LineSeparator));
    }
    return paragraphs.join(u'\n');
}

Fitted fit(const QString& text, TextStyle style, const QSizeF& place, double smallest) {
    constexpr double step = .25; // points
    const auto linesThatFit = [&] { return std::max(1, int((place.height() + .01) / lineHeight(style))); };
    QString lines = wrapped(text, style, place.width());
    const auto count = [&] { return 1 + lines.count(QChar::LineSeparator) + lines.count(u'\n'); };
    while (count() > linesThatFit() && style.size - step >= smallest) {
        style.size -= step;
        lines = wrapped(text, style, place.width());
    }
    if (count() <= linesThatFit())
        return {lines, style, {}};
    qsizetype end = 0;
    for (int kept = 0; kept < linesThatFit(); ++kept) {
        const auto soft = lines.indexOf(QChar::LineSeparator, end);
        const auto hard = lines.indexOf(u'\n', end);
        end = (soft < 0 || (hard >= 0 && hard < soft) ? hard : soft) + 1;
    }
    return {lines.left(end - 1), style, lines.mid(end).replace(QChar::LineSeparator, u' ')};
}

} // namespace TextFit
