#pragma once

#include <QString>

/// The address of an office, as libpq takes it: a URI, or a list of parameters. Everything throws
/// DatabaseFault for an address that libpq does not understand.
namespace OfficeAddress {

/// The database that an address names; empty if it leaves that to libpq.
QString databaseOf(const QString& address);

/// Whether it holds a password of any kind.
bool holdsPassword(const QString& address);

/// The same address for another database.
QString withDatabase(const QString& address, const QString& database);

} // namespace OfficeAddress
