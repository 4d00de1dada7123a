#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"
#include "documents/report/TextFit.h"

#include <QIODevice>

#include <cmath>

namespace {

constexpr double characterWidth = 4.6; // points per text column

constexpr int gap = 2; // blanks between neighbours, so that a phrase and two columns are told apart

/// Puts a text at a column of a line. If it would touch the text before, it moves to the right.
void put(QString& line, int column, const QString& text) {
    if (!line.isEmpty() && line.size() + gap > column)
        column = int(line.size()) + gap;
    line = line.leftJustified(column) + text;
}

/// The column of the character on which a text is aligned.
int markColumn(const PageText& text) {
    const double behind = TextFit::width(QStringView(text.text).mid(text.markAt()), text.style);
    return int(std::lround((text.place.right() - behind) / characterWidth));
}

QString rowLines(const GridRow& row) {
    QStringList lines;
    int end = 0; // column where the previous text ended, for right-aligned texts
    for (const PageText* text : row) {
        const QStringList parts = text->lines();
        for (int i = 0; i < parts.size(); ++i) {
            while (lines.size() <= i)
                lines.append(QString());
            int column = int(std::lround(text->place.left() / characterWidth));
            if (!text->style->mark.isEmpty())
                column = markColumn(*text) - int(text->markAt());
            else if (text->style->alignment & Qt::AlignRight)
                column = std::max(end, int(std::lround(text->place.right() / characterWidth)) -
                                           int(parts[i].size()));
            else if (text->style->alignment & Qt::AlignHCenter)
                column =
                    int(std::lround(text->place.center().x() / characterWidth)) - int(parts[i].size()) / 2;
            put(lines[i], std::max(0, column), parts[i]);
        }
        end = int(lines.first().size()) + gap;
    }
    return lines.join('\n') + '\n';
}

} // namespace

void Export::text(const Document& document, QIODevice& file, const GoOn& goOn) {
    qsizetype written = 0;
    for (const Page& page : document.pages) {
        ask(goOn, written, document.pages.size());
        QString text = written++ == 0 ? "" : "\f";
        const PageGrid grid(page);
        for (const GridRow& row : grid.rows())
            text += rowLines(row);
        file.write(text.toUtf8());
    }
}
