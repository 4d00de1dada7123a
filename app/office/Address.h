#pragma once

#include <QString>

/// The address of an office, a URI as libpq takes it. Everything throws DatabaseFault for anything else.
namespace OfficeAddress {

/// The database that an address names; empty if it leaves that to libpq.
QString databaseOf(const QString& address);

/// Whether it holds a password of any kind.
bool holdsPassword(const QString& address);

/// The same address for another database.
QString withDatabase(const QString& address, const QString& database);

} // namespace OfficeAddress
