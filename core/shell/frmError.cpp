#include "core/shell/frmError.h"

#include "core/shell/Screens.h"
#include "core/shell/WebPages.h"

#include <QApplication>

frmError::frmError() : Screen("frmError") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    on(cmdOK, ".cmdOK", [this] {
        if (Tag == "Splash") // the failure happened during the start
            QApplication::exit(1);
        else
            Screens::unload(name());
    });
    on(cmdTechSupport, ".cmdTechSupport", [this] {
        Dialogs::current().copy(report);
        WebPages::LaunchInternetExplorer("TechSupport");
    });
    on(cmdDemo, ".cmdDemo", [] { WebPages::openDemo("ErrorDemo.htm"); });
}

void frmError::setReport(const QString& newReport) {
    report = newReport;
    failed.clear();
    lblTechSupport->setPlainText(report);
}
