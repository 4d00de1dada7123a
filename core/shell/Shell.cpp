#include "core/shell/Shell.h"

#include "core/look/ControlFaces.h"
#include "core/shell/ErrorReport.h"
#include "core/shell/Screens.h"
#include "core/shell/Trap.h"
#include "core/shell/frmDatabasePath.h"
#include "core/shell/frmError.h"
#include "core/shell/frmSplash.h"

#include <QApplication>

void registerShell() {
    improveControlsForScreenReaders();
    constexpr int betweenLetters = 1000; // milliseconds, while an entry of a list is found by typing
    QApplication::setKeyboardInputInterval(betweenLetters);
    Faults::setFailureHandler(Faults::showFailure);
    Screens::add("frmSplash", [] { return new frmSplash; });
    Screens::add("frmDatabasePath", [] { return new frmDatabasePath; });
    Screens::add("frmError", [] { return new frmError; });
}
