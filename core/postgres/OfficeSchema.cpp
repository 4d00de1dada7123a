#include "core/postgres/OfficeSchema.h"

#include <QFile>

using namespace Postgres;

namespace OfficeSchema {

namespace {

/// The scripts of a folder, the first of which makes version 1.
QStringList scriptsIn(const QString& folder) {
    QStringList all;
    for (int version = 1;; ++version) {
        QFile file(QStringLiteral(":/schema/office/%1%2.sql").arg(folder).arg(version));
        if (!file.open(QIODevice::ReadOnly))
            return all;
        all.append(QString::fromUtf8(file.readAll()));
    }
}

const QStringList& sharedScripts() {
    static const QStringList scripts = scriptsIn({});
    return scripts;
}
const QStringList& ownScripts() {
    static const QStringList scripts = scriptsIn(QStringLiteral("own/"));
    return scripts;
}

/// Runs a script where its tables are, and goes back to where the caller was.
void runIn(Connection& office, const QString& schema, const QString& script) {
    office.runScript(QStringLiteral("SET LOCAL search_path = %1, office;").arg(quotedName(schema)));
    office.runScript(script);
    office.runScript(QStringLiteral("SET LOCAL search_path = office;"));
}

/// Gives a user the rights that the tables of this version need.
void grant(Connection& office, const QString& role) {
    const QString name = quotedName(role);
    office.runScript(QStringLiteral("GRANT USAGE ON SCHEMA office, %1 TO %1;"
                                    "GRANT SELECT, INSERT, UPDATE, DELETE ON ALL TABLES IN SCHEMA %1 TO %1;")
                         .arg(name));
    for (const QString& table : sharedTables())
        office.runScript(
            QStringLiteral("GRANT SELECT, INSERT, UPDATE, DELETE ON office.%1 TO %2;").arg(table, name));
    office.runScript(QStringLiteral("GRANT SELECT ON office.version TO %1;").arg(name));
    office.runScript(
        QStringLiteral("GRANT USAGE, SELECT ON ALL SEQUENCES IN SCHEMA office, %1 TO %1;").arg(name));
}

bool hasRole(Connection& office, const QString& role) {
    return office.run(QStringLiteral("SELECT 1 FROM pg_roles WHERE rolname = $1"), {role}).rows() > 0;
}

void noteVersion(Connection& office, int version) {
    office.run(QStringLiteral("UPDATE office.version SET version = $1"), {version});
}

} // namespace

const QStringList& sharedTables() {
    static const QStringList tables = {"tblJobHeader", "tblJobData", "tblEngineer", "tblContractor"};
    return tables;
}
const QStringList& ownTables() {
    static const QStringList tables = {"tblFirstTime", "tblUser", "tblRepMaster", "tblSchedule", "tblOwn"};
    return tables;
}

int currentVersion() {
    return int(sharedScripts().size());
}

int versionOf(Connection& office) {
    if (office.run(QStringLiteral("SELECT to_regclass('office.version')")).isNull(0, 0))
        return 0;
    const Result found = office.run(QStringLiteral("SELECT version FROM office.version"));
    return found.rows() == 1 ? found.text(0, 0).toInt() : 0;
}

void create(Connection& office) {
    // What PostgreSQL gives to everybody is taken back, so that a user has only what addUser gives.
    office.runScript(QStringLiteral(
        "CREATE SCHEMA office; REVOKE ALL ON SCHEMA public FROM PUBLIC;"
        "CREATE EXTENSION citext WITH SCHEMA office;"
        "CREATE TABLE office.version (version integer NOT NULL); INSERT INTO office.version VALUES (0);"));
    upgrade(office);
}

void upgrade(Connection& office) {
    const int found = versionOf(office);
    if (found > currentVersion())
        throw DatabaseFault(
            DatabaseFault::Unspecified,
            QStringLiteral("The office's database is of version %1; this program knows version "
                           "%2. It was not touched. Please install the newer program.")
                .arg(found)
                .arg(currentVersion())
                .toStdString());
    const QStringList all = users(office);
    for (int version = found; version < currentVersion(); ++version) {
        runIn(office, QStringLiteral("office"), sharedScripts()[version]);
        for (const QString& role : all)
            if (version < ownScripts().size())
                runIn(office, role, ownScripts()[version]);
        noteVersion(office, version + 1);
    }
    for (const QString& role : all)
        if (hasRole(office, role)) // a backup restored on another server may have brought the tables alone
            grant(office, role);
}

void addUser(Connection& office, const QString& role) {
    office.runScript(QStringLiteral("CREATE SCHEMA %1;").arg(quotedName(role)));
    for (const QString& script : ownScripts())
        runIn(office, role, script);
    grant(office, role);
}

void removeUser(Connection& office, const QString& role) {
    const QString name = quotedName(role);
    office.runScript(QStringLiteral("DROP SCHEMA %1 CASCADE;").arg(name));
    office.runScript(QStringLiteral("REVOKE ALL ON ALL TABLES IN SCHEMA office FROM %1;"
                                    "REVOKE ALL ON ALL SEQUENCES IN SCHEMA office FROM %1;"
                                    "REVOKE ALL ON SCHEMA office FROM %1;")
                         .arg(name));
}

QStringList users(Connection& office) {
    const Result found = office.run(
        QStringLiteral("SELECT n.nspname FROM pg_namespace n JOIN pg_class c ON c.relnamespace = n.oid "
                       "WHERE c.relname = 'tblfirsttime' ORDER BY 1"));
    QStringList names;
    for (int row = 0; row < found.rows(); ++row)
        names.append(found.text(row, 0));
    return names;
}

} // namespace OfficeSchema
