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
    explicit SheetWriter(const Document& written) : document(written) {}

    QByteArray file() {
        for (qsizetype i = 0; i < document.pages.size(); ++i) {
            const Page& page = document.pages[i];
            if (i == 0 || document.pages[i - 1].size != page.size)
                beginPaper(i);
            const PageGrid grid(page);
            const bool last = i + 1 == document.pages.size();
            for (const GridRow& all : grid.rows())
                if (const GridRow texts = once(all, last); !texts.isEmpty())
                    add(texts);
        }
        return book.file();
    }

  private:
    /// Pages of another paper begin a sheet with columns of their own.
    void beginPaper(qsizetype first) {
        paper = document.pages[first].size;
        Pages same;
        for (qsizetype i = first; i < document.pages.size() && document.pages[i].size == paper; ++i)
            same.append(document.pages[i]);
        edges = columnEdges(same);
        row = Workbook::MostRows;
    }

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
        const bool several =
            std::any_of(texts.begin(), texts.end(), [](const PageText* text) { return text->breaks(); });
        double height = 0;
        int next = 0; // no two texts share a cell
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const PageText& text = *texts[i];
            const int column = std::max(next, columnOf(edges, text));
            addCell(book, row, column, text, {.atTop = several});
            next = column + 1;
            const int end = i + 1 < texts.size() ? columnOf(edges, *texts[i + 1]) : int(edges.size());
            const int last = joinCells(column, end, text);
            constexpr double defaultSize = 10; // points, for a row's own height
            if (several || text.style->size > defaultSize)
                height = std::max(height, linesIn(text, rightOf(last) - edges[column]) *
                                              TextFit::lineHeight(text.style) * 1.15);
        }
        if (height > 0)
            book.rowHeight(row, height);
        ++row;
    }

    /// A cell spans the full width of its text, so a number is never too wide for it, and a formula's words,
    /// which are wider than its picture, are not wrapped within one.
    int joinCells(int column, int end, const PageText& text) {
        double right = text.place.right();
        if (text.breaks())
            for (const QString& line : text.lines())
                right =
                    std::max(right, text.place.left() + TextFit::width(line, text.style) * Wider + Margin);
        int last = column;
        while (last + 1 < end && edges[last + 1] < right - 1)
            ++last;
        if (last > column)
            book.merge(row, column, last);
        return last;
    }

    /// How many lines a text takes in a cell of a width in points. The sheet wraps paragraphs anew, with the
    /// widths of its own font.
    static int linesIn(const PageText& text, double width) {
        if (!text.breaks())
            return 1;
        constexpr int all = 1000;
        const double room = std::max(1.0, width - Margin) / Wider;
        int lines = 0;
        for (const QString& paragraph : text.plain().split(u'\n'))
            lines += std::max(1, TextFit::wrapped(paragraph, text.style, room, all).lines);
        return lines;
    }

    /// Where a column ends, in points.
    double rightOf(int column) const {
        return column + 1 < edges.size() ? edges[column + 1] : paper.width() - 36;
    }

    void beginSheet() {
        QList<double> widths;
        for (qsizetype i = 0; i < edges.size(); ++i)
            widths.append(rightOf(int(i)) - edges[i]);
        book.addSheet(sheetName(document, ++sheets), widths, paper);
        row = 0;
    }

    static constexpr double Margin = 6;   // points, within a cell and for its grid
    static constexpr double Wider = 1.04; // than ours are the fonts of some programs

    const Document& document;
    QSizeF paper;
    QList<double> edges;
    Workbook book;
    int sheets = 0;
    int row = Workbook::MostRows;
};

} // namespace

void Export::excel(const Document& document, QIODevice& file) {
    file.write(document.table ? tableWorkbook(document) : SheetWriter(document).file());
}
