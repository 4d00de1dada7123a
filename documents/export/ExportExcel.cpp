#include "documents/export/Cells.h"
#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"
#include "documents/export/TableSheet.h"
#include "documents/report/TextFit.h"

#include <QIODevice>

#include <algorithm>

namespace {

/// Writes rows of text into sheets, one below the other.
class SheetWriter {
  public:
    explicit SheetWriter(const Document& written) : document(written), edges(columnEdges(written.pages)) {}

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
    /// A sheet has no pages: what every page repeats is written only once, footers go at the end, and page
    /// numbers are dropped.
    static GridRow once(const GridRow& texts, bool lastPage) {
        GridRow kept;
        for (const PageText* text : texts)
            if (!text->pageNumber && (text->section == Section::PageFooter ? lastPage : !text->repeated))
                kept.append(text);
        return kept;
    }

    void add(const GridRow& texts) {
        if (row == Workbook::MostRows)
            beginSheet();
        double height = 0;
        int next = 0; // no two texts share a cell
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const PageText& text = *texts[i];
            const int column = std::max(next, columnOf(edges, text));
            addCell(book, row, column, text);
            next = column + 1;
            joinCells(column, i + 1 < texts.size() ? columnOf(edges, *texts[i + 1]) : int(edges.size()),
                      text);
            constexpr double defaultSize = 10; // points, for a row's own height
            if (text.breaks() || text.style->size > defaultSize)
                height =
                    std::max(height, double(text.lines().size()) * TextFit::lineHeight(text.style) * 1.15);
        }
        if (height > 0)
            book.rowHeight(row, height);
        ++row;
    }

    /// A cell spans the full width of its text, so a number is never too wide for it.
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
        book.addSheet(sheetName(document, ++sheets), widths, document.pages.first().size);
        row = 0;
    }

    const Document& document;
    const QList<double> edges;
    Workbook book;
    int sheets = 0;
    int row = Workbook::MostRows;
};

} // namespace

void Export::excel(const Document& document, QIODevice& file) {
    file.write(document.table ? tableWorkbook(document) : SheetWriter(document).file());
}
