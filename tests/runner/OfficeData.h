#pragma once

#include <QString>
#include <QStringList>

/// The data of an office for scenarios, whose statements are in the dialect of a file. They run on a copy in
/// memory, made by libpq alone and not by the engine that is being tested.
namespace OfficeData {

/// The single value that a query returns, as a file's engine and as the program write it. Throws
/// std::runtime_error.
QStringList queried(const QString& address, const QString& sql);

/// Runs statements: what they change in the copy is written to the office, what they do to tables is done to
/// those of the office by its keeper. Throws std::runtime_error.
void arrange(const QString& address, const QString& sql);

} // namespace OfficeData
