// The tables of a document: which columns they have, and what their cells are.

#include "documents/export/PdfPages.h"

#include <algorithm>

namespace {

constexpr double sameColumn = .5; // points between the left edges

QByteArray headingOf(const char* scope, int columns, int rows) {
    QByteArray entry = "/A<</O/Table/Scope/";
    entry += scope;
    if (columns > 1)
        entry += "/ColSpan " + QByteArray::number(columns);
    if (rows > 1)
        entry += "/RowSpan " + QByteArray::number(rows);
    return entry + ">>";
}

} // namespace

void PdfPages::rows(const QList<PdfReading::Row>& list) {
    for (const PdfReading::Row& row : list) {
        const bool first = row.section == Section::PageHeader;
        if (first)
            endTable();
        if (!inTable)
            beginTable(*row.texts.first());
        if (first)
            headings(row);
        else if (row.section == Section::GroupHeader)
            groupHeading(row);
        else
            cells(row);
    }
}

/// Finds the columns by reading ahead to the end of the table.
void PdfPages::beginTable(const PageText& first) {
    begin("Table");
    inTable = true;
    columns.clear();
    for (qsizetype i = pageIndex; i < document.pages.size(); ++i)
        for (const PageText& text : document.pages[i].texts) {
            if (PdfReading::isFurniture(text) || (i == pageIndex && &text < &first))
                continue;
            if (!text.cell || (text.section == Section::PageHeader && i > pageIndex))
                return sortColumns();
            if (text.section != Section::Detail)
                continue;
            const auto known = std::find_if(columns.begin(), columns.end(), [&](const Column& column) {
                return std::abs(column.left - text.place.left()) < sameColumn;
            });
            if (known == columns.end())
                columns.append({text.place.left(), text.place.right()});
            else
                known->right = std::max(known->right, text.place.right());
        }
    sortColumns();
}

void PdfPages::sortColumns() {
    std::sort(columns.begin(), columns.end(),
              [](const Column& a, const Column& b) { return a.left < b.left; });
}

void PdfPages::endTable() {
    if (inTable)
        end();
    inTable = false;
}

/// The first and the last column that a heading is above; -1 if it is above none.
std::pair<int, int> PdfPages::columnsUnder(const PageText& text) const {
    constexpr double least = .5; // of the narrower of the two
    int first = -1;
    int last = -1;
    for (int i = 0; i < columns.size(); ++i) {
        const double common =
            std::min(columns[i].right, text.place.right()) - std::max(columns[i].left, text.place.left());
        if (common < least * std::min(columns[i].right - columns[i].left, text.place.width()))
            continue;
        first = first < 0 ? i : first;
        last = i;
    }
    return {first, last};
}

/// Headings over several columns make a second row for those below them.
void PdfPages::headings(const PdfReading::Row& row) {
    struct Cell {
        int columns = 1;
        int rows = 1;
        QList<const PageText*> texts;
    };
    for (const PageText* one : row.texts)
        if (columnsUnder(*one).first < 0) // a column without any content
            columns.append({one->place.left(), one->place.right()});
    sortColumns();
    const int count = int(columns.size());
    QList<Cell> upper(count);
    QList<Cell> lower(count);
    QList<bool> covered(count, false);
    for (const PageText* one : row.texts)
        if (const auto [first, last] = columnsUnder(*one); last > first) {
            upper[first].columns = last - first + 1;
            upper[first].texts.append(one);
            std::fill(covered.begin() + first, covered.begin() + last + 1, true);
        }
    const bool two = covered.contains(true);
    for (const PageText* one : row.texts)
        if (const auto [first, last] = columnsUnder(*one); last == first)
            (covered[first] ? lower : upper)[first].texts.append(one);
    begin("TR");
    for (int i = 0; i < count; i += upper[i].columns)
        headingCell(headingOf("Column", upper[i].columns, two && !covered[i] ? 2 : 1), upper[i].texts);
    end();
    if (!two)
        return;
    begin("TR");
    for (int i = 0; i < count; ++i)
        if (covered[i])
            headingCell(headingOf("Column", 1, 1), lower[i].texts);
    end();
}

void PdfPages::headingCell(const QByteArray& entries, const QList<const PageText*>& list) {
    begin("TH", entries);
    for (const PageText* one : list)
        if (one->heading > 0)
            texts({one}, one->heading);
        else
            text(*one);
    end();
}

void PdfPages::cells(const PdfReading::Row& row) {
    begin("TR");
    for (const Column& column : columns) {
        begin("TD");
        for (const PageText* one : row.texts)
            if (std::abs(column.left - one->place.left()) < sameColumn)
                text(*one);
        end();
    }
    // What is in no column is not lost: it comes last.
    for (const PageText* one : row.texts)
        if (std::none_of(columns.begin(), columns.end(), [one](const Column& column) {
                return std::abs(column.left - one->place.left()) < sameColumn;
            })) {
            begin("TD");
            text(*one);
            end();
        }
    for (const PageCheck* one : row.checks) {
        begin("TD");
        check(*one);
        end();
    }
    end();
}

/// One heading over all columns: each label with its value.
void PdfPages::groupHeading(const PdfReading::Row& row) {
    begin("TR");
    begin("TH", headingOf("Row", int(columns.size()), 1));
    for (qsizetype i = 0; i < row.texts.size(); ++i) {
        QList<const PageText*> pair = {row.texts[i]};
        if (pair.first()->label && i + 1 < row.texts.size() && !row.texts[i + 1]->label)
            pair.append(row.texts[++i]);
        texts(pair, std::max(pair.first()->heading, pair.last()->heading));
    }
    for (const PageCheck* one : row.checks)
        check(*one);
    end();
    end();
}
