#include "core/shell/frmDatabasePath.h"

#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/shell/frmSplash.h"
#include "core/store/SessionStore.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QStandardPaths>

using namespace Registry;
using namespace StatusBar;

frmDatabasePath::frmDatabasePath() : Screen("frmDatabasePath") {
    setupUi(this);
    prepare();
    setDefault(OKButton);
    on(cmdOpen, ".cmdOpen", [this] {
        const QString file = Dialogs::current().openFile("MDB Files (*.mdb)", "BrennovalUserData.mdb");
        if (!file.isEmpty())
            txtPath->setText(file);
    });
    on(OKButton, ".OKButton", [this] {
        const bool shown = !txtPath->text().isEmpty();
        if (shown && !storePath())
            return;
        if (auto* splash = dynamic_cast<frmSplash*>(Screens::find("frmSplash")); splash && shown)
            splash->goOnAfterRefusal();
        Screens::unload(name());
    });
    onCancel(CancelButton, ".CancelButton", [] { QApplication::exit(0); });
}

/// Says what was tried, so that a folder that has moved need not be typed again.
void frmDatabasePath::Load() {
    QString folder;
    GetRegValue(HKeyCurrentUser(), AppRegistryKey(), DatabaseDirectoryValue(), folder);
    txtPath->setText(folder);
    QStringList reasons;
    if (!folder.isEmpty())
        reasons << QCoreApplication::translate("frmDatabasePath", "The data could not be opened in: %1")
                       .arg(folder);
    const QString install = qEnvironmentVariable("BRENNOVAL_INSTALL_FAILURE").remove("brennoval-install: ");
    const QString home = QDir::homePath();
    if (!install.isEmpty() || (folder.isEmpty() && !QFileInfo(home).isWritable()))
        reasons << QCoreApplication::translate(
                       "frmDatabasePath",
                       "Your data could not be prepared: your home folder cannot be written, or there is no "
                       "room in it. Put that right, then start again.\n%1")
                       .arg(install.isEmpty() ? home : install);
    else if (folder.isEmpty())
        reasons << QCoreApplication::translate(
            "frmDatabasePath",
            "No folder for your data is known on this computer yet. Enter the one they are "
            "in, or start Brennoval from the menu, which prepares one.");
    lblFailed->setText(reasons.join(u'\n'));
    lblFailed->setVisible(!reasons.isEmpty());
}

/// False if it could not be stored, which the user has been told.
bool frmDatabasePath::storePath() {
    const QString folder = txtPath->text().remove("BrennovalUserData.mdb");
    createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    if (SetValueEx({HKeyCurrentUser(), AppRegistryKey()}, DatabaseDirectoryValue(), RegistryType::Text,
                   folder) == 0)
        return true;
    Dialogs::current().show(
        {QCoreApplication::translate("frmDatabasePath",
                                     "The folder cannot be noted down, because your settings cannot be "
                                     "written in:\n%1\nAsk for the right to write there, then press OK "
                                     "once more.")
             .arg(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)),
         "Brennoval"});
    return false;
}

void frmDatabasePath::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        CancelButton->click();
    else
        Screen::keyPressEvent(event);
}

/// The splash takes the keys again, which try once more or exit.
bool frmDatabasePath::QueryUnload() {
    if (Screen* splash = Screens::find("frmSplash")) {
        splash->activateWindow();
        splash->setFocus();
    }
    SetStatusBarText();
    return true;
}
