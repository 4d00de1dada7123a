#include "app/office/Users.h"

#include "core/postgres/OfficeSchema.h"

#include <libpq-fe.h>

#include <memory>

using Postgres::Connection;
using Postgres::quotedName;
using Postgres::quotedText;
using Postgres::Result;
using Postgres::Transaction;

namespace Office {

namespace {

/// Refuses a name that no role or schema can have, that is the office's own, or that the search path takes
/// for another.
void requireName(const QString& user) {
    constexpr qsizetype longestName = 63; // bytes
    if (user.startsWith(QStringLiteral("pg_")) || user == u"office" || user == u"public" ||
        user == u"information_schema" || user == u"none" || user == u"$user" ||
        user.toUtf8().size() > longestName)
        refuse("A user cannot have the name " + user + ".");
}

/// A password as the server stores it. The server's log and its other administrators never see the password
/// itself.
QString encrypted(const QString& role, const QString& password) {
    // No connection is made: the library only keeps its error messages there.
    const std::unique_ptr<PGconn, void (*)(PGconn*)> none(PQconnectStart("hostaddr=none"), PQfinish);
    const std::unique_ptr<char, void (*)(void*)> secret(
        PQencryptPasswordConn(none.get(), password.toUtf8().constData(), role.toUtf8().constData(),
                              "scram-sha-256"),
        PQfreemem);
    if (!secret)
        refuse("The password cannot be encrypted: " +
               QString::fromUtf8(PQerrorMessage(none.get())).trimmed());
    return QString::fromLatin1(secret.get());
}

/// Refuses a role that could go round the rights of its user, by itself or as a member of another: one that
/// may do more on the server, has one of the server's own roles, or owns the office.
void requirePlainRole(Connection& office, const QString& role) {
    const Result found = office.run(
        "SELECT rolcanlogin::int, EXISTS (SELECT 1 FROM pg_roles r "
        "WHERE pg_has_role(u.oid, r.oid, 'MEMBER') AND (r.rolsuper OR r.rolcreatedb OR r.rolcreaterole "
        "OR r.rolreplication OR r.rolbypassrls OR r.rolname ~ '^pg_' "
        "OR r.oid = (SELECT nspowner FROM pg_namespace WHERE nspname = 'office')))::int "
        "FROM pg_roles u WHERE rolname = $1",
        {role});
    if (found.text(0, 1) == u"1")
        refuse(QString("The role %1 is there already, and may do more on the server than a user of an "
                       "office. Nothing "
                       "was changed.")
                   .arg(role));
    if (found.text(0, 0) != u"1")
        refuse(QString("The role %1 is there already, and may not log in. Nothing was changed.").arg(role));
}

void createRole(Connection& office, const QString& role, const std::optional<QString>& password) {
    office.run("CREATE ROLE " + quotedName(role) +
               " LOGIN NOSUPERUSER NOCREATEDB NOCREATEROLE NOREPLICATION NOBYPASSRLS PASSWORD " +
               (password ? quotedText(encrypted(role, *password)) : QStringLiteral("NULL")));
}

bool isMember(Connection& office, const QString& user) {
    return office
               .run("SELECT 1 FROM pg_auth_members m JOIN pg_roles g ON g.oid = m.roleid "
                    "JOIN pg_roles u ON u.oid = m.member WHERE g.rolname = $1 AND u.rolname = $2",
                    {usersRole(office), user})
               .rows() > 0;
}

bool hasSchema(Connection& office, const QString& name) {
    return office.run("SELECT 1 FROM pg_namespace WHERE nspname = $1", {name}).rows() > 0;
}

/// Whether the role can work with all its tables.
bool hasRights(Connection& office, const QString& user) {
    return office
        .run(
            "SELECT bool_and(has_table_privilege($1, c.oid, 'SELECT') AND has_table_privilege($1, c.oid, "
            "'INSERT') "
            "AND has_table_privilege($1, c.oid, 'UPDATE') AND has_table_privilege($1, c.oid, 'DELETE'))::int "
            "FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
            "WHERE c.relkind = 'r' AND n.nspname IN ('office', $2) AND c.relname <> 'version'",
            {user, user})
        .text(0, 0)
        .toInt();
}

/// The user's own tables, with the rights to them and to those of the office.
void giveTables(Connection& office, const QString& user, Report& report) {
    if (!OfficeSchema::users(office).contains(user)) {
        if (hasSchema(office, user))
            refuse("The database has a schema " + user + " that is no user's. Nothing was changed.");
        OfficeSchema::addUser(office, user);
        report += "The user " + user + " has tables of its own.";
    } else if (!hasRights(office, user)) {
        OfficeSchema::upgrade(office); // gives all users the rights to their tables once more
        report += "The user " + user + " has the rights to its tables back.";
    }
}

/// Removes a role that nothing else on the server needs.
void dropRole(Connection& office, const QString& role, Report& report) {
    office.run("SAVEPOINT role");
    try {
        office.run("DROP ROLE " + quotedName(role));
        report += "The role " + role + " is removed from the server.";
    } catch (const Postgres::ServerFault& fault) {
        constexpr auto inUse = "2BP01";
        if (fault.sqlState() != inUse)
            throw;
        office.run("ROLLBACK TO SAVEPOINT role");
        report += "The role " + role + " stays on the server, where other databases need it.";
    }
}

} // namespace

Report addUser(const QString& address, const QString& user, const NewPassword& password, Mode mode) {
    requireName(user);
    Connection office = connectToCurrent(address);
    // Asked for before the transaction: nobody waits for what an administrator types.
    const bool isNew = !hasRole(office, user);
    const std::optional<QString> secret = isNew ? password() : std::nullopt;
    Report report;
    Transaction transaction(office);
    lock(office);
    if (!hasRole(office, usersRole(office)))
        refuse("The role " + usersRole(office) + " is missing; \"brennoval-office create\" makes it.");
    if (isNew) {
        createRole(office, user, secret);
        report += "The role " + user + " is made" + (secret ? "." : ", without a password.");
    } else {
        requirePlainRole(office, user);
    }
    if (!isMember(office, user)) {
        office.run("GRANT " + quotedName(usersRole(office)) + " TO " + quotedName(user));
        report += "The user " + user + " may connect to the office.";
    }
    giveTables(office, user, report);
    if (report.isEmpty())
        report += "The user " + user + " is in the office already. Nothing was changed.";
    finish(transaction, mode, report);
    return report;
}

Report removeUser(const QString& address, const QString& user, Mode mode) {
    requireName(user);
    Connection office = connectToCurrent(address);
    Report report;
    Transaction transaction(office);
    lock(office);
    const bool hasTables = OfficeSchema::users(office).contains(user);
    const bool exists = hasRole(office, user);
    if (!hasTables && !isMember(office, user))
        refuse("The office has no user " + user + ".");
    if (exists && isMember(office, user))
        office.run("REVOKE " + quotedName(usersRole(office)) + " FROM " + quotedName(user));
    if (hasTables && exists)
        OfficeSchema::removeUser(office, user);
    else if (hasTables)
        office.run("DROP SCHEMA " + quotedName(user) + " CASCADE");
    report += "The user " + user + " is no longer in the office. Jobs and tanks stay.";
    if (exists)
        dropRole(office, user, report);
    finish(transaction, mode, report);
    return report;
}

Report listUsers(const QString& address) {
    Connection office = connectToCurrent(address);
    const Result found = office.run(
        "WITH members AS (SELECT u.rolname AS name FROM pg_auth_members m JOIN pg_roles g ON g.oid = "
        "m.roleid "
        "    JOIN pg_roles u ON u.oid = m.member WHERE g.rolname = $1), "
        "schemas AS (SELECT n.nspname AS name FROM pg_namespace n JOIN pg_class c ON c.relnamespace = n.oid "
        "    WHERE c.relname = 'tblfirsttime') "
        "SELECT coalesce(m.name, s.name), (m.name IS NOT NULL)::int, (s.name IS NOT NULL)::int, "
        "    coalesce((SELECT rolcanlogin FROM pg_roles WHERE rolname = m.name), false)::int, "
        "    (SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() "
        "        AND usename = coalesce(m.name, s.name)) "
        "FROM members m FULL JOIN schemas s ON s.name = m.name ORDER BY 1",
        {usersRole(office)});
    Report report;
    for (int row = 0; row < found.rows(); ++row) {
        const auto is = [&](int column) { return found.text(row, column) == u"1"; };
        QString state = "in the office";
        if (!is(1))
            state = "has tables, but no access: add-user completes it";
        else if (!is(2))
            state = "has no tables: add-user completes it";
        else if (!is(3))
            state = "may not log in";
        report +=
            found.text(row, 0).leftJustified(20) + "  " + state + ", " + found.text(row, 4) + " connected";
    }
    if (report.isEmpty())
        report += "The office has no users yet.";
    return report;
}

} // namespace Office
