#pragma once

#include "setup/prior/JetFile.h"

#include <map>
#include <variant>
#include <vector>

namespace Jet {

/// A null, a number (a date counts the days since the end of 1899) or a text in UTF-8.
using Value = std::variant<std::monostate, double, std::string>;

/// One table of the file, read row by row. Nothing is skipped: an inconsistency ends the reading.
class Table {
  public:
    /// Reads the table whose definition starts on a page. Throws Damaged if the definition is unsound.
    Table(File& source, std::uint32_t page, const std::string& name);

    struct Column {
        std::string name;
        int type = 0; // the library's MDB_TEXT and so on
        bool isFixed = false;
        unsigned number = 0; // among all columns that ever existed
        unsigned place = 0;  // fixed columns: offset; others: index among those
        unsigned size = 0;   // bytes
    };
    /// Null if no column has this name, ignoring case.
    const Column* find(const std::string& name) const;

    /// The row count in the definition.
    std::uint32_t announcedRows() const { return library->num_rows; }

    /// Moves to the next row; false after the last that can be found. Throws Damaged for an incomplete row.
    bool step();

    /// A value of the row. Throws Damaged if it is incomplete, or neither number nor text.
    Value value(const Column& column);

  private:
    void requireChain(std::uint32_t page) const;
    void readColumns();
    void requireLayout();
    void readRow(const Page::Row& row);
    void readBorders(size_t behind);
    void requireBorders() const;
    Bytes bytesOf(const Column& column) const;
    std::string textOf(const Column& column, Bytes stored) const;
    std::string memoOf(Bytes stored);

    struct Free {
        void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
    };
    File& file;
    MdbCatalogEntry entry{};
    std::unique_ptr<MdbTableDef, Free> library;
    std::vector<Column> columns;
    unsigned columnsEver = 0; // including deleted ones
    unsigned nextRow = 0;     // on the page
    unsigned rowsOnPage = 0;

    // For the current row.
    size_t begin = 0;
    size_t end = 0;
    unsigned columnCount = 0; // of the table when the row was written
    std::vector<size_t>
        borders; // of the values without a fixed place, within the page; the last is their end
};

/// The tables of the file: name, as returned by Folded, and the page where its definition starts.
std::map<std::string, std::uint32_t> tablesOf(File& file);

/// A name with its case folded.
std::string caseFolded(std::string name);

} // namespace Jet
