#include "core/store/StoredRows.h"

namespace Gateway {

namespace {

QString rowsWhere(const QString& table, const QString& column) {
    return "SELECT * FROM " + table + " WHERE " + column + " = ?";
}

} // namespace

StoredRows readStoredRows(const Connection& data, const QString& table, const QString& column,
                          const QString& text) {
    Recordset found;
    found.Open(rowsWhere(table, column), data, {text});
    StoredRows all{.table = table, .columns = found.columnNames(), .rows = {}};
    for (; !found.atEnd(); found.moveNext()) {
        QVariantList row;
        for (const QString& name : all.columns)
            row.append(found[name].stored());
        all.rows.append(row);
    }
    return all;
}

void addStoredRows(const Connection& data, const StoredRows& rows) {
    Recordset table;
    table.Open(rows.table, data, CursorType::Keyset, CommandType::Table);
    for (const QVariantList& row : rows.rows) {
        table.AddNew();
        for (qsizetype i = 0; i < row.size(); ++i)
            table[rows.columns[i]].setStored(row[i]);
        table.Update();
    }
}

bool hasRow(const Connection& data, const QString& table, const QString& column, const QString& text) {
    Recordset found;
    found.Open(rowsWhere(table, column), data, {text});
    return !found.atEnd();
}

} // namespace Gateway
