#include "core/shell/frmDatabasePath.h"

#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"

#include <QApplication>

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
        if (!txtPath->text().isEmpty())
            storePath();
        Screens::unload(name());
    });
    onCancel(CancelButton, ".CancelButton", [] { QApplication::exit(0); });
}

void frmDatabasePath::storePath() {
    const QString folder = txtPath->text().remove("BrennovalUserData.mdb");
    createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    SetValueEx({HKeyCurrentUser(), AppRegistryKey()}, DatabaseDirectoryValue(), RegistryType::Text, folder);
}

bool frmDatabasePath::QueryUnload() {
    SetStatusBarText();
    return true;
}
