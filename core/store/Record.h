#pragma once

#include "core/store/Database.h"

#include <algorithm>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

/// Shared by the record structs: maps the columns of a table to the members of a struct.
namespace Record {

/// The value of a column; nothing for null. Throws Fault 13 for text in a numeric column.
template<typename Value>
std::optional<Value> valueOf(const Recordset::Field& field) {
    if (field.isNull())
        return std::nullopt;
    if constexpr (std::is_same_v<Value, QString>)
        return field.text();
    else if constexpr (std::is_same_v<Value, QDateTime>)
        return field.dateTime();
    else if constexpr (std::is_same_v<Value, bool>)
        return field.boolean();
    else
        return static_cast<Value>(field.number());
}

/// The number of a column that may be null, which counts as 0.
inline double orZero(const std::optional<double>& value) {
    return value.value_or(0);
}

/// Stores a value in a column; nothing becomes null.
template<typename Value>
void assign(Recordset::Field field, const std::optional<Value>& value) {
    if (value)
        field = *value;
    else
        field.setNull();
}

/// A column and the record member that holds its value.
template<typename Row>
struct Column {
    const char* name;
    void (*read)(Row&, const Recordset::Field&);
    void (*write)(const Row&, Recordset::Field);
    bool (*same)(const Row&, const Row&);
};

/// The column of a member, such as column<&TankLine::qty>("Qty").
template<auto member, typename Row, typename Value>
constexpr Column<Row> columnOf(const char* name, std::optional<Value> Row::* /*type*/) {
    return {name, [](Row& row, const Recordset::Field& field) { row.*member = valueOf<Value>(field); },
            [](const Row& row, Recordset::Field field) { assign(field, row.*member); },
            [](const Row& one, const Row& other) { return one.*member == other.*member; }};
}
template<auto member>
constexpr auto column(const char* name) {
    return columnOf<member>(name, member);
}

/// The record of the current row.
template<typename Row>
Row read(Recordset& rows, std::span<const Column<Row>> columns) {
    Row row;
    for (const Column<Row>& column : columns)
        column.read(row, rows[column.name]);
    return row;
}

/// The records from the current row on, up to a maximum number.
template<typename Row>
std::vector<Row> readAll(Recordset& rows, std::span<const Column<Row>> columns,
                         std::size_t most = std::size_t(-1)) {
    std::vector<Recordset::Field> fields; // looked up once
    for (const Column<Row>& column : columns)
        fields.push_back(rows[column.name]);
    std::vector<Row> all;
    for (; !rows.atEnd() && all.size() < most; rows.moveNext()) {
        Row row;
        for (std::size_t i = 0; i < columns.size(); ++i)
            columns[i].read(row, fields[i]);
        all.push_back(std::move(row));
    }
    return all;
}

/// Assigns a record's values to the current or new row. Update stores them.
template<typename Row>
void write(Recordset& rows, const Row& row, std::span<const Column<Row>> columns) {
    for (const Column<Row>& column : columns)
        column.write(row, rows[column.name]);
}

/// Whether two records have the same values in some columns.
template<typename Row>
bool agree(const Row& one, const Row& other, std::span<const Column<Row>> columns) {
    return std::ranges::all_of(columns, [&](const Column<Row>& column) { return column.same(one, other); });
}

/// What a save does with a row that has changed since it was read: refuse with RecordChanged, or overwrite
/// it.
enum class IfChanged { Refuse, Overwrite };

} // namespace Record
