// A copy of the program that backs up, deletes, undoes, exports, imports and restores in a loop and reports
// each call that has returned, for the test that kills it. Usage: brennoval-restore-loop SESSION_FOLDER
// WORK_FOLDER

#include "core/base/Fault.h"
#include "core/store/Backup.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "core/store/JobCopies.h"

#include <QCoreApplication>
#include <QSettings>

#include <cstdio>

using namespace Deletion;
using namespace Gateway;

namespace {

void tell(const QString& what) {
    std::puts(what.toUtf8().constData());
    std::fflush(stdout);
}

void goRound(const QString& folder, const QString& original) {
    const QString job = folder + "/job.brennoval";
    JobCopies::Export(openDatabase("User"), "Kept", job);
    tell("exported");
    deleteJob("Kept");
    tell("deleted");
    if (!undoDeletion().isEmpty())
        std::exit(3);
    tell("undone");
    execute("User", "UPDATE tblJobData SET Qty = 99 WHERE JobID = 'Kept'");
    JobCopies::Restore(JobCopies::Source(job, JobCopies::Origin::Foreign), openDatabase("User"), {"Kept"},
                       {"Kept"});
    tell("imported");
    Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
    tell("backed up");
    JobCopies::restoreAll(JobCopies::Source(original, JobCopies::Origin::Own), openDatabase("User"));
    tell("restored");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const QCoreApplication application(argc, argv);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, argv[1]);
    QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, argv[1] + QString("/machine"));
    try {
        const QString original = Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
        for (int round = 0; round < 1000; ++round)
            goRound(argv[2], original);
    } catch (const Fault& fault) {
        tell(QString("failed: ") + fault.what());
        return 1;
    }
    return 0;
}
