#include "core/store/Schema.h"

#include "core/base/Fault.h"
#include "core/store/Backup.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QStringList>

namespace Schema {

namespace {

const QStringList ownTables = {"tblFirstTime", "tblUser",    "tblRepMaster", "tblEngineer", "tblContractor",
                               "tblJobHeader", "tblJobData", "tblSchedule",  "tblOwn"};

[[noreturn]] void refuse(const Connection& user, const QString& why) {
    throw RefusedData(DatabaseFault::Unspecified, why.toStdString(), user.connectionString().toStdString());
}

void requireOfficeVersion(const Connection& office) {
    const int found = office.engine().schemaVersion();
    if (found == 0)
        refuse(office,
               QCoreApplication::translate(
                   "Schema", "This database is not that of an office, or you are not one of its users. "
                             "Please ask whoever keeps the office's database."));
    if (found > officeVersion())
        refuse(office,
               QCoreApplication::translate(
                   "Schema", "The office's database is of a newer version than the program (version %1; "
                             "this program knows version %2). It was not touched. Please install the "
                             "newer program.")
                   .arg(found)
                   .arg(officeVersion()));
    if (found < officeVersion())
        refuse(office, QCoreApplication::translate(
                           "Schema", "The office's database is of an older version than the program (version "
                                     "%1; this program needs version %2). It was not touched. Please ask "
                                     "whoever keeps it to bring it up to date with brennoval-office.")
                           .arg(found)
                           .arg(officeVersion()));
}

/// Backs up over a separate connection, which only reads what the caller has locked.
void putCopyAside(const Connection& user) {
    Connection reader;
    reader.setProperty("Data Source", user.dataSource());
    reader.Open();
    Backup::Make(reader, Backup::Reason::Upgrade);
}

QString scriptOf(int version) {
    return QStringLiteral(":/schema/user/%1.sql").arg(version);
}

/// From this version on, keys compare regardless of case, for letters of any script.
constexpr int lettersVersion = 4;

/// Whether data stays at its version until the user has decided which of two jobs keeps its name.
bool waitsForNames(const Connection& user, int version) {
    return version == lettersVersion - 1 && !collidingNames(user).isEmpty();
}

} // namespace

QStringList collidingNames(const Connection& user) {
    QStringList colliding;
    for (const auto& [table, column] : {std::pair("tblJobHeader", "JobID"), {"tblJobData", "TankID"}}) {
        QHash<QString, QString> seen;
        Recordset keys;
        for (keys.Open(QString("SELECT %1 FROM %2").arg(column, table), user); !keys.atEnd();
             keys.moveNext()) {
            const QString key = keys[column].text();
            const QString folded = key.toCaseFolded();
            if (seen.contains(folded))
                colliding.append(seen.value(folded) + " / " + key);
            seen.insert(folded, key);
        }
    }
    return colliding;
}

const QStringList& ownScripts() {
    static const QStringList scripts = [] {
        QStringList all;
        for (int version = 1;; ++version) {
            QFile file(scriptOf(version));
            if (!file.open(QIODevice::ReadOnly))
                return all;
            all.append(QString::fromUtf8(file.readAll()));
        }
    }();
    return scripts;
}

int currentVersion() {
    static const int newest = [] { // counts them unopened: every start asks, and seldom runs one
        int version = 0;
        while (QFile::exists(scriptOf(version + 1)))
            ++version;
        return version;
    }();
    return newest;
}

int versionOf(const Connection& user) {
    const int marked = user.engine().schemaVersion();
    return marked == 0 && user.engine().hasTable(QStringLiteral("tblJobHeader")) ? 1 : marked;
}

void requirePlainTables(const Connection& user) {
    if (const QString part = user.engine().foreignPart(ownTables); !part.isEmpty())
        refuse(user,
               QCoreApplication::translate(
                   "Schema", "These user data hold \"%1\", a view, trigger, virtual table or computed column "
                             "that is none of the program's. They were not touched. Please restore a backup.")
                   .arg(part));
}

int officeVersion() {
    return BRENNOVAL_OFFICE_VERSION;
}

void upgrade(Connection& user) {
    if (user.isOffice())
        return requireOfficeVersion(user);
    requirePlainTables(user);
    if (versionOf(user) != currentVersion())
        upgrade(user, ownScripts());
}

void upgrade(Connection& user, const QStringList& scripts, CopyFirst copyFirst) {
    requirePlainTables(user);
    const int found = versionOf(user);
    const auto newest = static_cast<int>(scripts.size());
    if (found > newest)
        refuse(user, QCoreApplication::translate(
                         "Schema",
                         "These user data were written by a newer version of the program (version %1 of the "
                         "data; this program knows version %2). They were not touched. Please install the "
                         "newer program.")
                         .arg(found)
                         .arg(newest));
    if (found == newest || found == 0 || waitsForNames(user, found)) // no version means it is not our file
        return;
    Transaction lock(user); // makes other instances of the program wait
    const int version = versionOf(user);
    if (version < newest && copyFirst == CopyFirst::Yes)
        putCopyAside(user);
    for (int next = version; next < newest && !waitsForNames(user, next); ++next)
        user.engine().runScript(scripts[next], next + 1);
    lock.commit();
}

void create(Connection& user) {
    Transaction write(user);
    for (int version = 0; version < currentVersion(); ++version)
        user.engine().runScript(ownScripts()[version], version + 1);
    write.commit();
}

} // namespace Schema
