#pragma once

#include "core/store/Database.h"

/// The schema version of the user data. Each script in data/schema/user upgrades from the previous version to
/// the one in its name.
namespace Schema {

/// The version that this program works with.
int currentVersion();

/// The version of an office's database that this program works with.
int officeVersion();

/// The version of open user data. Files from the program's first version do not carry a number.
int versionOf(const Connection& user);

/// The keys of jobs and tank lines that differ only in case, each pair as "Öl / öl". While there are any, the
/// data stays at version 3, which ignores case only for A to Z. Throws DatabaseFault.
QStringList collidingNames(const Connection& user);

/// Rejects user data in which a view, a trigger, a virtual table or a computed column has one of the
/// program's names or acts on one of its tables: nobody knows what it would do, or for how long. Throws
/// DatabaseFault.
void requirePlainTables(const Connection& user);

/// Whether to back up older data first. Data that is itself a copy needs no backup.
enum class CopyFirst { Yes, No };

/// Upgrades older user data to this program's version in one write, after a verified backup. Another instance
/// that opens the data meanwhile waits, up to its busy time-out, and then finds the upgrade done. Newer data
/// is left alone. An office is upgraded by its keeper: it is only checked. Throws DataLocked, and
/// DatabaseFault for newer data, for data that requirePlainTables rejects, and if the backup or the upgrade
/// fails; the data is then unchanged.
void upgrade(Connection& user);

/// The same with other scripts, the first of which makes version 1.
void upgrade(Connection& user, const QStringList& scripts, CopyFirst copyFirst = CopyFirst::Yes);

/// Creates this version's tables in an empty database. Throws DatabaseFault.
void create(Connection& user);

/// The scripts of this program.
const QStringList& ownScripts();

} // namespace Schema
