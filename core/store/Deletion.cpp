#include "core/store/Deletion.h"

#include "core/base/Fault.h"
#include "core/store/Backup.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/StoredRows.h"

#include <utility>

using namespace Gateway;

namespace Deletion {

namespace {

using DeletionListener = std::function<void(const QString&, const QString&)>;

DeletionListener& deletionListener() {
    static DeletionListener listener = [](const QString&, const QString&) {};
    return listener;
}

std::function<void()>& undoableListener() {
    static std::function<void()> listener = [] {};
    return listener;
}

/// What one deletion removed: the rows of a job, or of some tank lines.
struct Deletion {
    QString file; // the data file
    QString what;
    QString jobID; // empty for tank lines
    QList<StoredRows> rows;
};

/// The deletions since the program started, oldest first.
QList<Deletion>& deletions() {
    static QList<Deletion> all;
    return all;
}

void remember(const Deletion& deletion) {
    deletions().append(deletion);
    undoableListener()();
}

/// Why a deletion cannot be undone; empty if it can.
QString obstacle(const Connection& user, const Deletion& deletion) {
    if (user.dataSource() != deletion.file)
        return "The deletion was made in other data. Nothing was brought back.";
    if (!deletion.jobID.isEmpty() && hasRow(user, "tblJobHeader", "JobID", deletion.jobID))
        return "There is another job " + deletion.jobID + " by now. The deleted one was not brought back.";
    for (const StoredRows& lines : deletion.rows) {
        if (lines.table != u"tblJobData")
            continue;
        for (const QVariantList& row : lines.rows) {
            const auto text = [&](const char* column) {
                return row[lines.columns.indexOf(QLatin1String(column))].toString();
            };
            if (hasRow(user, "tblJobData", "TankID", text("TankID")))
                return "There is another tank " + text("TankID") +
                       " by now. The deleted one was not brought back.";
            if (deletion.jobID.isEmpty() && !hasRow(user, "tblJobHeader", "JobID", text("JobID")))
                return "The job " + text("JobID") +
                       " has been deleted, too. Its tanks were not brought back.";
        }
    }
    return {};
}

} // namespace

void removeJobRows(const Connection& user, const QString& jobID) {
    for (const char* table : {"tblJobData", "tblJobHeader"})
        Recordset().Open("DELETE * FROM " + QString(table) + " WHERE JobID = ?", user, {jobID});
}

/// Deletes lines and header in one write, so that no job is ever half there.
void deleteJob(const QString& jobID) {
    const Connection connection = openDatabase("User");
    Backup::makeIfPossible(connection, Backup::Reason::Deletion);
    Transaction write(connection);
    Deletion deletion{.file = connection.dataSource(), .what = "job " + jobID, .jobID = jobID, .rows = {}};
    for (const char* table : {"tblJobData", "tblJobHeader"})
        deletion.rows.append(readStoredRows(connection, table, "JobID", jobID));
    removeJobRows(connection, jobID);
    write.commit();
    remember(deletion);
    deletionListener()(jobID, {});
}

void deleteTankLines(const QStringList& tankIDs) {
    if (tankIDs.isEmpty())
        return;
    const Connection connection = openDatabase("User");
    Backup::makeIfPossible(connection, Backup::Reason::Deletion);
    Deletion deletion{.file = connection.dataSource(), .what = {}, .jobID = {}, .rows = {}};
    const auto rememberThem = [&deletion] {
        if (deletion.rows.isEmpty())
            return;
        const qsizetype count = deletion.rows.size();
        deletion.what = count == 1 ? "tank " + deletion.rows.first().rows.first().first().toString()
                                   : QStringLiteral("%1 tanks").arg(count);
        remember(deletion);
    };
    try {
        for (const QString& tankID : tankIDs) {
            Transaction write(connection); // so that what comes back is what went
            const StoredRows row = readStoredRows(connection, "tblJobData", "TankID", tankID);
            Recordset().Open("DELETE * FROM tblJobData WHERE TankID = ?", connection, {tankID});
            write.commit();
            if (!row.rows.isEmpty())
                deletion.rows.append(row);
            deletionListener()({}, tankID);
        }
    } catch (...) {
        rememberThem();
        throw;
    }
    rememberThem();
}

QString undoableDeletion() {
    return deletions().isEmpty() ? QString() : deletions().last().what;
}

QString undoDeletion() {
    if (deletions().isEmpty())
        return {};
    const Connection connection = openDatabase("User");
    Transaction write(connection);
    QString problem = obstacle(connection, deletions().last());
    if (!problem.isEmpty())
        return problem;
    for (const StoredRows& rows : deletions().last().rows)
        addStoredRows(connection, rows);
    write.commit();
    deletions().removeLast();
    undoableListener()();
    return {};
}

void onUndoableChanged(std::function<void()> listener) {
    undoableListener() = std::move(listener);
}

void tellDeleted(const QString& jobID) {
    deletionListener()(jobID, {});
}

void CancelJobInput(const QString& jobID) {
    bool deleted = false;
    underName("CancelJobInput", [&] {
        QString mode;
        if (!Session::Mode.read(mode))
            return;
        const Connection connection = openDatabase("User");
        Transaction write(connection);
        Recordset tanks;
        tanks.Open(
            "SELECT * FROM tblJobData INNER JOIN tblJobHeader ON tblJobData.JobID = tblJobHeader.JobID WHERE "
            "tblJobHeader.JobID = ?",
            connection, {jobID}, CursorType::Keyset);
        if (!tanks.atEnd())
            return;
        tanks.Close();
        Recordset header;
        header.Open("SELECT * FROM tblJobHeader WHERE JobID = ?", connection, {jobID}, CursorType::Keyset);
        deleted = !header.atEnd();
        if (deleted)
            header.Delete();
        header.Close();
        write.commit();
    });
    if (deleted)
        deletionListener()(jobID, {});
}

void onDeleted(std::function<void(const QString& jobID, const QString& tankID)> listener) {
    deletionListener() = std::move(listener);
}

} // namespace Deletion
