#include "app/Register.h"
#include "core/look/SystemScheme.h"
#include "core/shell/DesktopApplication.h"
#include "core/shell/PreviousInstance.h"
#include "core/shell/Screens.h"

int main(int argc, char** argv) {
    DesktopApplication application(argc, argv);
    DesktopApplication::setApplicationName("Brennoval");
    const SystemScheme scheme; // follows the desktop while the program runs
    PreviousInstance();
    registerAll();
    Screens::open("frmSplash");
    return DesktopApplication::exec();
}
