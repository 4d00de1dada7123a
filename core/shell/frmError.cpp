#include "core/shell/frmError.h"

#include "core/shell/Screens.h"

#include <QApplication>

frmError::frmError() : Screen("frmError") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    on(cmdOK, ".cmdOK", [this] {
        if (Tag == "Splash") // the failure happened while the program started
            QApplication::exit(1);
        else
            Screens::unload(name());
    });
}

void frmError::setReport(const QString& report) {
    failed.clear();
    lblTechSupport->setPlainText(report);
}
