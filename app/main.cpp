#include "app/Register.h"
#include "core/look/Appearance.h"
#include "core/shell/DesktopApplication.h"
#include "core/shell/PreviousInstance.h"
#include "core/shell/Screens.h"

int main(int argc, char** argv) {
    DesktopApplication application(argc, argv);
    DesktopApplication::setApplicationName("Brennoval");
    Appearance::apply(Appearance::systemScheme());
    PreviousInstance();
    registerAll();
    Screens::open("frmSplash");
    return DesktopApplication::exec();
}
