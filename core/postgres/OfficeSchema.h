#pragma once

#include "core/postgres/Postgres.h"

#include <QStringList>

/// The tables of an office: the shared ones in the schema "office", and for each user the user's own in a
/// schema with the name of the user's role. data/schema/office/N.sql takes the shared ones from version N-1
/// to N, own/N.sql those of each user.
namespace OfficeSchema {

/// The version that this program works with.
int currentVersion();

/// The version of an office; 0 if the database is none. Throws ServerFault.
int versionOf(Postgres::Connection& office);

/// Makes an empty database an office, owned by the role of the connection, in the caller's transaction.
/// Throws ServerFault.
void create(Postgres::Connection& office);

/// Takes an older office to this version, all users' schemas too, in the caller's transaction. Throws
/// DatabaseFault for a newer office.
void upgrade(Postgres::Connection& office);

/// Makes a schema with a user's own tables and gives the role what it needs and nothing more, in the caller's
/// transaction. The role must exist. Throws ServerFault.
void addUser(Postgres::Connection& office, const QString& role);

/// Takes a user's own tables and all rights away, in the caller's transaction. The role stays. Throws
/// ServerFault.
void removeUser(Postgres::Connection& office, const QString& role);

/// The users of an office. Throws ServerFault.
QStringList users(Postgres::Connection& office);

/// The tables that all share, and those that each user has.
const QStringList& sharedTables();
const QStringList& ownTables();

} // namespace OfficeSchema
