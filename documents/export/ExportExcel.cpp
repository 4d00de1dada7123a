#include "core/base/Format.h"
#include "core/base/Numbers.h"
#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"
#include "documents/export/Workbook.h"
#include "documents/report/Renderer.h"
#include "documents/report/TextFit.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

/// A display pattern of the program as a spreadsheet writes it: what is not a digit place stands in quotes.
QString spreadsheetFormat(const QString& pattern, double number) {
    constexpr QLatin1String general("General");
    if (pattern.isEmpty() || pattern.startsWith(general)) {
        // As it is stored, with the decimals that it has: a spreadsheet's own general format rounds to the
        // column.
        const QString shown = ShownNumber(number, general);
        const qsizetype point = shown.indexOf(u'.');
        QString format = point < 0 ? "0" : "0." + QString(shown.size() - point - 1, u'0');
        if (pattern.size() > general.size())
            format += u'"' + pattern.mid(general.size()) + u'"';
        return shown.contains(u'E') ? QString() : format;
    }
    QString format;
    QString words;
    const auto flush = [&] {
        if (!words.isEmpty())
            format += u'"' + words + u'"';
        words.clear();
    };
    bool quoted = false;
    bool inNumber = false;
    for (const QChar c : pattern) {
        if (c == u'"') {
            quoted = !quoted;
            continue;
        }
        const bool digitPlace = !quoted && (c == u'#' || c == u'0' || c == u'%' ||
                                            (inNumber && words.isEmpty() && (c == u',' || c == u'.')));
        if (digitPlace) {
            flush();
            format += c;
            inNumber = true;
        } else {
            words += c;
        }
    }
    flush();
    return format;
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
    if (!text.number) // a text that looks like a number is a name or a code, and stays one
        return book.text(row, column, text.plain(), style);
    style.numberFormat = spreadsheetFormat(text.pattern, *text.number);
    book.number(row, column, *text.number, style);
}

/// Writes rows of texts into sheets, one below the other.
class SheetWriter {
  public:
    explicit SheetWriter(const Document& written) : document(written), edges(ColumnEdges(written.pages)) {}

    QByteArray file() {
        for (const Page& page : document.pages) {
            const PageGrid grid(page);
            const bool last = &page == &document.pages.last();
            for (const GridRow& all : grid.rows())
                if (const GridRow texts = once(all, last); !texts.isEmpty())
                    add(texts);
        }
        return book.file();
    }

  private:
    /// A sheet has no pages: what each page repeats stands there once, footers at the end, and no page is
    /// numbered.
    static GridRow once(const GridRow& texts, bool lastPage) {
        GridRow kept;
        for (const PageText* text : texts)
            if (!text->pageNumber && (text->section == Section::PageFooter ? lastPage : !text->repeated))
                kept.append(text);
        return kept;
    }

    void add(const GridRow& texts) {
        if (row == Workbook::mostRows)
            beginSheet();
        double height = 0;
        int next = 0; // two texts never share a cell
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const PageText& text = *texts[i];
            const int column = std::max(next, ColumnOf(edges, text));
            addCell(book, row, column, text);
            next = column + 1;
            joinCells(column, i + 1 < texts.size() ? ColumnOf(edges, *texts[i + 1]) : int(edges.size()),
                      text);
            constexpr double defaultSize = 10; // points, of a row's own height
            if (text.breaks() || text.style.size > defaultSize)
                height =
                    std::max(height, double(text.lines().size()) * TextFit::lineHeight(text.style) * 1.15);
        }
        if (height > 0)
            book.rowHeight(row, height);
        ++row;
    }

    /// A cell reaches as far as its text's place, so that a number is never too wide for it.
    void joinCells(int column, int end, const PageText& text) {
        int last = column;
        while (last + 1 < end && edges[last + 1] < text.place.right() - 1)
            ++last;
        if (last > column)
            book.merge(row, column, last);
    }

    void beginSheet() {
        QList<double> widths;
        for (qsizetype i = 0; i < edges.size(); ++i)
            widths.append((i + 1 < edges.size() ? edges[i + 1] : document.pages.first().size.width() - 36) -
                          edges[i]);
        const QString name =
            QString(document.title).remove(QRegularExpression("[\\[\\]:*?/\\\\]")).section(u',', 0, 0);
        book.addSheet(sheets == 0 ? name : QString("%1 %2").arg(name.left(24)).arg(sheets + 1), widths,
                      document.pages.first().size);
        ++sheets;
        row = 0;
    }

    const Document& document;
    const QList<double> edges;
    Workbook book;
    int sheets = 0;
    int row = Workbook::mostRows;
};

} // namespace

QByteArray Export::excel(const Document& document) {
    return SheetWriter(document).file();
}
