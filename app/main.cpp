#include "app/Install.h"
#include "core/look/Appearance.h"
#include "core/shell/Application.h"
#include "core/shell/ErrorReport.h"
#include "core/shell/Screens.h"

int main(int argc, char** argv) {
    Application application(argc, argv);
    Application::setApplicationName("Brennoval");
    Appearance::apply(Appearance::systemScheme());
    UtilityFunctions::PreviousInstance();
    registerAll();
    Screens::open("frmSplash");
    return Application::exec();
}
