// A copy of the program that opens the getting-started screen, which takes over prior data, for the test that
// kills it along the way. Usage: brennoval-convert-once SESSION_FOLDER INSTALLER_FOLDER

#include "core/shell/DesktopApplication.h"
#include "core/shell/Screens.h"
#include "setup/InstallerFiles.h"
#include "tests/support/Driver.h"

#include <QSettings>

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const DesktopApplication application(argc, argv);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, argv[1]);
    QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, argv[1] + QString("/machine"));
    Driver::start();
    InstallerFiles::setInstallerFolder(argv[2]);
    Screens::open("frmFirstTime");
    Driver::stop();
    return 0;
}
