#include "core/shell/ErrorReport.h"

#include "core/base/Fault.h"
#include "core/base/Program.h"
#include "core/shell/Dialogs.h"
#include "core/shell/PreviousInstance.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/shell/frmError.h"
#include "core/shell/frmSplash.h"
#include "core/store/Gateway.h"

#include <QApplication>
#include <QDateTime>

using namespace Gateway;
using namespace Program;
using namespace StatusBar;

namespace Faults {

namespace {

void askForFolder() {
    if (Screen* splash = Screens::find("frmSplash")) // nothing may retry after this dialog
        static_cast<frmSplash*>(splash)->setTimerInterval(0);
    Dialogs::current().show({"Invalid Database Path!\nPlease indicate location of database.", "Invalid"});
    Screens::open("frmDatabasePath");
}

} // namespace

void showErrorText(const QString& text, const QString& module) {
    auto* screen = static_cast<frmError*>(Screens::load("frmError"));
    if (!screen)
        return;
    if (!module.isEmpty())
        screen->Tag = module;
    screen->setReport(text);
    Screens::show("frmError");
    screen->raise();
    screen->activateWindow();
}

void ReportError(std::int32_t number, const QString& description, const QString& dll, const QString& source,
                 const QString& codeSource, const QString& module) {
    const QString systemSource =
        source.isEmpty() ? codeSource : QString(source).replace(databasePassword(), "********");
    // Line 3 has the date and time, which would make the next tick's identical failure look new.
    const QString failure =
        QStringList{QString::number(number), description, systemSource, codeSource}.join(u'\n');
    const auto* shown = static_cast<const frmError*>(Screens::find("frmError"));
    if (!module.isEmpty() && shown && shown->Tag == module && shown->failure() == failure)
        return;
    sayError();
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    const QStringList lines = {
        "ERROR MESSAGE",
        "Version: " + fullProgramVersion(),
        "Date: " + QDateTime::currentDateTime().toString("yyyy-MM-dd HH:mm:ss"),
        QString("Error No. %1").arg(number),
        "Desc: " + description,
        "DLL: " + dll,
        "System Source: " + systemSource,
        "Code Source: " + codeSource,
        "Path: " + programFolder(),
        "File Description:Brennoval, electronic catalog tool and expansion tank selection software",
        QString("Instance:%1").arg(QCoreApplication::applicationPid()),
        QString("PrevInstance:") + (previousInstance() ? "True" : "False"),
        QString("Other: Qt %1, %2").arg(qVersion(), QGuiApplication::platformName()),
    };
    showErrorText(lines.join("\r\n") + "\r\n", module);
    if (auto* screen = static_cast<frmError*>(Screens::find("frmError")))
        screen->setFailure(failure);
}

void showFailure(const Fault& fault, const QString& codeSource, const QString& module) {
    if (dynamic_cast<const NoDatabaseFile*>(&fault))
        return askForFolder();
    if (dynamic_cast<const RecordGone*>(&fault)) { // not an error: somebody else deleted it
        Dialogs::current().show({QString::fromUtf8(fault.what()), "Error"});
        return;
    }
    ReportError(fault.number(), QString::fromUtf8(fault.what()), "0", QString::fromStdString(fault.source()),
                codeSource, module);
}

} // namespace Faults
