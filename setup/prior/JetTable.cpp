#include "setup/prior/JetTable.h"

#include "core/base/Fault.h"
#include "setup/PriorTables.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <set>

namespace Jet {

namespace {

constexpr unsigned maxColumns = 255;
constexpr unsigned maxIndexes = 1000; // a table has 32, plus one for each that other tables have on it

/// The size in bytes of a type's values; nothing if the column gives it.
std::optional<unsigned> sizeOf(int type) {
    switch (type) {
    case MDB_BYTE:
        return 1;
    case MDB_INT:
        return 2;
    case MDB_LONGINT:
    case MDB_FLOAT:
        return 4;
    case MDB_MONEY:
    case MDB_DOUBLE:
    case MDB_DATETIME:
        return 8;
    default:
        return std::nullopt;
    }
}

template<typename Number>
Number numberAt(Bytes bytes) {
    std::array<unsigned char, sizeof(Number)> raw{};
    if (bytes.size() != raw.size())
        throw Damaged("a number of another size");
    std::ranges::copy(bytes, raw.begin());
    if constexpr (std::endian::native == std::endian::big)
        std::ranges::reverse(raw);
    Number number;
    std::memcpy(&number, raw.data(), sizeof number);
    return number;
}

/// No computation yields so small a number, but an integer misread as floating point does.
double checkedNumber(float number) {
    if (number != 0 && std::abs(number) < std::numeric_limits<float>::min())
        throw Damaged("a number of another kind");
    return number;
}

} // namespace

std::string caseFolded(std::string name) {
    std::ranges::transform(name, name.begin(), g_ascii_tolower);
    return name;
}

Table::Table(File& source, std::uint32_t page, const std::string& name) : file(source) {
    requireChain(page);
    entry.mdb = &file.handle();
    entry.table_pg = page;
    name.copy(entry.object_name, sizeof entry.object_name - 1);
    library.reset(mdb_read_table(&entry));
    if (!library)
        throw Damaged("the definition of " + name);
    readColumns();
    requireLayout();
    mdb_rewind_table(library.get());
}

/// A definition can continue over several pages. The library would follow a loop forever.
void Table::requireChain(std::uint32_t page) const {
    constexpr size_t nextAt = 4;
    std::set<std::uint32_t> pages;
    for (std::uint32_t next = page; next != 0;) {
        const Page found = file.pageBeside(next);
        if (found.kind() != Page::TableDefinition)
            throw Damaged("a definition on a page for other things");
        if (!pages.insert(next).second)
            throw Damaged("a chain that leads back");
        next = found.number(nextAt);
    }
}

void Table::readColumns() {
    const auto columnsEverAt = static_cast<size_t>(file.handle().fmt->tab_num_cols_offset) - 4;
    columnsEver = file.currentPage().word(columnsEverAt);
    if (library->num_cols == 0 || library->num_cols > maxColumns || columnsEver < library->num_cols ||
        columnsEver > maxColumns || library->num_var_cols > columnsEver ||
        library->num_real_idxs > maxIndexes || !mdb_read_columns(library.get()))
        throw Damaged("the columns of a table");
    for (unsigned i = 0; i < library->num_cols; ++i) {
        const auto& column = *static_cast<MdbColumn*>(g_ptr_array_index(library->columns, i));
        const bool isFixed = column.is_fixed != 0;
        columns.push_back({.name = column.name,
                           .type = column.col_type,
                           .isFixed = isFixed,
                           .number = static_cast<unsigned>(column.col_num),
                           .place = isFixed ? static_cast<unsigned>(column.fixed_offset) : column.var_col_num,
                           .size = static_cast<unsigned>(column.col_size)});
    }
}

/// The columns of a row are adjacent: none overlap, and none is missing unless it was deleted.
void Table::requireLayout() {
    std::set<unsigned> numbers;
    std::vector<bool> fixed;
    std::vector<bool> others(library->num_var_cols);
    const auto occupy = [](std::vector<bool>& places, size_t first, size_t count) {
        for (size_t place = first; place < first + count; ++place) {
            if (places[place])
                throw Damaged("columns that lie over each other");
            places[place] = true;
        }
    };
    for (const Column& column : columns) {
        if (column.number >= columnsEver || !numbers.insert(column.number).second)
            throw Damaged("the number of a column");
        if (column.type == MDB_BOOL) // stored in the bits that mark nulls in other columns
            continue;
        if (column.isFixed ? sizeOf(column.type).value_or(column.size) != column.size
                           : column.place >= others.size())
            throw Damaged("the place of a column");
        if (column.isFixed && fixed.size() < column.place + column.size)
            fixed.resize(column.place + column.size);
        occupy(column.isFixed ? fixed : others, column.place, column.isFixed ? column.size : 1);
    }
    const bool noneDeleted = columnsEver == columns.size();
    if (noneDeleted && (std::ranges::count(fixed, false) != 0 || std::ranges::count(others, false) != 0))
        throw Damaged("columns that are missing");
}

const Table::Column* Table::find(const std::string& name) const {
    const auto found = std::ranges::find_if(columns, [wanted = caseFolded(name)](const Column& column) {
        return caseFolded(column.name) == wanted;
    });
    return found == columns.end() ? nullptr : &*found;
}

bool Table::step() {
    while (true) {
        while (nextRow >= rowsOnPage) {
            if (mdb_read_next_dpg(library.get()) == 0)
                return false;
            nextRow = 0;
            rowsOnPage = file.currentPage().rowCount();
        }
        const Page::Row row = file.currentPage().row(nextRow++);
        if (row.isElsewhere)
            continue;
        readRow(row);
        return true;
    }
}

/// A row consists of its column count, the fixed values, the others, their borders and a bit per column that
/// is set unless the value is null.
void Table::readRow(const Page::Row& row) {
    const Page page = file.currentPage();
    const size_t sizeOfCount = file.isVersion3() ? 1 : 2;
    begin = row.begin;
    end = row.begin + row.size;
    if (row.size < sizeOfCount)
        throw Damaged("a row without columns");
    columnCount = file.isVersion3() ? page.byte(begin) : page.word(begin);
    if (columnCount == 0)
        throw Damaged("a row without columns");
    const size_t sizeOfBits = (columnCount + 7) / 8;
    if (columnCount > columnsEver || row.size < sizeOfCount + sizeOfBits)
        throw Damaged("a row");
    borders.clear();
    readBorders(end - sizeOfBits);
    requireBorders();
}

/// The borders follow the values, in reverse: last in the row is the number of values. Version 3 has a byte
/// for each and, before the count, a table of the values at which another 256 bytes begin.
void Table::readBorders(size_t behind) {
    const Page page = file.currentPage();
    if (library->num_var_cols == 0) {
        borders.push_back(behind);
        return;
    }
    const size_t width = file.isVersion3() ? 1 : 2;
    const size_t count = file.isVersion3() ? page.byte(behind - 1) : page.word(behind - 2);
    size_t jumps = file.isVersion3() ? (end - begin - 1) / 256 : 0;
    const size_t first = behind - width - jumps - width; // the border before the first value
    if (count > library->num_var_cols || first < begin + width * (count + 1))
        throw Damaged("a row");
    const size_t last = first - width * count;
    if ((last - begin) / 256 < jumps)
        --jumps;
    for (size_t i = 0, passed = 0; i <= count; ++i) {
        while (passed < jumps && page.byte(behind - 2 - passed) == i)
            ++passed;
        const size_t place = first - width * i;
        borders.push_back(begin + (file.isVersion3() ? page.byte(place) + 256 * passed : page.word(place)));
    }
    if (borders.back() != last)
        throw Damaged("a row that does not end with its last value");
}

/// The values must fill the row. A row older than a column has no value for it.
void Table::requireBorders() const {
    size_t fixedEnd = begin + (file.isVersion3() ? 1 : 2);
    const size_t firstFixed = fixedEnd;
    size_t others = 0;
    for (const Column& column : columns)
        if (column.number >= columnCount || column.type == MDB_BOOL)
            continue;
        else if (column.isFixed)
            fixedEnd = std::max(fixedEnd, firstFixed + column.place + column.size);
        else
            others = std::max<size_t>(others, column.place + 1);
    const bool noneDeleted = columnsEver == columns.size();
    if (!std::ranges::is_sorted(borders) || borders.front() < fixedEnd || borders.size() - 1 < others ||
        (noneDeleted && (borders.front() != fixedEnd || borders.size() - 1 != others)))
        throw Damaged("a row with other values than its columns");
}

Bytes Table::bytesOf(const Column& column) const {
    const Page page = file.currentPage();
    if (column.isFixed)
        return page.range(begin + (file.isVersion3() ? 1 : 2) + column.place, column.size);
    return page.range(borders[column.place], borders[column.place + 1] - borders[column.place]);
}

Value Table::value(const Column& column) {
    if (column.number >= columnCount)
        return {};
    const unsigned bits = file.currentPage().byte(end - (columnCount + 7) / 8 + column.number / 8);
    const bool isNull = (bits >> column.number % 8 & 1U) == 0;
    const Bytes stored = bytesOf(column);
    if (isNull) {
        if (!column.isFixed && !stored.empty())
            throw Damaged("a null with a value");
        return {};
    }
    switch (column.type) {
    case MDB_BYTE:
        return static_cast<double>(numberAt<unsigned char>(stored));
    case MDB_INT:
        return static_cast<double>(numberAt<std::int16_t>(stored));
    case MDB_LONGINT:
        return static_cast<double>(numberAt<std::int32_t>(stored));
    case MDB_FLOAT:
        return checkedNumber(numberAt<float>(stored));
    case MDB_DOUBLE:
    case MDB_DATETIME:
        return numberAt<double>(stored);
    case MDB_TEXT:
        return textOf(column, stored);
    case MDB_MEMO:
        return memoOf(stored);
    default:
        throw Damaged("a value of another kind");
    }
}

std::string Table::textOf(const Column& column, Bytes stored) const {
    std::string text = file.text(stored);
    const auto characters = static_cast<size_t>(g_utf8_strlen(text.data(), static_cast<gssize>(text.size())));
    if (characters * (file.isVersion3() ? 1 : 2) > column.size)
        throw Damaged("a text longer than its column");
    return text;
}

/// A memo is within its row, in one piece elsewhere, or in a chain of pieces, each of which starts with the
/// place of the next.
std::string Table::memoOf(Bytes stored) {
    constexpr std::uint32_t lengthBits = 0x3fffffff;
    constexpr std::uint32_t inRow = 0x80000000;
    constexpr std::uint32_t inOnePiece = 0x40000000;
    if (stored.empty())
        return {};
    if (stored.size() < MDB_MEMO_OVERHEAD)
        throw Damaged("a memo");
    const auto word = numberAt<std::uint32_t>(stored.first(4));
    auto place = numberAt<std::uint32_t>(stored.subspan(4, 4));
    const size_t length = word & lengthBits;
    if (length > PriorTables::largestOutput)
        throw Damaged("a memo longer than any");
    std::vector<unsigned char> bytes;
    const auto append = [&bytes](Bytes piece) { bytes.insert(bytes.end(), piece.begin(), piece.end()); };
    if ((word & inRow) != 0) {
        append(stored.subspan(MDB_MEMO_OVERHEAD));
    } else if (stored.size() != MDB_MEMO_OVERHEAD) {
        throw Damaged("a memo");
    } else if ((word & inOnePiece) != 0) {
        append(file.pieceOfText(place));
    } else {
        while (place != 0 && bytes.size() < length) {
            const Bytes piece = file.pieceOfText(place);
            if (piece.size() <= sizeof place)
                throw Damaged("a memo that breaks off");
            place = numberAt<std::uint32_t>(piece.first(sizeof place));
            append(piece.subspan(sizeof place));
        }
        if (place != 0)
            throw Damaged("a memo that goes on");
    }
    if (bytes.size() != length)
        throw Damaged("a memo that breaks off");
    return file.text(bytes);
}

std::map<std::string, std::uint32_t> tablesOf(File& file) {
    constexpr std::uint32_t catalogue = 2; // the page of its definition
    constexpr std::uint32_t pages = 0xffffff;
    constexpr int flags = ~0x7f;
    constexpr int tableType = 1;
    Table objects(file, catalogue, "MSysObjects");
    const Table::Column* id = objects.find("Id");
    const Table::Column* name = objects.find("Name");
    const Table::Column* type = objects.find("Type");
    if (!id || !name || !type)
        throw Damaged("the catalogue of tables");
    std::map<std::string, std::uint32_t> tables;
    while (objects.step()) {
        const Value page = objects.value(*id);
        const Value text = objects.value(*name);
        const Value kind = objects.value(*type);
        if (!std::holds_alternative<double>(page) || !std::holds_alternative<std::string>(text) ||
            !std::holds_alternative<double>(kind))
            throw Damaged("the catalogue of tables");
        if ((static_cast<int>(std::get<double>(kind)) & ~flags) != tableType)
            continue;
        const auto begin =
            static_cast<std::uint32_t>(static_cast<std::int32_t>(std::get<double>(page))) & pages;
        if (!tables.emplace(caseFolded(std::get<std::string>(text)), begin).second)
            throw Damaged("two tables of one name");
    }
    return tables;
}

} // namespace Jet
