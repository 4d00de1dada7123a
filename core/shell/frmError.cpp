#include "core/shell/frmError.h"

#include "core/shell/Screens.h"
#include "core/shell/WebPages.h"

#include <QApplication>
#include <QWindow>

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

/// When the desktop has put its frame around the window, the title is above the display.
bool frmError::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate && geometry().topLeft() == QPoint(0, 0)) {
        const QMargins frame = windowHandle()->frameMargins();
        windowHandle()->setPosition(frame.left(), frame.top());
    }
    return Screen::event(event);
}

void frmError::setReport(const QString& newReport) {
    report = newReport;
    failed.clear();
    lblTechSupport->setPlainText(report);
}
