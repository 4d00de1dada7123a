#include "core/base/Format.h"
#include "core/base/Numbers.h"
#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"
#include "documents/export/Workbook.h"
#include "documents/report/TextFit.h"

#include <QRegularExpression>

#include <cmath>

namespace {

/// A display pattern of the program as a spreadsheet writes it: what is not a digit place stands in quotes.
QString spreadsheetFormat(const QString& pattern) {
    QString format;
    QString words;
    const auto flush = [&] {
        if (!words.isEmpty())
            format += u'"' + words + u'"';
        words.clear();
    };
    bool quoted = false;
    bool number = false;
    for (const QChar c : pattern) {
        if (c == u'"') {
            quoted = !quoted;
            continue;
        }
        const bool digitPlace = !quoted && (c == u'#' || c == u'0' || c == u'%' ||
                                            (number && words.isEmpty() && (c == u',' || c == u'.')));
        if (digitPlace) {
            flush();
            format += c;
            number = true;
        } else {
            words += c;
        }
    }
    flush();
    return format;
}

/// Whether a text without a pattern is a number as a spreadsheet would show it too.
std::optional<double> plainNumber(const QString& text) {
    bool good = false;
    const double value = text.toDouble(&good);
    return good && QString::number(value, 'g', 15) == text ? std::optional(value) : std::nullopt;
}

Workbook::CellStyle styleOf(const PageText& text) {
    Workbook::CellStyle style;
    style.size = int(std::lround(text.style.size));
    style.bold = text.style.bold;
    style.italic = text.style.italic;
    style.align = text.style.alignment & Qt::AlignRight     ? Workbook::CellStyle::Align::Right
                  : text.style.alignment & Qt::AlignHCenter ? Workbook::CellStyle::Align::Center
                                                            : Workbook::CellStyle::Align::Left;
    style.wrap = text.lines().size() > 1;
    return style;
}

void addCell(Workbook& book, int row, int column, const PageText& text) {
    Workbook::CellStyle style = styleOf(text);
    const auto value = text.number && !text.pattern.isEmpty() ? text.number : plainNumber(text.text);
    if (!value)
        return book.text(row, column, text.plain(), style);
    if (!text.pattern.isEmpty())
        style.numberFormat = spreadsheetFormat(text.pattern);
    book.number(row, column, *value, style);
}

} // namespace

QByteArray Export::excel(const Document& document) {
    const Pages& pages = document.pages;
    const QList<double> edges = ColumnEdges(pages);
    QList<double> widths;
    for (qsizetype i = 0; i < edges.size(); ++i)
        widths.append((i + 1 < edges.size() ? edges[i + 1] : edges.last() + 72) - edges[i]);
    Workbook book;
    int row = Workbook::mostRows;
    int sheets = 0;
    for (const Page& page : pages) {
        const QList<GridRow> rows = RowsOf(page);
        if (row + rows.size() >= Workbook::mostRows) {
            const QString name = QString(document.title).remove(QRegularExpression("[\\[\\]:*?/\\\\]"));
            book.addSheet(sheets == 0 ? name : QString("%1 %2").arg(name.left(24)).arg(sheets + 1), widths);
            ++sheets;
            row = 0;
        }
        for (const GridRow& texts : rows) {
            int next = 0; // two texts never share a cell
            double height = 0;
            for (qsizetype i = 0; i < texts.size(); ++i) {
                const PageText& text = *texts[i];
                const int column = std::max(next, ColumnOf(edges, text));
                addCell(book, row, column, text);
                next = column + 1;
                // A cell reaches as far as its text's place, so that a number is never too wide for it.
                const int end = i + 1 < texts.size() ? ColumnOf(edges, *texts[i + 1]) : int(edges.size());
                int last = column;
                while (last + 1 < end && edges[last + 1] < text.place.right() - 1)
                    ++last;
                if (last > column)
                    book.merge(row, column, last);
                if (const auto lines = text.lines().size(); lines > 1)
                    height = std::max(height, double(lines) * TextFit::lineHeight(text.style) * 1.15);
            }
            if (height > 0)
                book.rowHeight(row, height);
            ++row;
        }
    }
    return book.file();
}
