#include "app/Register.h"
#include "core/base/Program.h"
#include "core/look/SystemScheme.h"
#include "core/shell/DesktopApplication.h"
#include "core/shell/PreviousInstance.h"
#include "core/shell/Screens.h"
#include "core/shell/Translations.h"
#include "core/store/SessionTask.h"

#include <QFontMetrics>
#include <QLocale>

#include <iostream>

namespace {

/// A start without fonts would show windows full of empty boxes. Qt lists families even then, but none that
/// has a letter.
bool canShowText() {
    return QFontMetrics(QFont()).inFont(u'A');
}

} // namespace

int main(int /*argc*/, char** argv) {
    Program::ignoreRelativeFolders();
    int argumentCount = 1; // the command line is ignored, Qt's own options included
    DesktopApplication application(argumentCount, argv);
    DesktopApplication::setApplicationName("Brennoval");
    if (!canShowText()) {
        constexpr int noFonts = 3;
        std::cerr
            << "brennoval: this computer has no font to show text with. Install one, such as Liberation "
               "Sans, and start again.\n";
        return noFonts;
    }
    DesktopApplication::setDesktopFileName("example.ordwick.brennoval");
    loadTranslations(Program::programFolder() + "/Translations", QLocale());
    const SystemScheme scheme; // follows the desktop while the program runs
    previousInstance();
    registerAll();
    Screens::open("frmSplash");
    const int result = DesktopApplication::exec();
    Session::storeTask(); // the next start picks it up
    return result;
}
