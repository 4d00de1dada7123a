#include "app/office/Office.h"

#include "app/office/Address.h"
#include "app/office/Terminal.h"
#include "core/postgres/OfficeSchema.h"
#include "core/store/OfficeDialect.h"

using Postgres::Connection;
using Postgres::quotedName;
using Postgres::Result;
using Postgres::Transaction;

namespace Office {

namespace {

bool isTrue(Connection& server, const QString& condition, const QVariantList& values = {}) {
    return server.run("SELECT (" + condition + ")::int", values).text(0, 0) == u"1";
}

/// The name of the role of an office's users.
QString usersRoleOf(const QString& database) {
    return database + QStringLiteral("_users");
}

/// Refuses a database that holds what is not the office's, or whose letters have no case or another order.
void requireUsable(Connection& database) {
    const Result foreign = database.run(
        "SELECT n.nspname || '.' || c.relname FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
        "WHERE n.nspname !~ '^(pg_|information_schema$)' AND NOT EXISTS "
        "(SELECT 1 FROM pg_depend d WHERE d.objid = c.oid AND d.deptype = 'e') ORDER BY 1 LIMIT 1");
    if (foreign.rows() > 0)
        refuse(
            QString("The database %1 holds other things already, such as %2. An office needs one of its own. "
                    "Nothing was changed.")
                .arg(database.database(), foreign.text(0, 0)));
    if (!isTrue(database, "SELECT pg_encoding_to_char(encoding) = 'UTF8' AND datlocprovider = 'c' "
                          "AND lower(datcollate) IN ('c.utf-8', 'c.utf8') "
                          "AND lower(datctype) IN ('c.utf-8', 'c.utf8') "
                          "FROM pg_database WHERE datname = current_database()"))
        refuse(
            QString(
                "The database %1 must have the encoding UTF8 and the locale C.UTF-8. Please drop it and let "
                "this command create it, or create it so from template0. Nothing was changed.")
                .arg(database.database()));
}

/// Stops before a database is created that could not become an office.
void requireMeans(Connection& server) {
    constexpr int oldestServer = 150000;
    if (server.serverVersion() < oldestServer)
        refuse("An office needs PostgreSQL 15 or newer.");
    if (!isTrue(server, "SELECT rolsuper OR (rolcreatedb AND rolcreaterole) FROM pg_roles "
                        "WHERE rolname = current_user"))
        refuse(QString("The role %1 may not create databases and roles.").arg(server.role()));
    if (!isTrue(server, "EXISTS (SELECT 1 FROM pg_available_extensions WHERE name = 'citext')"))
        refuse("The server lacks the extension citext, which comes with PostgreSQL's contributed modules.");
}

void createDatabase(Connection& server, const QString& name) {
    try {
        server.run("CREATE DATABASE " + quotedName(name) +
                   " TEMPLATE template0 ENCODING 'UTF8' LOCALE 'C.UTF-8'");
    } catch (const Postgres::ServerFault& fault) {
        constexpr auto duplicateDatabase = "42P04"; // another administrator was faster
        if (fault.sqlState() != duplicateDatabase)
            throw;
    }
}

/// Whether a role can do no more than be a member of another.
bool isPlainGroup(Connection& server, const QString& role) {
    return isTrue(server,
                  "SELECT NOT (rolcanlogin OR rolsuper OR rolcreatedb OR rolcreaterole OR rolreplication OR "
                  "rolbypassrls) FROM pg_roles WHERE rolname = $1",
                  {role});
}

/// Makes the role of the users if there is none.
void addUsersRole(Connection& office, Report& report) {
    const QString role = usersRole(office);
    if (!hasRole(office, role)) {
        office.run("CREATE ROLE " + quotedName(role) +
                   " NOLOGIN NOSUPERUSER NOCREATEDB NOCREATEROLE NOREPLICATION NOBYPASSRLS");
        report += "The role " + role + " is made for the office's users.";
    } else if (!isPlainGroup(office, role)) {
        refuse(
            QString(
                "There is a role %1 already, which may do more than an office's users. Nothing was changed.")
                .arg(role));
    }
}

/// Takes from everybody what lets a user store things that are no rows of a table and keep the user's role
/// from being removed. Only a superuser can.
void closeLargeObjects(Connection& office, Report& report) {
    const bool open = isTrue(office,
                             "(SELECT rolsuper FROM pg_roles WHERE rolname = current_user) AND "
                             "has_function_privilege($1, 'pg_catalog.lo_create(oid)', 'EXECUTE')",
                             {usersRole(office)});
    if (!open)
        return;
    office.run("REVOKE ALL ON FUNCTION pg_catalog.lo_create(oid), pg_catalog.lo_creat(integer), "
               "pg_catalog.lo_from_bytea(oid, bytea) FROM PUBLIC");
    report += "Only administrators may store large objects in it.";
}

/// Who may connect, and where the program's tables are looked for. A backup restored into another database
/// lacks this.
void setDatabaseRights(Connection& office, Report& report) {
    const QString name = quotedName(office.database());
    const QString role = usersRole(office);
    addUsersRole(office, report);
    const bool closed = isTrue(office,
                               "SELECT datacl IS NOT NULL AND NOT EXISTS (SELECT 1 FROM aclexplode(datacl) "
                               "WHERE grantee = 0) AND has_database_privilege($1, oid, 'CONNECT') "
                               "FROM pg_database WHERE datname = current_database()",
                               {role});
    if (!closed) {
        office.run("REVOKE ALL ON DATABASE " + name + " FROM PUBLIC");
        office.run("GRANT CONNECT ON DATABASE " + name + " TO " + quotedName(role));
        office.run("ALTER DATABASE " + name + " SET search_path = \"$user\", office");
        report += "Only members of " + role + " may connect to the database.";
    }
    closeLargeObjects(office, report);
    for (const QString& user : OfficeSchema::users(office))
        if (hasRole(office, user) && !isTrue(office, "pg_has_role($1, $2, 'MEMBER')", {user, role})) {
            office.run("GRANT " + quotedName(role) + " TO " + quotedName(user));
            report += "The user " + user + " is a member of it.";
        }
}

/// The office in an existing database, all in one transaction.
Report createIn(Connection& database, Mode mode) {
    Report report;
    Transaction transaction(database);
    lock(database);
    const int found = OfficeSchema::versionOf(database);
    if (found > 0) {
        report += QString("The database %1 is an office already, of version %2.")
                      .arg(database.database(), QString::number(found));
    } else {
        requireUsable(database);
        OfficeSchema::create(database);
        report += QString("The database %1 is an office of version %2.")
                      .arg(database.database(), QString::number(OfficeSchema::currentVersion()));
    }
    const qsizetype said = report.size();
    setDatabaseRights(database, report);
    if (found > 0 && report.size() == said)
        report += "Nothing was changed.";
    finish(transaction, mode, report);
    return report;
}

} // namespace

Connection connect(const QString& address, const QString& database) {
    const QString target = database.isEmpty() ? address : OfficeAddress::withDatabase(address, database);
    try {
        return Connection(target);
    } catch (const Postgres::PasswordNeeded&) {
        const std::optional<QString> password = Terminal::readPassword("Password for the server: ");
        if (!password)
            throw;
        return Connection(target, *password);
    }
}

Report create(const QString& address, const QString& maintenance, Mode mode) {
    constexpr qsizetype longestName = 63; // bytes of a name on the server
    const QString name = OfficeAddress::databaseOf(address);
    if (name.isEmpty())
        refuse("The address does not say which database is to become the office, as in "
               "postgresql://admin@server/brennoval.");
    if (usersRoleOf(name).toUtf8().size() > longestName)
        refuse("The name of the database is too long.");
    {
        Connection server = connect(address, maintenance);
        requireMeans(server);
        if (!isTrue(server, "EXISTS (SELECT 1 FROM pg_database WHERE datname = $1)", {name})) {
            if (mode == Mode::DryRun)
                return {"The database " + name + " would be created, with the locale C.UTF-8,",
                        "as an office of version " + QString::number(OfficeSchema::currentVersion()) +
                            " with the role " + usersRoleOf(name) + " for its users.",
                        "Dry run: nothing was changed."};
            createDatabase(server, name);
        }
    }
    Connection database = connect(address);
    return createIn(database, mode);
}

Report upgrade(const QString& address, Mode mode) {
    Connection office = connect(address);
    Report report;
    Transaction transaction(office);
    lock(office);
    const int found = OfficeSchema::versionOf(office);
    if (found == 0)
        refuse("The database " + office.database() + " is no office. \"brennoval-office create\" makes one.");
    OfficeSchema::upgrade(office); // refuses a newer one
    report += found == OfficeSchema::currentVersion()
                  ? QString("The office is of version %1 already. Nothing was changed.").arg(found)
                  : QString("The office is brought up from version %1 to %2.")
                        .arg(found)
                        .arg(OfficeSchema::currentVersion());
    finish(transaction, mode, report);
    return report;
}

Connection connectToCurrent(const QString& address) {
    Connection office = connect(address);
    const int found = OfficeSchema::versionOf(office);
    if (found == 0)
        refuse("The database " + office.database() + " is no office. \"brennoval-office create\" makes one.");
    if (found < OfficeSchema::currentVersion())
        refuse(QString("The office is of version %1; this program works with version %2. \"brennoval-office "
                       "upgrade\" "
                       "brings it up.")
                   .arg(found)
                   .arg(OfficeSchema::currentVersion()));
    if (found > OfficeSchema::currentVersion())
        refuse(QString("The office is of version %1; this program knows version %2. Please install the newer "
                       "program.")
                   .arg(found)
                   .arg(OfficeSchema::currentVersion()));
    return office;
}

QString usersRole(const Connection& office) {
    return usersRoleOf(office.database());
}

void refuse(const QString& why) {
    throw DatabaseFault(DatabaseFault::Unspecified, why.toStdString());
}

bool hasRole(Connection& server, const QString& role) {
    return isTrue(server, "EXISTS (SELECT 1 FROM pg_roles WHERE rolname = $1)", {role});
}

void lock(Connection& office) {
    office.runScript("SET LOCAL lock_timeout = '20s';" + officeTurn);
}

void finish(Transaction& transaction, Mode mode, Report& report) {
    if (mode == Mode::DryRun)
        report += "Dry run: nothing was changed.";
    else
        transaction.commit();
}

} // namespace Office
