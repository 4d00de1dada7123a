// A copy of the program that saves job after job through its screens and reports each save that has returned,
// for the tests that kill it. Usage: brennoval-save-loop SESSION_FOLDER PREFIX COUNT

#include "core/shell/DesktopApplication.h"
#include "core/shell/Screens.h"
#include "tests/support/Driver.h"

#include <QSettings>

#include <cstdio>

namespace {

void tell(const QString& what) {
    std::puts(what.toUtf8().constData());
    std::fflush(stdout);
}

void saveJob(const QString& job) {
    Driver::command("mnuNewJob");
    Driver::enter("frmJobHeader", "txtJobID", job);
    Driver::press("frmJobHeader", "cmdNext");
    if (Driver::isOpen("frmClassSelect"))
        tell("header " + job);
    Driver::press("frmClassSelect", "cmdEXP");
    Driver::enterConditions();
    Driver::press("frmJobConditions", "cmdNext");
    if (Driver::isOpen("frmTankSeries"))
        tell("tank " + job + ".1");
    Driver::press("frmTankSeries", "OptRCB");
    Driver::press("frmTankSeries", "cmdNext");
    Driver::press("frmtankselection", "cmdNext");
    if (Driver::isOpen("frmResults"))
        tell("model " + job + ".1");
    Screens::unload("frmResults");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const DesktopApplication application(argc, argv);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, argv[1]);
    QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, argv[1] + QString("/machine"));
    Driver::start();
    const int count = QString(argv[3]).toInt();
    for (int i = 0; i < count; ++i)
        saveJob(QString("%1%2").arg(argv[2]).arg(i));
    Driver::stop();
    return 0;
}
