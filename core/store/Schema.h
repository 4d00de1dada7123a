#pragma once

#include "core/store/Database.h"

/// The version of the user data's schema. Each script of data/schema/user takes the data from the version
/// before to that of its name.
namespace Schema {

/// The version that this program works with.
int currentVersion();

/// The version of open user data. Files of the program's first version do not carry their number.
int versionOf(const Connection& user);

/// The keys of jobs and tank lines that differ in the case of a letter alone, each pair as "Öl / öl". As long
/// as there are any the data keep version 3, in which only A to Z and a to z are the same. Throws
/// DatabaseFault.
QStringList collidingNames(const Connection& user);

/// Refuses user data in which a view, a trigger, a virtual table or a computed column stands under a name of
/// the program's own or acts on one of its tables: what it would do, or how long, nobody knows. Throws
/// DatabaseFault.
void requirePlainTables(const Connection& user);

/// Whether a copy of older data is put aside among the backups. What is itself a copy needs none.
enum class CopyFirst { Yes, No };

/// Brings user data of an older version up to this program's in one write, after a checked copy was put
/// aside. Another copy of the program that finds them older meanwhile waits, as long as its busy time-out
/// lets it, and then finds them done. Newer data are not touched. Throws DataLocked, and DatabaseFault for
/// newer data, for those that requirePlainTables refuses, and when the copy or the upgrade fails; the data
/// then stay as they were.
void upgrade(Connection& user);

/// The same through other scripts, the first of which is version 1.
void upgrade(Connection& user, const QStringList& scripts, CopyFirst copyFirst = CopyFirst::Yes);

/// Makes the tables of this program's version in data that are empty. Throws DatabaseFault.
void create(Connection& user);

/// The scripts of this program.
const QStringList& ownScripts();

} // namespace Schema
