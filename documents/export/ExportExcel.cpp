#include "documents/export/Cells.h"
#include "documents/export/Export.h"
#include "documents/export/PageGrid.h"
#include "documents/export/SheetBoxes.h"
#include "documents/export/TableSheet.h"
#include "documents/report/TextFit.h"

#include <QIODevice>

#include <algorithm>

namespace {

/// Writes rows of text into sheets, one below the other.
class SheetWriter {
  public:
    explicit SheetWriter(const Document& written)
        : document(written), edges(SheetBoxes::columnEdges(written.pages)) {}

    QByteArray file() {
        for (const Page& page : document.pages)
            add(page);
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

    void add(const Page& page) {
        const PageGrid grid(page);
        const bool last = &page == &document.pages.last();
        QList<SheetBoxes::Row> rows;
        for (const GridRow& all : grid.rows())
            if (const GridRow texts = once(all, last); !texts.isEmpty())
                rows.append({texts, topOf(*texts.first()), heightOf(texts)});
        SheetBoxes::makeRoom(page, rows);
        if (row + rows.size() > Workbook::MostRows)
            beginSheet();
        else if (row > 0)
            book.pageBreak(row);
        const int firstRow = row;
        const auto frames = SheetBoxes::framesOf(page, rows, edges);
        for (qsizetype i = 0; i < rows.size(); ++i)
            add(rows[i], frames[i]);
        SheetBoxes::addPictures(page, rows, edges, firstRow, pictures, book);
    }

    /// The height of a row in points; 0 for a row's own.
    static double heightOf(const GridRow& texts) {
        double height = 0;
        constexpr double defaultSize = 10; // points, for a row's own height
        for (const PageText* text : texts)
            if (text->breaks() || text->style->size > defaultSize)
                height =
                    std::max(height, double(text->lines().size()) * TextFit::lineHeight(text->style) * 1.15);
        return height;
    }

    void add(const SheetBoxes::Row& added, const QHash<int, Workbook::Frame>& frames) {
        const GridRow& texts = added.texts;
        int next = 0; // no two texts share a cell
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const PageText& text = *texts[i];
            const int column = std::max(next, columnOf(edges, text));
            addFrames(frames, next, column);
            addCell(book, row, column, text, false, frames.value(column));
            next =
                joinCells(column, i + 1 < texts.size() ? columnOf(edges, *texts[i + 1]) : int(edges.size()),
                          text) +
                1;
            addFrames(frames, column + 1, next);
        }
        addFrames(frames, next, int(edges.size()));
        if (added.height > 0)
            book.rowHeight(row, added.height);
        ++row;
    }

    /// The cells without a text that are framed or filled, from one column up to and without another.
    void addFrames(const QHash<int, Workbook::Frame>& frames, int from, int end) {
        for (int column = from; column < end; ++column)
            if (const auto frame = frames.constFind(column); frame != frames.cend()) {
                Workbook::CellStyle style;
                style.frame = *frame;
                book.blank(row, column, style);
            }
    }

    /// A cell spans the full width of its text, so a number is never too wide for it. Returns the last
    /// column.
    int joinCells(int column, int end, const PageText& text) {
        int last = column;
        while (last + 1 < end && edges[last + 1] < text.place.right() - 1)
            ++last;
        if (last > column)
            book.merge(row, column, last);
        return last;
    }

    void beginSheet() {
        constexpr double margin = 36; // points
        double right = edges.last() + margin;
        for (const Page& page : document.pages)
            right = std::max(right, page.size.width() - margin);
        QList<double> widths;
        for (qsizetype i = 0; i < edges.size(); ++i)
            widths.append((i + 1 < edges.size() ? edges[i + 1] : right) - edges[i]);
        book.addSheet(sheetName(document, ++sheets), widths, document.pages.first().size);
        row = 0;
    }

    const Document& document;
    const QList<double> edges;
    Workbook book;
    PngPictures pictures;
    int sheets = 0;
    int row = Workbook::MostRows;
};

} // namespace

void Export::excel(const Document& document, QIODevice& file) {
    file.write(document.table ? tableWorkbook(document) : SheetWriter(document).file());
}
