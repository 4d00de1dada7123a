#pragma once

#include "core/postgres/Postgres.h"

#include <QString>
#include <QStringList>

/// An office's database as a whole.
namespace Office {

/// What a command has done, or would do: lines for the caller.
using Report = QStringList;

/// Whether a command keeps what it has done.
enum class Mode { Real, DryRun };

/// Connects to the office, or to another database of its server. Asks for a password on the terminal if the
/// server wants one that libpq does not find. Throws DatabaseFault.
Postgres::Connection connect(const QString& address, const QString& database = {});

/// Makes the database and the office in it. One that is there stays, and gets back what a restored backup
/// lacks. `maintenance` is the database to connect to meanwhile. Throws DatabaseFault, also for a database
/// that holds other things.
Report create(const QString& address, const QString& maintenance, Mode mode);

/// Brings an office up to this program's version. Throws DatabaseFault.
Report upgrade(const QString& address, Mode mode);

/// Connects to an office of this program's version. Throws DatabaseFault for any other.
Postgres::Connection connectToCurrent(const QString& address);

/// The role that all users of an office are members of, named after its database. It may connect to it, and
/// the rules of access can name it.
QString usersRole(const Postgres::Connection& office);

/// Throws a DatabaseFault that says why a command cannot be done.
[[noreturn]] void refuse(const QString& why);

/// Whether the server has a role.
bool hasRole(Postgres::Connection& server, const QString& role);

/// Waits until no copy of the program is writing, and makes them wait until the end of the transaction.
void lock(Postgres::Connection& office);

/// Ends a command's transaction as its mode demands.
void finish(Postgres::Transaction& transaction, Mode mode, Report& report);

} // namespace Office
