// brennoval-prior FILE writes the rows of the earlier program's tables, from its Jet file, to standard
// output, in the format described in setup/PriorTables.h. The library trusts much of what a file says about
// itself, so a damaged one can crash or hang it; hence this separate, unprivileged process. A file is
// transferred completely or with a failure: an unsound row, memo or page is never skipped.

#include "core/base/Fault.h"
#include "setup/PriorTables.h"
#include "setup/prior/Confinement.h"
#include "setup/prior/JetTable.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// Writes what the program at the other end reads.
class Output {
  public:
    template<typename Number>
    void put(Number number) {
        write({reinterpret_cast<const char*>(&number), sizeof number});
    }

    void putText(std::string_view text) {
        put<char>(PriorTables::TextValue);
        put(static_cast<std::uint32_t>(text.size()));
        write(text);
    }

    void putValue(const Jet::Value& value) {
        if (const auto* text = std::get_if<std::string>(&value))
            return putText(*text);
        if (const auto* number = std::get_if<double>(&value)) {
            put<char>(PriorTables::NumberValue);
            return put(*number);
        }
        put<char>(PriorTables::NullValue);
    }

    void putFailure(std::int32_t number, std::string_view description) {
        constexpr size_t marksAndNumbers = 16;
        left = PriorTables::roomForFailure;
        description = description.substr(0, left - marksAndNumbers);
        put<char>(PriorTables::FailureFollows);
        put(number);
        putText(description);
    }

  private:
    void write(std::string_view bytes) {
        if (bytes.size() > left)
            throw Jet::Damaged("more than such a file can hold");
        left -= bytes.size();
        std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    }

    size_t left = PriorTables::largestOutput;
};

/// The wanted columns of a table, in order.
std::vector<const Jet::Table::Column*> wantedColumns(const Jet::Table& table,
                                                     const PriorTables::Table& wanted) {
    std::vector<const Jet::Table::Column*> columns;
    for (const PriorTables::Column& column : wanted.columns) {
        const Jet::Table::Column* found = table.find(column.prior);
        if (!found)
            throw DatabaseFault(DatabaseFault::NoSuchColumn,
                                std::string("Item cannot be found in the collection: ") + wanted.name + "." +
                                    column.prior);
        const bool isText = found->type == MDB_TEXT || found->type == MDB_MEMO;
        const bool isDate = found->type == MDB_DATETIME;
        if (isText != (column.kind == PriorTables::Text) || isDate != (column.kind == PriorTables::Date))
            throw Jet::Damaged(std::string(wanted.name) + "." + column.prior + " is of another kind");
        columns.push_back(found);
    }
    return columns;
}

void writeTable(Output& output, Jet::Table& table, const PriorTables::Table& wanted) {
    const std::vector<const Jet::Table::Column*> columns = wantedColumns(table, wanted);
    output.put<char>(PriorTables::TableBegins);
    output.put(table.announcedRows());
    std::uint32_t rows = 0;
    while (table.step() && rows < table.announcedRows()) {
        ++rows;
        output.put<char>(PriorTables::RowBegins);
        for (const Jet::Table::Column* column : columns)
            output.putValue(table.value(*column));
    }
    if (rows != table.announcedRows() || table.step())
        throw Jet::Damaged(std::string(wanted.name) + " has other rows than it counts");
}

void writeFile(Output& output, const char* path) {
    Jet::File file(path);
    confineToOpenFiles();
    const std::map<std::string, std::uint32_t> tables = Jet::tablesOf(file);
    for (const PriorTables::Table& wanted : PriorTables::all) {
        const auto found = tables.find(Jet::caseFolded(wanted.name));
        if (found == tables.end())
            throw DatabaseFault(DatabaseFault::NoSuchTable,
                                std::string("The database has no table ") + wanted.name + ".");
        Jet::Table table(file, found->second, wanted.name);
        writeTable(output, table, wanted);
    }
    output.put<char>(PriorTables::Finished);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "Usage: brennoval-prior FILE\n");
        return 2;
    }
    confine();
    g_unsetenv("MDBICONV"); // texts come as UTF-8, whatever the user has set for tools of their own
    Output output;
    try {
        writeFile(output, argv[1]);
        return 0;
    } catch (const DatabaseFault& fault) {
        output.putFailure(fault.number(), fault.what());
    } catch (const Jet::Damaged& damage) {
        output.putFailure(DatabaseFault::Unspecified,
                          std::string("Unrecognized database format: ") + damage.what());
    } catch (const std::bad_alloc&) {
        output.putFailure(DatabaseFault::Unspecified, "Unrecognized database format: too large");
    }
    return 1;
}
