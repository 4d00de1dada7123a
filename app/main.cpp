#include "app/Install.h"
#include "core/Appearance.h"
#include "core/Application.h"
#include "core/ErrorReport.h"
#include "core/Screens.h"

int main(int argc, char** argv) {
    Application application(argc, argv);
    Application::setApplicationName("Brennoval");
    Appearance::apply(Appearance::systemScheme());
    UtilityFunctions::PreviousInstance();
    registerAll();
    Screens::open("frmSplash");
    return Application::exec();
}
