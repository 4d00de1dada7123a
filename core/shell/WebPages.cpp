#include "core/shell/WebPages.h"

#include "core/base/Fault.h"
#include "core/base/Program.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Screens.h"
#include "core/store/SessionStore.h"

#include <QUrl>

using namespace Program;
using namespace Registry;

namespace WebPages {

namespace {

/// The command that the system has registered for its browser.
QString registeredBrowser() {
    QString command;
    GetRegValue(HKeyLocalMachine(),
                QStringLiteral("SOFTWARE\\Classes\\Applications\\iexplore.exe\\shell\\open\\command"),
                QStringLiteral("Default"), command);
    return command;
}

} // namespace

void openPage(const QString& screen, const QString& address) {
    auto* shown = dynamic_cast<PageScreen*>(Screens::load(screen));
    if (!shown)
        return;
    shown->StartingAddress = address;
    Screens::show(screen);
    try {
        shown->Start();
    } catch (...) { // leave no empty window behind the error
        Screens::unload(screen);
        throw;
    }
}

QString homePage() {
    return QStringLiteral(BRENNOVAL_WEB_HOST);
}

void LaunchInternetExplorer(const QString& page) {
    underName("LaunchInternetExplorer", [&] {
        const QString address = page == "TechSupport" ? homePage() + "/brennovalsupport.htm" : homePage();
        if (const QString command = registeredBrowser(); !command.isEmpty()) {
            if (!Dialogs::current().startProgram(QString(command).replace("%1", address),
                                                 SystemPrograms::Window::Maximised))
                throw Fault(Fault::FileNotFound, "File not found: " + command.toStdString());
        } else if (!Dialogs::current().openInBrowser(QUrl(address))) {
            openPage("frmBrowser", address);
        }
    });
}

void openDemo(const QString& page) {
    openPage("frmDemo", dataFolder() + "/Demo/" + page);
}

} // namespace WebPages
