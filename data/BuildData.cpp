// Builds the two database files to ship: an empty user file, and the catalogue from its CSV files.
// Usage: brennoval-build-data SCHEMA_FOLDER CSV_FOLDER OUTPUT_FOLDER
// Stops with a message giving the file and line of any field that does not fit its column.
// brennoval-check-data checks whether the figures and texts are right.

#include "core/base/DelimitedText.h"
#include "core/base/Numbers.h"
#include "data/Database.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

using Row = std::vector<std::string>;

struct Place {
    std::string file;
    std::size_t line;
};

[[noreturn]] void fail(const Place& place, const std::string& what) {
    throw std::runtime_error(place.file + ":" + std::to_string(place.line) + ": " + what);
}

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path.string());
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// Splits a CSV line into fields.
Row splitLine(const std::string& line, const Place& place) {
    try {
        const std::vector<DelimitedRecord> records = readDelimited(line, ',');
        return records.empty() ? Row(1) : records.front().fields;
    } catch (const std::runtime_error&) {
        fail(place, "a quoted field does not end");
    }
}

/// What a column's declared type requires of a field.
struct ColumnRule {
    bool number = false;
    std::size_t longest = 0; // in characters; 0 for any length
};

std::map<std::string, ColumnRule> columnRules(Database& database, const std::string& table) {
    const auto names = database.column("SELECT name FROM pragma_table_info('" + table + "')");
    const auto types = database.column("SELECT type FROM pragma_table_info('" + table + "')");
    std::map<std::string, ColumnRule> rules;
    for (std::size_t i = 0; i < names.size(); ++i) {
        ColumnRule rule{!types[i].starts_with("TEXT"), 0};
        if (const auto open = types[i].find('('); open != std::string::npos)
            rule.longest = std::stoul(types[i].substr(open + 1));
        rules[names[i]] = rule;
    }
    return rules;
}

std::size_t characters(const std::string& utf8) {
    std::size_t count = 0;
    for (const char c : utf8)
        count += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
    return count;
}

void bindField(sqlite3_stmt* insert, int place, const std::string& field, const ColumnRule& rule,
               const Place& line) {
    if (field.empty()) {
        sqlite3_bind_null(insert, place);
    } else if (rule.number) {
        const auto value = parseNumber(field);
        if (!value)
            fail(line, "'" + field + "' is not a number");
        sqlite3_bind_double(insert, place, *value);
    } else {
        if (rule.longest > 0 && characters(field) > rule.longest)
            fail(line, "'" + field + "' is longer than " + std::to_string(rule.longest) + " characters");
        sqlite3_bind_text(insert, place, field.c_str(), -1, SQLITE_TRANSIENT);
    }
}

/// A three-digit row in the postal code table covers the hundred codes with that prefix.
std::vector<Row> expanded(const std::string& table, const Row& row) {
    const bool prefix = table == "tblPostalCodes" && row[0].size() == 3 &&
                        row[0].find_first_not_of("0123456789") == std::string::npos;
    if (!prefix)
        return {row};
    std::vector<Row> rows;
    for (int i = 0; i < 100; ++i) {
        rows.push_back(row);
        rows.back()[0] += (i < 10 ? "0" : "") + std::to_string(i);
    }
    return rows;
}

void loadTable(Database& database, const fs::path& path) {
    const std::string table = path.stem().string();
    const auto rules = columnRules(database, table);
    if (rules.empty())
        throw std::runtime_error("the schema has no table for " + path.string());
    std::istringstream text(readFile(path));
    std::string line;
    Place place{path.filename().string(), 1};
    std::getline(text, line);
    const Row header = splitLine(line, place);
    std::string names;
    std::string marks;
    for (const std::string& name : header) {
        if (!rules.contains(name))
            fail(place, "the schema has no column " + name);
        names += (names.empty() ? "\"" : ",\"") + name + "\"";
        marks += marks.empty() ? "?" : ",?";
    }
    sqlite3_stmt* insert = nullptr;
    const std::string sql = "INSERT INTO " + table + " (" + names + ") VALUES (" + marks + ")";
    sqlite3_prepare_v2(database.handle, sql.c_str(), -1, &insert, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(insert, sqlite3_finalize);
    while (std::getline(text, line)) {
        ++place.line;
        const Row fields = splitLine(line, place);
        if (fields.size() != header.size())
            fail(place,
                 std::to_string(fields.size()) + " fields instead of " + std::to_string(header.size()));
        for (const Row& row : expanded(table, fields)) {
            for (std::size_t i = 0; i < row.size(); ++i)
                bindField(insert, static_cast<int>(i) + 1, row[i], rules.at(header[i]), place);
            if (sqlite3_step(insert) != SQLITE_DONE)
                fail(place, sqlite3_errmsg(database.handle));
            sqlite3_reset(insert);
        }
    }
}

/// The user data as shipped: empty, made by running every schema script in turn.
void buildUserData(const fs::path& schema, const fs::path& output) {
    Database user(output / "BrennovalUserData.mdb", Database::Use::Create);
    for (int version = 1; fs::exists(schema / (std::to_string(version) + ".sql")); ++version)
        user.run("BEGIN;" + readFile(schema / (std::to_string(version) + ".sql")) +
                 "PRAGMA user_version = " + std::to_string(version) + "; COMMIT;");
}

/// The version of a catalogue: a hash (FNV-1a) of everything that goes into it, folded to the 31 bits of the
/// file's version field. Different content gets a different version, whichever was built first.
std::int32_t contentHash(const fs::path& schema, const std::vector<fs::path>& tables) {
    std::uint64_t hash = 14695981039346656037ULL;
    const auto add = [&hash](const std::string& text) {
        for (const char c : text)
            hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
    };
    add(readFile(schema));
    for (const fs::path& table : tables)
        add(table.filename().string() + readFile(table));
    return static_cast<std::int32_t>((hash ^ hash >> 32) & 0x7FFFFFFF);
}

std::vector<fs::path> tablesOf(const fs::path& folder) {
    std::vector<fs::path> tables;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".csv")
            tables.push_back(entry.path());
    std::ranges::sort(tables);
    return tables;
}

void build(const fs::path& schema, const fs::path& folder, const fs::path& output) {
    fs::create_directories(output);
    buildUserData(schema / "user", output);

    Database catalogue(output / "BrennovalSysData.mdb", Database::Use::Create);
    catalogue.run("BEGIN;" + readFile(schema / "sys.sql"));
    const std::vector<fs::path> tables = tablesOf(folder);
    for (const fs::path& table : tables)
        loadTable(catalogue, table);
    for (const std::string& table : catalogue.column("SELECT name FROM sqlite_master WHERE type = 'table'"))
        if (catalogue.column("SELECT 1 FROM " + table + " LIMIT 1").empty())
            throw std::runtime_error(table + " has no rows");
    catalogue.run("PRAGMA user_version = " + std::to_string(contentHash(schema / "sys.sql", tables)) +
                  "; COMMIT; ANALYZE;");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: brennoval-build-data SCHEMA_FOLDER CSV_FOLDER OUTPUT_FOLDER\n";
        return 2;
    }
    try {
        build(argv[1], argv[2], argv[3]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "brennoval-build-data: " << error.what() << '\n';
        return 1;
    }
}
