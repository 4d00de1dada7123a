#pragma once

#include "core/store/Database.h"

#include <QStringList>

namespace Gateway {

/// Rows of a table as the engine holds them, to be written elsewhere without a change.
struct StoredRows {
    QString table;
    QStringList columns;
    QList<QVariantList> rows;
};

/// The rows of a table whose column has a text. Throws DatabaseFault.
StoredRows ReadStoredRows(const Connection& data, const QString& table, const QString& column,
                          const QString& text);

/// Adds rows. Whoever adds several tables' makes one transaction of it. Throws DatabaseFault, also for a
/// column that the table does not have and for a key that is taken.
void AddStoredRows(const Connection& data, const StoredRows& rows);

/// Whether a table has a row whose column has a text. Throws DatabaseFault.
bool HasRow(const Connection& data, const QString& table, const QString& column, const QString& text);

} // namespace Gateway
