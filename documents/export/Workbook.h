#pragma once

#include "documents/export/SheetPictures.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSizeF>
#include <QString>

#include <cstdint>

/// A workbook in the binary spreadsheet format BIFF8 (.xls, as of 1997 to 2003).
class Workbook {
  public:
    /// What is drawn around and behind a cell.
    struct Frame {
        bool left : 1 = false;
        bool top : 1 = false;
        bool right : 1 = false;
        bool bottom : 1 = false;
        bool filled : 1 = false;
        bool operator==(const Frame&) const = default;
    };
    /// How a cell looks.
    struct CellStyle {
        int size = 9; // points
        bool bold = false;
        bool italic = false;
        enum class Align : std::uint8_t { Left = 1, Center = 2, Right = 3 } align = Align::Left;
        bool wrap = false;
        bool top = false;      // beside a text of several lines; otherwise at the bottom unless wrapped
        bool indented = false; // keeps a distance from a number that ends in the cell before
        QString numberFormat;  // in the spreadsheet's syntax; empty for the general format
        Frame frame{};
        bool operator==(const CellStyle&) const = default;
    };

    /// Begins a sheet. Its name is cut to 31 characters. Column widths and paper size are in points; the
    /// sheet prints one page wide.
    void addSheet(const QString& name, const QList<double>& columnWidths, const QSizeF& paper);
    /// Cells of the last sheet, counted from row and column 0, in ascending order.
    void text(int row, int column, const QString& text, const CellStyle& style);
    void number(int row, int column, double value, const CellStyle& style);
    /// A cell without content.
    void blank(int row, int column, const CellStyle& style);
    /// A PNG picture on the last sheet, from one cell to another; none on a sheet with filters.
    void picture(const QByteArray& png, const QString& description, const SheetPictures::Corner& upperLeft,
                 const SheetPictures::Corner& lowerRight);
    /// A row of the last sheet begins a page when it is printed.
    void pageBreak(int row);
    /// Joins the cells of a row from one column to another.
    void merge(int row, int firstColumn, int lastColumn);
    void rowHeight(int row, double points);
    /// Makes a row of the last sheet the heading of the rows below it, down to lastRow: each heading gets a
    /// filter, and the row stays in view and is printed on every page.
    void filter(int headingRow, int lastRow, int columns);

    /// The finished file: the workbook in its compound file.
    QByteArray file() const;

    static constexpr int MostRows = 65536;
    static constexpr int MostColumns = 256;

  private:
    struct Cell {
        int row;
        int column;
        int style;
        int string; // index in the string table, or one of those below
        double value;
    };
    static constexpr int NumberCell = -1;
    static constexpr int BlankCell = -2;
    struct Merged {
        int row;
        int first;
        int last;
    };
    struct Filter {
        int headingRow = 0;
        int lastRow = 0;
        int columns = 0; // 0 for no filter
    };
    struct Sheet {
        QString name;
        QList<double> columnWidths;
        QSizeF paper;
        QList<Cell> cells;
        QList<Merged> merged;
        QHash<int, double> heights;
        Filter filter;
        QList<int> breaks; // rows that begin a page
    };

    int styleIndex(const CellStyle& style);
    QByteArray globals(const QList<qsizetype>& sheetOffsets) const;
    QByteArray filterNames() const;
    QByteArray stringTable() const;
    QByteArray sheetRecords(int number) const;

    QList<Sheet> sheets;
    SheetPictures pictures;
    QList<CellStyle> styles;
    QList<QString> strings;
    QHash<QString, int> stringPlaces;
    int stringUses = 0;
};
