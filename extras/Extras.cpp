#include "extras/Extras.h"

#include "core/shell/BrennovalMain.h"
#include "core/shell/Commands.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Backup.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "extras/StartWork.h"

#include <QCoreApplication>
#include <QTimer>

using namespace UtilityFunctions;

namespace {

/// What of a failed copy the status text has not said yet; a deletion's notice takes it along.
QString& unsaid() {
    static QString text;
    return text;
}

void tellDeletion() {
    const QString what = UndoableDeletion();
    Commands::setEnabled("mnuUndo", !what.isEmpty());
    if (!what.isEmpty())
        SetStatusText("Deleted " + what + ". \"Undo deletion\" (Ctrl+Z) brings it back." +
                      std::exchange(unsaid(), {}));
}

/// Says once that copies cannot be made: whoever reads it goes on with his work.
void tellFailure(const QString& why) {
    static bool told = false;
    if (std::exchange(told, true))
        return;
    unsaid() = " No backup could be made: " + why;
    SetStatusText(unsaid().trimmed());
}

/// What shows data shows them anew, once the command that changed them is through.
void refresh() {
    QTimer::singleShot(0, BrennovalMain::instance(), [] {
        Screens::freshenActive();
        BrennovalMain::instance()->refreshBackground();
    });
}

void undo() {
    const QString what = UndoableDeletion();
    const QString problem = UndoDeletion();
    if (!problem.isEmpty()) {
        Dialogs::current().show({.text = problem, .title = "Undo deletion"});
        return;
    }
    SetStatusText("Brought back: " + what);
    refresh();
}

void backUp() {
    const Connection user = openDatabase("User");
    Backup::Make(user, Backup::Reason::ByHand);
    SetStatusText("Backed up into the folder " + Backup::FolderOf(user.dataSource()));
}

} // namespace

void registerExtras() {
    Commands::set("mnuUndo", undo);
    Commands::set("mnuBackup", backUp);
    OnUndoableChanged(tellDeletion);
    Backup::OnFailure([](const QString& why) {
        QMetaObject::invokeMethod(QCoreApplication::instance(), [why] { tellFailure(why); });
    });
    BrennovalMain::setStartWork([] {
        Commands::setEnabled("mnuUndo", !UndoableDeletion().isEmpty());
        BeginStartWork(dbConnection("User").dataSource());
    });
}
