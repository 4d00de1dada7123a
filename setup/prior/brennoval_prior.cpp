// brennoval-prior FILE writes the rows of the earlier program's tables, from its Jet file, to standard
// output, in the form that setup/PriorTables.h gives. The library believes what a file says of itself, so a
// damaged one can crash or stall it; that is why this is a process of its own. It takes nothing for granted
// itself: a row or a memo that is not whole is a failure, not a shorter result.

#include "core/base/Fault.h"
#include "setup/PriorTables.h"

#include <glib.h> // ahead of the library, whose header would take it into its extern "C"
#include <iconv.h>
#include <mdbtools.h>

#ifndef _WIN32
#include <sys/resource.h>
#endif

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int largestRowOffset = 0x1fff; // the bits above it are flags
constexpr std::uint32_t largestMemo = 0x3fffffff;

[[noreturn]] void unreadable(const std::string& why) {
    throw DatabaseFault(DatabaseFault::Unspecified, "Unrecognized database format: " + why);
}

template<typename Number>
void put(Number number) {
    std::fwrite(&number, sizeof number, 1, stdout);
}

void putText(PriorTables::Mark mark, std::string_view text) {
    put<char>(mark);
    put(static_cast<std::uint32_t>(text.size()));
    std::fwrite(text.data(), 1, text.size(), stdout);
}

struct CloseFile {
    void operator()(MdbHandle* file) const { mdb_close(file); }
};
using File = std::unique_ptr<MdbHandle, CloseFile>;

struct FreeTable {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using TableDefinition = std::unique_ptr<MdbTableDef, FreeTable>;

/// Whether the file asks for a password. Right after the opening the library's page is the deciphered header.
bool hasPassword(MdbHandle& file) {
    constexpr int passwordAt = 0x42;
    constexpr int dateAt = 0x72; // of the file's creation, whose day masks the password from Jet 4 on
    const bool masked = file.f->jet_version != MDB_VER_JET3;
    const int length = masked ? 40 : 20;
    const auto day = masked ? static_cast<std::uint32_t>(static_cast<std::int64_t>(
                                  std::clamp(mdb_get_double(file.pg_buf, dateAt), 0.0, 4e9)))
                            : 0;
    for (int i = 0; i < length; ++i)
        if (file.pg_buf[passwordAt + i] != static_cast<unsigned char>(day >> (i % 4 * 8)))
            return true;
    return false;
}

/// The library takes an empty file, and much else, for one of an old version.
void requireHeader(const char* path) {
    constexpr std::string_view identity = "Standard Jet DB";
    constexpr std::size_t identityAt = 4;
    std::array<char, 2048> page{}; // the smallest that there is
    std::ifstream file(path, std::ios::binary);
    if (!file.read(page.data(), page.size()) ||
        std::string_view(page.data(), page.size()).substr(identityAt, identity.size()) != identity)
        unreadable("the file begins as none of its kind");
}

File open(const char* path) {
    requireHeader(path);
    File file(mdb_open(path, MDB_NOFLAGS));
    if (!file)
        unreadable("the file cannot be opened");
    if (file->f->jet_version != MDB_VER_JET3 && file->f->jet_version != MDB_VER_JET4)
        unreadable("the file is of another version");
    if (hasPassword(*file))
        throw DatabaseFault(DatabaseFault::NoDataSource, "Not a valid password.");
    if (!mdb_read_catalog(file.get(), MDB_TABLE))
        unreadable("there is no catalogue of tables");
    return file;
}

/// One table of the file, one row after the other, with the columns that are asked for in their order.
class TableReader {
  public:
    TableReader(MdbHandle& source, const PriorTables::Table& wanted) : file(source) {
        MdbCatalogEntry* entry = find(wanted.name);
        table.reset(mdb_read_table(entry));
        if (!table || !mdb_read_columns(table.get()))
            unreadable(std::string("the definition of ") + wanted.name);
        for (const PriorTables::Column& column : wanted.columns)
            columns.push_back(columnIndex(wanted.name, column.prior));
        fields.resize(table->num_cols);
        mdb_rewind_table(table.get());
    }

    std::uint32_t announcedRows() const { return table->num_rows; }

    /// Goes to the next row; false behind the last.
    bool step() {
        if (!mdb_fetch_row(table.get()))
            return false;
        int start = 0;
        size_t size = 0;
        if (mdb_find_row(&file, static_cast<int>(table->cur_row) - 1, &start, &size) != 0 ||
            mdb_crack_row(table.get(), start & largestRowOffset, size, fields.data()) < 0)
            unreadable("a row");
        return true;
    }

    void writeRow() {
        put<char>(PriorTables::RowBegins);
        for (const unsigned column : columns)
            writeValue(column);
    }

  private:
    MdbCatalogEntry* find(const char* name) {
        for (unsigned i = 0; i < file.num_catalog; ++i) {
            auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(file.catalog, i));
            if (entry->object_type == MDB_TABLE && g_ascii_strcasecmp(entry->object_name, name) == 0)
                return entry;
        }
        throw DatabaseFault(DatabaseFault::NoSuchTable,
                            std::string("The database has no table ") + name + ".");
    }

    MdbColumn& column(unsigned index) const {
        return *static_cast<MdbColumn*>(g_ptr_array_index(table->columns, index));
    }

    unsigned columnIndex(const char* tableName, const char* name) const {
        for (unsigned i = 0; i < table->num_cols; ++i)
            if (g_ascii_strcasecmp(column(i).name, name) == 0)
                return i;
        throw DatabaseFault(DatabaseFault::NoSuchColumn,
                            std::string("Item cannot be found in the collection: ") + tableName + "." + name);
    }

    void writeValue(unsigned index) {
        const auto field = std::find_if(fields.begin(), fields.end(), [index](const MdbField& candidate) {
            return candidate.colnum == static_cast<int>(index);
        });
        if (field == fields.end())
            unreadable("a row without a column");
        if (field->is_null)
            return put<char>(PriorTables::NullValue);
        const int type = column(index).col_type;
        requireInside(field->start, field->siz, type);
        switch (type) {
        case MDB_BYTE:
            return writeNumber(mdb_get_byte(file.pg_buf, field->start));
        case MDB_INT:
            return writeNumber(static_cast<std::int16_t>(mdb_get_int16(file.pg_buf, field->start)));
        case MDB_LONGINT:
            return writeNumber(static_cast<std::int32_t>(mdb_get_int32(file.pg_buf, field->start)));
        case MDB_FLOAT:
            return writeNumber(mdb_get_single(file.pg_buf, field->start));
        case MDB_DOUBLE:
        case MDB_DATETIME: // in days since the end of 1899
            return writeNumber(mdb_get_double(file.pg_buf, field->start));
        case MDB_TEXT:
            return putText(PriorTables::TextValue, decoded({bytesAt(field->start), size_t(field->siz)}));
        case MDB_MEMO:
            return putText(PriorTables::TextValue, decoded(memo(*field)));
        default: // the tables never had others; what reads as a number or text will do
            return writeAsLibraryTells(*field, type);
        }
    }

    const char* bytesAt(int offset) const { return reinterpret_cast<const char*>(file.pg_buf) + offset; }

    void requireInside(int start, int size, int type) const {
        const int least = type == MDB_DOUBLE || type == MDB_DATETIME ? 8
                          : type == MDB_LONGINT || type == MDB_FLOAT ? 4
                          : type == MDB_INT                          ? 2
                                                                     : 0;
        if (start < 0 || size < least || start + size > file.fmt->pg_size)
            unreadable("a value outside of its page");
    }

    static void writeNumber(double number) {
        put<char>(PriorTables::NumberValue);
        put(number);
    }

    void writeAsLibraryTells(const MdbField& field, int type) {
        const std::unique_ptr<char, decltype(&g_free)> text(
            mdb_col_to_string(&file, file.pg_buf, field.start, type, field.siz), g_free);
        putText(PriorTables::TextValue, text ? text.get() : "");
    }

    /// The bytes of a memo: within its row, in one piece elsewhere, or in a chain of pieces.
    std::string memo(const MdbField& field) {
        if (field.siz == 0)
            return {};
        if (field.siz < MDB_MEMO_OVERHEAD)
            unreadable("a memo");
        const auto word = static_cast<std::uint32_t>(mdb_get_int32(file.pg_buf, field.start));
        auto place = static_cast<std::uint32_t>(mdb_get_int32(file.pg_buf, field.start + 4));
        const std::uint32_t length = word & largestMemo;
        constexpr std::uint32_t inRow = 0x80000000;
        constexpr std::uint32_t inOnePiece = 0x40000000;
        std::string bytes;
        if (word & inRow)
            bytes.assign(bytesAt(field.start + MDB_MEMO_OVERHEAD), size_t(field.siz - MDB_MEMO_OVERHEAD));
        else if (word & inOnePiece)
            bytes = piece(place);
        else
            while (place != 0 && bytes.size() < length) {
                const std::string part = piece(place);
                if (part.size() <= sizeof place)
                    break;
                std::memcpy(&place, part.data(), sizeof place); // of the next piece
                bytes.append(part, sizeof place);
            }
        if (bytes.size() < length)
            unreadable("a memo that breaks off");
        bytes.resize(length);
        return bytes;
    }

    /// A piece of a memo by its page and, in the lowest byte, its row there.
    std::string piece(std::uint32_t place) {
        void* page = nullptr;
        int start = 0;
        size_t size = 0;
        if (mdb_find_pg_row(&file, static_cast<int>(place), &page, &start, &size) != 0 || start < 0 ||
            static_cast<size_t>(start) + size > static_cast<size_t>(file.fmt->pg_size))
            unreadable("a piece of a memo");
        return {static_cast<const char*>(page) + start, size};
    }

    /// A text of the file, of two bytes a character or compressed, in UTF-8.
    std::string decoded(std::string_view stored) {
        std::string text(stored.size() * 3 + 16, '\0'); // a character takes three bytes at most for two there
        const int length = mdb_unicode2ascii(&file, stored.data(), stored.size(), text.data(), text.size());
        text.resize(length < 0 ? 0 : static_cast<size_t>(length));
        return text;
    }

    MdbHandle& file;
    TableDefinition table;
    std::vector<unsigned> columns; // that are asked for
    std::vector<MdbField> fields;  // of the row
};

void writeTable(MdbHandle& file, const PriorTables::Table& wanted) {
    TableReader reader(file, wanted);
    put<char>(PriorTables::TableBegins);
    put(reader.announcedRows());
    std::uint32_t rows = 0;
    while (reader.step()) {
        if (++rows > reader.announcedRows())
            break;
        reader.writeRow();
    }
    if (rows != reader.announcedRows()) // the library passes over what it cannot read
        unreadable(std::string(wanted.name) + " has lost rows");
}

/// A file that sends the library round in circles must not outlive the program that waits for it.
void limitOwnTime() {
#ifndef _WIN32
    constexpr rlim_t seconds = 120;
    const rlimit time{seconds, seconds};
    setrlimit(RLIMIT_CPU, &time);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
#endif
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "Usage: brennoval-prior FILE\n");
        return 2;
    }
    limitOwnTime();
    g_unsetenv("MDBICONV"); // texts come as UTF-8, whatever the user has set for tools of his own
    try {
        const File file = open(argv[1]);
        for (const PriorTables::Table& table : PriorTables::all)
            writeTable(*file, table);
        put<char>(PriorTables::Finished);
        return 0;
    } catch (const DatabaseFault& fault) {
        put<char>(PriorTables::FailureFollows);
        put(fault.number());
        putText(PriorTables::TextValue, fault.what());
        return 1;
    }
}
