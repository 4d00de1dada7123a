#include "documents/export/TableSheet.h"

#include "documents/export/Cells.h"
#include "documents/export/PageGrid.h"
#include "documents/report/TextFit.h"

#include <QHash>

#include <algorithm>

namespace {

constexpr double sameColumn = 5;   // points by which a heading must reach into a column
constexpr double buttonWidth = 14; // points, of a filter's button

/// A page with each check box as a label and a word.
Page withoutChecks(Page page) {
    for (const PageCheck& check : page.checks) {
        PageText label = check.caption;
        label.label = true;
        PageText word = check.caption;
        word.label = false;
        word.text = check.checked ? QStringLiteral("Yes") : QStringLiteral("No");
        word.place.moveLeft(label.place.left() + 1);
        page.texts << label << word;
    }
    page.checks.clear();
    return page;
}

/// A column filled from a group's headings.
struct GroupColumn {
    PageText heading;
    PageText value;
    double width = 0;
};

class TableWriter {
  public:
    TableWriter(const Document& written, const Export::GoOn& asked)
        : document(written), goOn(asked), edges(edgesOf(written.pages)) {
        measure();
    }

    QByteArray file() {
        beginSheet();
        forEachRow([this](const GridRow& row, bool lastPage) { write(row, lastPage); });
        endTable();
        for (const QString& line : closing)
            book.text(rows++, 0, line, {});
        return book.file();
    }

  private:
    static QList<double> edgesOf(const Pages& pages) {
        Pages details;
        for (const Page& page : pages) {
            details.append(Page());
            for (const PageText& text : page.texts)
                if (text.section == Section::Detail)
                    details.last().texts.append(text);
        }
        return columnEdges(details);
    }

    template<typename Use>
    void forEachRow(Use use) {
        constexpr int passes = 2; // to measure and to write
        for (const Page& page : document.pages) {
            Export::ask(goOn, passed++, passes * document.pages.size());
            const Page words = withoutChecks(page);
            const PageGrid grid(words);
            for (const GridRow& row : grid.rows())
                use(row, &page == &document.pages.last());
        }
    }

    /// Finds out how the detail columns are aligned, how wide the columns behind them are, and their
    /// headings.
    void measure() {
        forEachRow([this](const GridRow& row, bool) {
            if (row.first()->section == Section::GroupHeader && !row.first()->repeated)
                takeGroup(row);
            if (row.first()->section == Section::Detail)
                for (const PageText* text : row)
                    alignments.insert(columnOf(edges, *text), cellStyleOf(*text).align);
        });
        for (GroupColumn& group : groups) // no group has a value when writing begins
            group.value = PageText();
    }

    void write(const GridRow& row, bool lastPage) {
        switch (row.first()->section) {
        case Section::ReportHeader:
            return title(row);
        case Section::PageHeader:
        case Section::RunningHeader:
        case Section::Continuation:
            if (!row.first()->repeated)
                captions.append(ownTexts(row));
            return;
        case Section::GroupHeader:
            return takeGroup(row);
        case Section::Detail:
            return detail(row);
        case Section::PageFooter:
        case Section::ReportFooter:
            if (lastPage)
                close(row);
        }
    }

    void title(const GridRow& row) {
        QStringList words;
        for (const PageText* text : row)
            words.append(text->plain());
        Workbook::CellStyle style = cellStyleOf(*row.first());
        style.align = Workbook::CellStyle::Align::Left; // so that it extends over the empty cells beside it,
        style.wrap = false;                             // on one line
        book.text(rows, 0, words.join(u' '), style);
        book.rowHeight(rows++, TextFit::lineHeight(row.first()->style) * 1.2);
    }

    static QList<PageText> ownTexts(const GridRow& row) {
        QList<PageText> texts;
        for (const PageText* text : row)
            texts.append(*text);
        return texts;
    }

    /// Each label of a group's heading becomes a column heading, and the value behind it fills the column.
    void takeGroup(const GridRow& row) {
        qsizetype column = -1;
        for (const PageText* text : row) {
            if (text->label && ++column == groups.size())
                groups.append(GroupColumn());
            if (column < 0)
                continue;
            GroupColumn& group = groups[column];
            PageText& part = text->label ? group.heading : group.value;
            part = *text;
            if (text->label)
                group.value = PageText();
            group.width = std::max(group.width, TextFit::width(text->plain(), text->style) + 2 * sameColumn);
        }
    }

    void detail(const GridRow& row) {
        if (rows == Workbook::MostRows) {
            endTable();
            beginSheet();
        }
        if (headingRow < 0)
            headings();
        for (const PageText* text : row)
            addCell(book, rows, columnOf(edges, *text), *text);
        int column = int(edges.size());
        for (const GroupColumn& group : groups) {
            if (!group.value.text.isEmpty())
                addCell(book, rows, column, group.value, {.indented = true});
            ++column;
        }
        ++rows;
    }

    /// The captions above a column on the page, joined from the top line to the bottom.
    QString captionOf(double left, double right) const {
        QStringList lines;
        for (const QList<PageText>& line : captions) {
            QStringList words;
            for (const PageText& text : line)
                if (std::min(right, text.place.right()) - std::max(left, text.place.left()) > sameColumn)
                    words.append(text.plain());
            if (!words.isEmpty())
                lines.append(words.join(u' '));
        }
        return lines.join(u'\n');
    }

    void headings() {
        using Align = Workbook::CellStyle::Align;
        Workbook::CellStyle style;
        style.bold = true;
        style.wrap = true;
        headingRow = rows++;
        for (int i = 0; i < edges.size(); ++i) { // the buttons are on the right
            style.align = alignments.value(i, Align::Left) == Align::Left ? Align::Left : Align::Center;
            book.text(headingRow, i, captionOf(edges[i], rightOf(i)), style);
        }
        style.align = Align::Left;
        style.indented = true;
        int column = int(edges.size());
        for (const GroupColumn& group : groups)
            book.text(headingRow, column++, group.heading.plain(), style);
        constexpr double height = 44; // points: three lines and the buttons
        book.rowHeight(headingRow, height);
    }

    double rightOf(qsizetype column) const {
        constexpr double margin = 36; // points
        return column + 1 < edges.size() ? edges[column + 1] : document.pages.first().size.width() - margin;
    }

    void beginSheet() {
        QList<double> widths;
        for (qsizetype i = 0; i < edges.size(); ++i)
            widths.append(rightOf(i) - edges[i] + buttonWidth);
        for (const GroupColumn& group : groups)
            widths.append(group.width + buttonWidth);
        book.addSheet(sheetName(document, ++sheets), widths, document.pages.first().size);
        rows = 0;
        headingRow = -1;
    }

    /// A list without rows still gets its headings.
    void endTable() {
        if (headingRow < 0)
            headings();
        book.filter(headingRow, std::max(headingRow, rows - 1), int(edges.size() + groups.size()));
    }

    void close(const GridRow& row) {
        for (const PageText* text : row)
            if (!text->pageNumber)
                closing.append(text->plain());
    }

    const Document& document;
    const Export::GoOn& goOn;
    qsizetype passed = 0; // pages
    const QList<double> edges;
    QHash<int, Workbook::CellStyle::Align> alignments; // of the details, by column
    QList<GroupColumn> groups;
    QList<QList<PageText>> captions;
    QStringList closing;
    Workbook book;
    int sheets = 0;
    int rows = 0;
    int headingRow = -1;
};

} // namespace

QByteArray tableWorkbook(const Document& document, const Export::GoOn& goOn) {
    return TableWriter(document, goOn).file();
}
