#include "app/Register.h"
#include "core/base/Program.h"
#include "core/look/Fonts.h"
#include "core/look/SystemScheme.h"
#include "core/shell/DesktopApplication.h"
#include "core/shell/Dialogs.h"
#include "core/shell/PreviousInstance.h"
#include "core/shell/Screens.h"
#include "core/shell/Translations.h"
#include "core/store/SessionTask.h"

#include <QLocale>

#include <iostream>

int main(int /*argc*/, char** argv) {
    Program::ignoreRelativeFolders();
    int argumentCount = 1; // the command line is ignored, Qt's own options included
    DesktopApplication application(argumentCount, argv);
    DesktopApplication::setApplicationName("Brennoval");
    if (!Fonts::provide()) {
        constexpr int noFonts = 3;
        std::cerr
            << "brennoval: this computer has no font to show text with. Install one, such as Liberation "
               "Sans, and start again.\n";
        return noFonts;
    }
    DesktopApplication::setDesktopFileName("example.ordwick.brennoval");
    loadTranslations(Program::dataFolder() + "/Translations", QLocale());
    const SystemScheme scheme; // follows the desktop while the program runs
    previousInstance();
    registerAll();
    Screens::open("frmSplash");
    if (Fonts::areOwn())
        Dialogs::current().show(
            {QCoreApplication::translate("main",
                                         "This computer has no fonts. Brennoval uses one of its own, without "
                                         "the letters of many languages. Install fonts, such as Liberation "
                                         "and DejaVu, and start again."),
             "Brennoval"});
    const int result = DesktopApplication::exec();
    Session::storeTask(); // the next start picks it up
    return result;
}
