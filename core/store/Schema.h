#pragma once

#include "core/store/Database.h"

/// The version of the user data's schema. Each script of data/schema/user takes the data from the version
/// before to that of its name.
namespace Schema {

/// The version that this program works with.
int currentVersion();

/// The version of open user data. Files of the program's first version do not carry their number.
int versionOf(const Connection& user);

/// Brings user data of an older version up to this program's, one version a transaction, after a copy was put
/// aside beside the file, named after its version. Newer data are not touched.
/// Throws DatabaseFault: for newer data, and when the copy or the upgrade fails; the data then stay as they
/// were.
void upgrade(Connection& user);

/// The same through other scripts, the first of which is version 1. For tests.
void upgrade(Connection& user, const QStringList& scripts);

} // namespace Schema
