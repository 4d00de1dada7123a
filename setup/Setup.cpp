#include "setup/Setup.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "setup/frmAbout.h"
#include "setup/frmFirstTime.h"
#include "setup/frmUserInput.h"
#include "setup/frmValidateRep.h"
#include "setup/pages/HelpFolder.h"
#include "setup/pages/frmBrowser.h"
#include "setup/pages/frmDemo.h"
#include "setup/pages/frmHelp.h"

#include <QTimer>

void registerSetup() {
    Screens::add("frmAbout", [] { return new frmAbout; });
    Screens::add("frmBrowser", [] { return new frmBrowser; });
    Screens::add("frmDemo", [] { return new frmDemo; });
    Screens::add("frmHelp", [] { return new frmHelp; });
    Screens::add("frmFirstTime", [] { return new frmFirstTime; });
    Screens::add("frmUserInput", [] { return new frmUserInput; });
    Screens::add("frmValidateRep", [] { return new frmValidateRep; });
    QTimer::singleShot(0, removeLeftHelpFolders); // while the splash is showing
    Commands::set("mnuAboutSub", [] { Screens::open("frmAbout"); });
    Commands::set("mnuSetup", [] { Screens::open("frmUserInput"); });
}
