#pragma once

#include "core/store/JobCopies.h"
#include "core/store/StoredRows.h"

/// What a user's file holds, checked before any of it reaches the office.
namespace FileRows {

using Gateway::StoredRows;

/// Opens a file of any version. It is only read. Throws DatabaseFault if it is none of ours, damaged, newer,
/// or holds job numbers that differ only in case.
JobCopies::Source open(const QString& file);

/// All rows of a table in the order in which they were entered. Throws DatabaseFault, with the row's key, for
/// a value that no screen could have stored.
StoredRows read(const JobCopies::Source& file, const QString& table);

/// A text as the office compares it.
QString folded(const QVariant& text);

/// Rows as a JSON array of objects with lower-case names, which the server reads as rows of a table.
QByteArray json(const StoredRows& rows, qsizetype first, qsizetype count);

} // namespace FileRows
