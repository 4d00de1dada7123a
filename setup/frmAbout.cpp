#include "setup/frmAbout.h"

#include "core/base/Program.h"
#include "core/look/Appearance.h"
#include "core/shell/Screens.h"
#include "core/store/SessionStore.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Program;
using namespace Registry;

namespace {

/// The command for the system's information tool; empty on a system without one.
QString informationTool() {
    const QString shared = "SOFTWARE\\Microsoft\\Shared Tools";
    QString tool;
    if (GetRegValue(HKeyLocalMachine(), shared + "\\MSINFO", "PATH", tool))
        return tool;
    if (GetRegValue(HKeyLocalMachine(), shared + " Location", "MSINFO", tool) &&
        QFileInfo::exists(tool += "\\MSINFO32.EXE"))
        return tool;
    return {};
}

} // namespace

frmAbout::frmAbout() : Screen("frmAbout") {
    setupUi(this);
    prepare();
    imgMark->setPixmap(Appearance::splashPicture(imgMark->minimumSize(), devicePixelRatioF()));
    lblVersion->setText("Version " + fullProgramVersion());
    lblBuild->setText(QCoreApplication::translate("frmAbout", "Build %1").arg(buildName()));
    lblSupport->setText(
        QCoreApplication::translate("frmAbout", "Technical support: %1").arg(BRENNOVAL_SUPPORT_PHONE));
    setDefault(cmdOK);
    on(cmdOK, ".cmdOK", [this] { Screens::unload(name()); });
    connect(cmdSysInfo, &QPushButton::clicked, this, [] { StartSysInfo(); });
}

void frmAbout::StartSysInfo() {
    const QString tool = informationTool();
    if (tool.isEmpty())
        Dialogs::current().show({.text = "System Information Is Unavailable At This Time",
                                 .title = "Brennoval",
                                 .icon = QMessageBox::Information});
    else
        Dialogs::current().startProgram('"' + tool + '"', SystemPrograms::Window::Normal);
}
