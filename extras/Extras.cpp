#include "extras/Extras.h"

#include "core/base/Fault.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Commands.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Backup.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "core/store/JobCopies.h"
#include "extras/StartWork.h"
#include "extras/compare/Compare.h"
#include "extras/frmRestore.h"
#include "extras/import/Import.h"
#include "extras/overview/Overview.h"
#include "extras/package/frmPackage.h"
#include "jobs/JobIDs.h"
#include "setup/PriorData.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTimer>

using namespace Deletion;
using namespace Gateway;
using namespace PriorData;
using namespace StatusBar;

namespace {

const QString jobFilter = QStringLiteral("Jobs of Brennoval (*.brennoval)");

/// The part of a backup failure that the status text has not shown yet; the next deletion notice includes it.
QString& unreported() {
    static QString text;
    return text;
}

void showDeletion() {
    const QString what = undoableDeletion();
    Commands::setEnabled("mnuUndo", !what.isEmpty());
    if (!what.isEmpty())
        setStatusText("Deleted " + what + ". \"Undo deletion\" (Ctrl+Z) brings it back." +
                      std::exchange(unreported(), {}));
}

/// Reports only once that backups cannot be made, so that the user can get on with their work.
void reportFailure(const QString& why) {
    static bool reported = false;
    if (std::exchange(reported, true))
        return;
    unreported() = " No backup could be made: " + why;
    setStatusText(unreported().trimmed());
}

/// Refreshes whatever shows data, once the command that changed it has finished.
void refresh() {
    QTimer::singleShot(0, BrennovalMain::instance(), [] {
        Screens::freshenActive();
        BrennovalMain::instance()->refreshBackground();
    });
}

void undo() {
    const QString what = undoableDeletion();
    if (what.isEmpty())
        return;
    const QString problem = undoDeletion();
    if (!problem.isEmpty()) {
        Dialogs::current().show({.text = problem, .title = "Undo deletion"});
        return;
    }
    setStatusText("Brought back: " + what);
    refresh();
}

void backUp() {
    const Connection user = openDatabase("User");
    if (user.isOffice()) {
        Dialogs::current().show(
            {.text = Backup::noneOfAnOffice(), .title = "Back up", .icon = QMessageBox::Information});
        return;
    }
    Backup::Make(user, Backup::Reason::ByHand);
    setStatusText("Backed up into the folder " + Backup::folderOf(user.dataSource()));
}

void exportJob() {
    const QString jobID = jobAtWork("Please open the job that is to be exported!", "Export job");
    if (jobID.isEmpty())
        return;
    static const QRegularExpression notInNames(R"([\\/:*?"<>|])");
    const QString path = Dialogs::current().saveFile(jobFilter, QString(jobID).replace(notInNames, "_"));
    if (path.isEmpty())
        return;
    JobCopies::Export(openDatabase("User"), jobID, path);
    setStatusText("Exported job " + jobID);
}

void importJob() {
    const QString path = Dialogs::current().openFile(jobFilter, {}, "Import job");
    if (path.isEmpty())
        return;
    auto* screen = dynamic_cast<frmRestore*>(Screens::load("frmRestore"));
    if (!screen)
        return;
    try {
        screen->lookIntoFile(path);
    } catch (const DatabaseFault& fault) {
        Screens::drop(screen);
        Dialogs::current().show({.text = "This file cannot be imported.\n" + QString::fromUtf8(fault.what()),
                                 .title = "Import job"});
        return;
    }
    Screens::show(screen->name());
}

/// Says what was found, once no screen's own text is in the status bar.
void sayWhenIdle(const QString& sentence) {
    constexpr int pause = 2000; // milliseconds
    if (!Screens::anyVisible())
        setStatusText(sentence + " \"Restore\" in the menu Extras shows more.");
    else
        QTimer::singleShot(pause, BrennovalMain::instance(), [sentence] { sayWhenIdle(sentence); });
}

void showFindings(const DataCheck::Findings& findings) {
    DataCheck::setLatestFindings(findings);
    if (!findings.isEmpty())
        sayWhenIdle(findings.sentences().first());
}

} // namespace

void registerExtras() {
    registerCompare();
    registerPackage(); // before the overview, which offers it
    registerOverview();
    registerImport();
    Screens::add("frmRestore", [] { return new frmRestore; });
    Commands::set("mnuRestore", [] { Screens::open("frmRestore"); });
    Commands::set("mnuPriorData", [] {
        takeOverPriorData();
        refresh();
    });
    Commands::set("mnuExportJob", exportJob);
    Commands::set("mnuImportJob", importJob);
    Commands::set("mnuUndo", undo);
    Commands::set("mnuBackup", backUp);
    onUndoableChanged(showDeletion);
    Backup::onFailure([](const QString& why) {
        QMetaObject::invokeMethod(QCoreApplication::instance(), [why] { reportFailure(why); });
    });
    BrennovalMain::setStartWork([] {
        Commands::setEnabled("mnuUndo", !undoableDeletion().isEmpty());
        beginStartWork(dbConnection("User").dataSource(), showFindings);
    });
}
