#include "core/shell/Shell.h"

#include "core/base/ServerAddress.h"
#include "core/look/ControlFaces.h"
#include "core/shell/Dialogs.h"
#include "core/shell/ErrorReport.h"
#include "core/shell/Screens.h"
#include "core/shell/Trap.h"
#include "core/shell/frmDatabasePath.h"
#include "core/shell/frmError.h"
#include "core/shell/frmSplash.h"
#include "core/store/OfficeEngines.h"

#include <QApplication>

namespace {

/// The address tells the user which password is meant; the reason why the last was refused stands below it.
QString askForPassword(const QString& address, const QString& why) {
    const QString prompt = QCoreApplication::translate("Office", "Password for the office's database\n%1")
                               .arg(ServerAddress::withoutPassword(address));
    return Dialogs::current().password("Brennoval", why.isEmpty() ? prompt : prompt + "\n\n" + why);
}

} // namespace

void registerShell() {
    Gateway::onPasswordNeeded(askForPassword);
    improveControlsForScreenReaders();
    constexpr int betweenLetters = 1000; // milliseconds, while an entry of a list is found by typing
    QApplication::setKeyboardInputInterval(betweenLetters);
    Faults::setFailureHandler(Faults::showFailure);
    Screens::add("frmSplash", [] { return new frmSplash; });
    Screens::add("frmDatabasePath", [] { return new frmDatabasePath; });
    Screens::add("frmError", [] { return new frmError; });
}
