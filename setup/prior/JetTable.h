#pragma once

#include "setup/prior/JetFile.h"

#include <map>
#include <variant>
#include <vector>

namespace Jet {

/// A null, a number (a date counts the days since the end of 1899) or a text in UTF-8.
using Value = std::variant<std::monostate, double, std::string>;

/// One table of the file, one row after the other. Nothing is passed over: what does not fit together ends
/// the reading.
class Table {
  public:
    /// Takes the table whose definition begins on a page. Throws Damaged when the definition is not sound.
    Table(File& source, std::uint32_t page, const std::string& name);

    struct Column {
        std::string name;
        int type = 0; // the library's MDB_TEXT and so on
        bool isFixed = false;
        unsigned number = 0; // among all that there ever were
        unsigned place = 0;  // of a fixed one its offset, of another its number among those
        unsigned size = 0;   // bytes
    };
    /// Nothing when there is none of the name, whose case does not count.
    const Column* find(const std::string& name) const;

    /// How many rows the definition counts.
    std::uint32_t announcedRows() const { return library->num_rows; }

    /// Goes to the next row; false behind the last that can be found. Throws Damaged for a row that is not
    /// whole.
    bool step();

    /// A value of the row. Throws Damaged when it is not whole, or is of a type that is neither number nor
    /// text.
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
    unsigned columnsEver = 0; // those included that were deleted
    unsigned nextRow = 0;     // on the page
    unsigned rowsOnPage = 0;

    // Of the row.
    size_t begin = 0;
    size_t end = 0;
    unsigned columnCount = 0; // of the table when the row was written
    std::vector<size_t>
        borders; // of the values without a fixed place, within the page; the last is their end
};

/// The tables of the file, each by its name as Folded makes it, with the page on which its definition begins.
std::map<std::string, std::uint32_t> TablesOf(File& file);

/// A name without regard to case.
std::string Folded(std::string name);

} // namespace Jet
