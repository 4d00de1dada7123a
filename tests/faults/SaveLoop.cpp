// A copy of the program that saves job after job through its screens and tells each save that has returned,
// for the tests that kill it. Usage: brennoval-save-loop SESSION_FOLDER PREFIX COUNT

#include "core/shell/Application.h"
#include "tests/faults/Program.h"

#include <QSettings>

#include <cstdio>

namespace {

void tell(const QString& what) {
    std::puts(what.toUtf8().constData());
    std::fflush(stdout);
}

void saveJob(const QString& job) {
    Program::command("mnuNewJob");
    Program::enter("frmJobHeader", "txtJobID", job);
    Program::press("frmJobHeader", "cmdNext");
    if (Program::isOpen("frmClassSelect"))
        tell("header " + job);
    Program::press("frmClassSelect", "cmdEXP");
    Program::enterConditions();
    Program::press("frmJobConditions", "cmdNext");
    if (Program::isOpen("frmTankSeries"))
        tell("tank " + job + ".1");
    Program::press("frmTankSeries", "OptRCB");
    Program::press("frmTankSeries", "cmdNext");
    Program::press("frmtankselection", "cmdNext");
    if (Program::isOpen("frmResults"))
        tell("model " + job + ".1");
    Screens::unload("frmResults");
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, argv[1]);
    QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, argv[1] + QString("/machine"));
    Program::start();
    const int count = QString(argv[3]).toInt();
    for (int i = 0; i < count; ++i)
        saveJob(QString("%1%2").arg(argv[2]).arg(i));
    Program::stop();
    return 0;
}
