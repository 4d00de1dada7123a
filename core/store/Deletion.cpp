#include "core/store/Deletion.h"

#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqlText.h"

#include <utility>

namespace UtilityFunctions {

namespace {

using DeletionListener = std::function<void(const QString&, const QString&)>;

DeletionListener& deletionListener() {
    static DeletionListener listener = [](const QString&, const QString&) {};
    return listener;
}

} // namespace

/// Lines and header in one write: a job is there whole or not at all.
void DeleteJob(const QString& jobID) {
    const Connection connection = openDatabase("User");
    Transaction write(connection);
    const QString key = " WHERE JobID = '" + SqlEscape(jobID) + "'";
    for (const char* table : {"tblJobData", "tblJobHeader"})
        Recordset().Open("DELETE * FROM " + QString(table) + key, connection);
    write.Commit();
    deletionListener()(jobID, {});
}

void DeleteTankLine(const QString& tankID) {
    Execute("User", "DELETE * FROM tblJobData WHERE TankID ='" + SqlEscape(tankID) + "'");
    deletionListener()({}, tankID);
}

void CancelJobInput(const QString& jobID) {
    bool deleted = false;
    Named("CancelJobInput", [&] {
        QString mode;
        if (!Session::Mode.read(mode))
            return;
        const Connection connection = openDatabase("User");
        Transaction write(connection);
        Recordset tanks;
        tanks.Open(
            "SELECT * FROM tblJobData INNER JOIN tblJobHeader ON tblJobData.JobID = tblJobHeader.JobID WHERE "
            "tblJobHeader.JobID = '" +
                SqlEscape(jobID) + "'",
            connection, CursorType::Keyset);
        if (!tanks.AtEnd())
            return;
        tanks.Close();
        Recordset header;
        header.Open("SELECT * FROM tblJobHeader WHERE JobID = '" + SqlEscape(jobID) + "'", connection,
                    CursorType::Keyset);
        deleted = !header.AtEnd();
        if (deleted)
            header.Delete();
        header.Close();
        write.Commit();
    });
    if (deleted)
        deletionListener()(jobID, {});
}

void OnDeleted(std::function<void(const QString& jobID, const QString& tankID)> listener) {
    deletionListener() = std::move(listener);
}

} // namespace UtilityFunctions
