#pragma once

#include "core/store/Database.h"

#include <QStringList>

namespace Gateway {

/// Rows of a table as the engine holds them, to be written elsewhere unchanged.
struct StoredRows {
    QString table;
    QStringList columns;
    QList<QVariantList> rows;
};

/// The rows of a table in which a column has this text. Throws DatabaseFault.
StoredRows readStoredRows(const Connection& data, const QString& table, const QString& column,
                          const QString& text);

/// Adds rows. A caller adding to several tables wraps the calls in a transaction. Throws DatabaseFault, also
/// for an unknown column and a key already in use.
void addStoredRows(const Connection& data, const StoredRows& rows);

/// Whether a table has a row in which a column has this text. Throws DatabaseFault.
bool hasRow(const Connection& data, const QString& table, const QString& column, const QString& text);

} // namespace Gateway
