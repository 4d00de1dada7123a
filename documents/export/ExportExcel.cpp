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
    explicit SheetWriter(const Document& written) : document(written) {}

    QByteArray file(const Export::GoOn& goOn) {
        for (qsizetype i = 0; i < document.pages.size(); ++i) {
            Export::ask(goOn, i, document.pages.size());
            if (i == 0 || document.pages[i - 1].size != document.pages[i].size)
                beginPaper(i);
            add(document.pages[i]);
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
        edges = SheetBoxes::columnEdges(same);
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
    double heightOf(const GridRow& texts) const {
        double height = 0;
        constexpr double defaultSize = 10; // points, for a row's own height
        const bool several = breaks(texts);
        int next = 0;
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const PageText& text = *texts[i];
            const int column = std::max(next, columnOf(edges, text));
            const int last = lastColumn(column, endOf(texts, i), text);
            if (several || text.style->size > defaultSize)
                height = std::max(height, linesIn(text, rightOf(last) - edges[column]) *
                                              TextFit::lineHeight(text.style) * 1.15);
            next = last + 1;
        }
        return height;
    }

    static bool breaks(const GridRow& texts) {
        return std::any_of(texts.begin(), texts.end(), [](const PageText* text) { return text->breaks(); });
    }

    /// The column of the next text in a row, or the one behind the last.
    int endOf(const GridRow& texts, qsizetype place) const {
        return place + 1 < texts.size() ? columnOf(edges, *texts[place + 1]) : int(edges.size());
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

    void add(const SheetBoxes::Row& added, const QHash<int, Workbook::Frame>& frames) {
        const GridRow& texts = added.texts;
        int next = 0; // no two texts share a cell
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const PageText& text = *texts[i];
            const int column = std::max(next, columnOf(edges, text));
            addFrames(frames, next, column);
            addCell(book, row, column, text, {.top = breaks(texts), .frame = frames.value(column)});
            const int last = lastColumn(column, boxEnd(frames, column, endOf(texts, i)), text);
            if (last > column)
                book.merge(row, column, last);
            next = last + 1;
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

    /// The last column of a text. It spans the full width of its text, so a number is never too wide for it,
    /// and a formula's words, which are wider than its picture, are neither cut nor wrapped within one.
    int lastColumn(int column, int end, const PageText& text) const {
        double right = text.place.right();
        for (const QString& line : text.lines())
            right = std::max(right, text.place.left() + TextFit::width(line, text.style) * Wider + Margin);
        int last = column;
        while (last + 1 < end && edges[last + 1] < right - 1)
            ++last;
        return last;
    }

    /// The column behind the box or bar that a column is in, or an end before that: a text over the side of
    /// its box would hide it, and one over the end of its bar would lengthen it.
    static int boxEnd(const QHash<int, Workbook::Frame>& frames, int column, int end) {
        for (int inside = column; inside + 1 < end; ++inside)
            if (frames.value(inside).right ||
                (frames.value(inside).filled && !frames.value(inside + 1).filled))
                return inside + 1;
        return end;
    }

    /// Where a column ends, in points.
    double rightOf(int column) const {
        constexpr double border = 36;
        return column + 1 < edges.size() ? edges[column + 1]
                                         : std::max(edges.last() + border, paper.width() - border);
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
    PngPictures pictures;
    int sheets = 0;
    int row = Workbook::MostRows;
};

} // namespace

void Export::excel(const Document& document, QIODevice& file, const GoOn& goOn) {
    file.write(document.table ? tableWorkbook(document, goOn) : SheetWriter(document).file(goOn));
}
