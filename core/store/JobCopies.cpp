#include "core/store/JobCopies.h"

#include "core/base/Fault.h"
#include "core/store/Backup.h"
#include "core/store/Deletion.h"
#include "core/store/PartFile.h"
#include "core/store/Schema.h"
#include "core/store/StoredRows.h"

#include <QFileInfo>
#include <QHash>
#include <QMap>

#include <algorithm>
#include <cmath>

using Gateway::addStoredRows;
using Gateway::hasRow;
using Gateway::readStoredRows;
using Gateway::StoredRows;

namespace JobCopies {

namespace {

[[noreturn]] void refuse(const QString& why) {
    throw DatabaseFault(DatabaseFault::Unspecified, why.toStdString());
}

/// Hashes of a job's rows: they differ as soon as any value does.
struct Digest {
    QString jobID;
    QString description;
    bool hasHeader = false;
    double header = 0;
    double lines = 0;
    int tanks = 0;
};

/// A digest of the columns sorted by name, since their order may differ between two files of one version.
QString digestOf(const Connection& data, const QString& table) {
    Recordset rows;
    rows.Open("SELECT * FROM " + table + " WHERE 1 = 0", data);
    QStringList names = rows.columnNames();
    names.sort();
    return "RowDigest([" + names.join("], [") + "])";
}

/// The digests of all jobs, by case-folded ID; also of those that have lost their header.
QHash<QString, Digest> digestsOf(const Connection& data) {
    QHash<QString, Digest> digests;
    Recordset headers;
    headers.Open("SELECT JobID, JobDscrptn, " + digestOf(data, "tblJobHeader") + " AS D FROM tblJobHeader",
                 data);
    for (; !headers.atEnd(); headers.moveNext()) {
        const QString jobID = headers["JobID"].text();
        digests.insert(jobID.toCaseFolded(), {.jobID = jobID,
                                              .description = headers["JobDscrptn"].text(),
                                              .hasHeader = true,
                                              .header = headers["D"].number()});
    }
    Recordset lines;
    lines.Open("SELECT JobID, SUM(" + digestOf(data, "tblJobData") +
                   ") AS D, COUNT(*) AS N FROM tblJobData GROUP BY JobID",
               data);
    for (; !lines.atEnd(); lines.moveNext()) {
        Digest& job = digests[lines["JobID"].text().toCaseFolded()];
        job.lines += lines["D"].number();
        job.tanks += static_cast<int>(lines["N"].number());
    }
    return digests;
}

Today compared(const Digest& copy, const QHash<QString, Digest>& today) {
    const auto found = today.constFind(copy.jobID.toCaseFolded());
    if (found == today.cend())
        return Today::Missing;
    return found->header == copy.header && found->lines == copy.lines && found->tanks == copy.tanks
               ? Today::Same
               : Today::Differs;
}

/// Whether a number is one that its column takes.
bool fits(const Recordset::Field& column, double number) {
    constexpr double largestWhole = 2147483647;
    return std::isfinite(number) && (column.takesFractions() || std::abs(number) <= largestWhole);
}

/// Rejects rows that no screen could have stored: a text too long for its column, one in a numeric column, or
/// a key that no statement finds.
void requireOrdinary(const Connection& user, const StoredRows& rows) {
    constexpr qsizetype maxMemo = 1000000; // characters
    Recordset table;
    table.Open(rows.table, user, CursorType::ForwardOnly, CommandType::Table);
    for (qsizetype i = 0; i < rows.columns.size(); ++i) {
        const Recordset::Field column = table[rows.columns[i]];
        for (const QVariantList& row : rows.rows) {
            const bool isText = row[i].typeId() == QMetaType::QString;
            if (row[i].isValid() &&
                (isText ? !column.takesText() : column.takesText() || !fits(column, row[i].toDouble())))
                refuse("The file holds a value of the wrong kind in the column " + rows.columns[i] + ".");
            constexpr int longestMoment = 25; // characters; the size of the column is in bytes
            const int most = column.takesMoments() ? longestMoment : column.DefinedSize();
            if (isText && row[i].toString().size() > std::min<qsizetype>(most, maxMemo))
                refuse("The file holds a text that is too long for the column " + rows.columns[i] + ".");
            if (isText &&
                (row[i].toString().contains(QChar(0)) ||
                 (rows.columns[i] == u"TankID" && row[i].toString().trimmed() != row[i].toString())))
                refuse("The file holds a text that is none in the column " + rows.columns[i] + ".");
        }
    }
}

/// Rejects a tank line whose key belongs to another job.
void requireFreeKeys(const Connection& user, const StoredRows& lines) {
    const qsizetype key = lines.columns.indexOf("TankID");
    for (const QVariantList& row : lines.rows)
        if (hasRow(user, "tblJobData", "TankID", row[key].toString()))
            refuse("A tank " + row[key].toString() + " belongs to another job. Nothing was changed.");
}

/// Adds a job whose rows of today are gone.
void restoreOne(const Source& copy, const Connection& user, const QString& jobID) {
    const StoredRows header = readStoredRows(copy.data(), "tblJobHeader", "JobID", jobID);
    const StoredRows lines = readStoredRows(copy.data(), "tblJobData", "JobID", jobID);
    if (header.rows.size() != 1)
        refuse("There is no job " + jobID + " in the file.");
    if (copy.origin() == Origin::Foreign)
        for (const StoredRows& rows : {header, lines})
            requireOrdinary(user, rows);
    requireFreeKeys(user, lines);
    addStoredRows(user, header);
    addStoredRows(user, lines);
}

/// The rows of a job, whatever the order of rows and columns.
QList<QMap<QString, QVariant>> rowsOf(const Connection& data, const QString& table, const QString& jobID) {
    const StoredRows found = readStoredRows(data, table, "JobID", jobID);
    QList<QMap<QString, QVariant>> rows;
    for (const QVariantList& values : found.rows) {
        QMap<QString, QVariant> row;
        for (qsizetype i = 0; i < values.size(); ++i)
            row.insert(found.columns[i], values[i]);
        rows.append(row);
    }
    std::ranges::sort(rows, {}, [](const auto& row) { return row["TankID"].toString().toCaseFolded(); });
    return rows;
}

/// Compares the rows of one job themselves: today's data may be of another engine, which makes no digests.
Today stateOf(const Source& copy, const Connection& user, const QString& jobID) {
    bool missing = true;
    bool same = true;
    for (const char* table : {"tblJobHeader", "tblJobData"}) {
        const auto today = rowsOf(user, table, jobID);
        missing = missing && today.isEmpty();
        same = same && today == rowsOf(copy.data(), table, jobID);
    }
    return missing ? Today::Missing : same ? Today::Same : Today::Differs;
}

} // namespace

Source::Source(const QString& source, Origin origin) : path(source), comesFrom(origin) {
    constexpr qint64 largestForeign = 64LL << 20; // bytes; a job of a thousand lines takes half a megabyte
    constexpr int maxStatementTime = 10000;       // milliseconds
    const QFileInfo file(path);
    if (!file.isFile())
        refuse("There is no file " + path);
    if (origin == Origin::Foreign && file.size() > largestForeign)
        refuse("The file " + path + " is too large for a job.");
    connection.setProperty("Data Source", path);
    connection.setReadOnly();
    connection.Open();
    Schema::requirePlainTables(connection);
    if (origin == Origin::Foreign) {
        connection.engine().limitTime(maxStatementTime);
        if (const QString damage = connection.engine().findDamage(Engine::Check::Thorough); !damage.isEmpty())
            refuse("The file is damaged: " + damage);
        connection.engine().limitTime(0); // the rest only reads plain tables of bounded size
    }
    const int version = Schema::versionOf(connection);
    if (version > Schema::currentVersion())
        refuse("The file was written by a newer version of the program. Please install that one.");
    if (version == 0 || !connection.engine().hasTable("tblJobHeader") ||
        !connection.engine().hasTable("tblJobData"))
        refuse("The file holds no jobs of Brennoval.");
    constexpr Backup::Counts most{.jobs = 1000, .tanks = 100000}; // a list of more would hold the windows up
    if (origin == Origin::Foreign)
        if (const Backup::Counts counts = Backup::countsOf(connection);
            counts.jobs > most.jobs || counts.tanks > most.tanks)
            refuse("The file holds more jobs or tanks than the program takes from a file.");
    if (version < Schema::currentVersion())
        bringUp();
}

void Source::bringUp() {
    const Connection older = std::move(connection);
    connection = Connection();
    connection.setProperty("Data Source", ":memory:"); // a kill would leave a file
    connection.Open();
    connection.engine().replaceBy(older.engine());
    Schema::upgrade(connection, Schema::ownScripts(), Schema::CopyFirst::No);
}

std::vector<Job> changedJobs(const Source& copy, const Connection& user) {
    const auto today = digestsOf(user);
    std::vector<Job> jobs;
    for (const Digest& digest : digestsOf(copy.data()))
        if (const Today state = compared(digest, today); digest.hasHeader && state != Today::Same)
            jobs.push_back({.jobID = digest.jobID,
                            .description = digest.description,
                            .tanks = digest.tanks,
                            .today = state});
    std::ranges::sort(jobs, {}, [](const Job& job) { return job.jobID.toCaseFolded(); });
    return jobs;
}

std::vector<Job> allJobs(const Source& copy, const Connection& user) {
    std::vector<Job> jobs;
    for (const Digest& digest : digestsOf(copy.data()))
        if (digest.hasHeader)
            jobs.push_back({.jobID = digest.jobID,
                            .description = digest.description,
                            .tanks = digest.tanks,
                            .today = stateOf(copy, user, digest.jobID)});
    std::ranges::sort(jobs, {}, [](const Job& job) { return job.jobID.toCaseFolded(); });
    return jobs;
}

std::vector<Tank> tanksOf(const Source& copy, const Connection& user, const QString& jobID) {
    const StoredRows then = readStoredRows(copy.data(), "tblJobData", "JobID", jobID);
    const StoredRows now = readStoredRows(user, "tblJobData", "JobID", jobID);
    const auto tankOf = [](const StoredRows& rows, const QVariantList& row, Today today) {
        const auto text = [&](const char* column) { return row[rows.columns.indexOf(column)].toString(); };
        return Tank{
            .tankID = text("TankID"), .modelNo = text("ModelNo"), .quantity = text("Qty"), .today = today};
    };
    const auto keysOf = [](const StoredRows& rows) {
        QHash<QString, QVariantList> byKey;
        for (const QVariantList& row : rows.rows)
            byKey.insert(row[rows.columns.indexOf("TankID")].toString().toCaseFolded(), row);
        return byKey;
    };
    const auto before = keysOf(then);
    const auto after = keysOf(now);
    std::vector<Tank> tanks;
    for (const QVariantList& row : then.rows) {
        Tank tank = tankOf(then, row, Today::Missing);
        if (const auto found = after.constFind(tank.tankID.toCaseFolded()); found != after.cend())
            tank.today = *found == row ? Today::Same : Today::Differs;
        tanks.push_back(tank);
    }
    for (const QVariantList& row : now.rows)
        if (const Tank tank = tankOf(now, row, Today::Only); !before.contains(tank.tankID.toCaseFolded()))
            tanks.push_back(tank);
    return tanks;
}

QStringList existing(const QStringList& jobIDs, const Connection& user) {
    QStringList found;
    for (const QString& jobID : jobIDs)
        if (hasRow(user, "tblJobHeader", "JobID", jobID) || hasRow(user, "tblJobData", "JobID", jobID))
            found.append(jobID);
    return found;
}

void Restore(const Source& copy, const Connection& user, const QStringList& jobIDs,
             const QStringList& replaced) {
    Transaction write(user);
    for (const QString& jobID : existing(jobIDs, user))
        if (!replaced.contains(jobID))
            refuse("There is a job " + jobID + " by now. Nothing was changed.");
    for (const QString& jobID : jobIDs)
        Deletion::removeJobRows(user, jobID);
    for (const QString& jobID : jobIDs)
        restoreOne(copy, user, jobID);
    write.commit();
    for (const QString& jobID : jobIDs)
        Deletion::tellDeleted(jobID);
}

void restoreAll(const Source& copy, const Connection& user) {
    if (const QString damage = copy.data().engine().findDamage(Engine::Check::Thorough); !damage.isEmpty())
        refuse("The backup is damaged: " + damage);
    Backup::Make(user, Backup::Reason::Restore, copy.file());
    user.engine().replaceBy(copy.data().engine());
}

void giveID(StoredRows& header, StoredRows& lines, const QString& jobID, const QString& newID) {
    const auto number = lines.columns.indexOf("TankNo");
    const auto tank = lines.columns.indexOf("TankID");
    for (QVariantList& row : lines.rows) {
        const QString tankID = row[tank].toString();
        row[tank] = tankID.startsWith(jobID + u'.', Qt::CaseInsensitive) // also where a line has no number
                        ? QString(newID + tankID.mid(jobID.size()))
                        : QString(newID + u'.' + row[number].toString());
    }
    for (StoredRows* rows : {&header, &lines})
        for (QVariantList& row : rows->rows)
            row[rows->columns.indexOf("JobID")] = newID;
}

bool duplicate(const Connection& user, const QString& jobID, const QString& copyID) {
    Transaction write(user);
    StoredRows header = readStoredRows(user, "tblJobHeader", "JobID", jobID);
    StoredRows lines = readStoredRows(user, "tblJobData", "JobID", jobID);
    if (header.rows.isEmpty())
        throw RecordGone("This job has been deleted.");
    if (!existing({copyID}, user).isEmpty())
        return false;
    giveID(header, lines, jobID, copyID);
    addStoredRows(user, header);
    addStoredRows(user, lines);
    Recordset copy;
    copy.Open("SELECT * FROM tblJobHeader WHERE JobID = ?", user, {copyID}, CursorType::Keyset);
    copy["DateCreated"] = QDateTime::currentDateTime(); // or it would not be among the newest jobs
    copy.Update();
    write.commit();
    return true;
}

void Export(const Connection& user, const QString& jobID, const QString& path) {
    const QFileInfo target(path);
    if (target.exists() && target.suffix().compare("mdb", Qt::CaseInsensitive) == 0)
        refuse(path + " is a database. It was not replaced.");
    PartFile part(target.absoluteDir(), target.completeBaseName());
    {
        Connection file;
        file.setProperty("Data Source", part.path());
        file.Open();
        Schema::create(file);
        Transaction moment(user, Transaction::For::Reading);
        const StoredRows header = readStoredRows(user, "tblJobHeader", "JobID", jobID);
        const StoredRows lines = readStoredRows(user, "tblJobData", "JobID", jobID);
        moment.commit();
        if (header.rows.isEmpty())
            throw RecordGone("This job has been deleted.");
        Transaction write(file);
        addStoredRows(file, header);
        addStoredRows(file, lines);
        write.commit();
    }
    QFile::setPermissions(part.path(),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    part.replace(path);
}

} // namespace JobCopies
