#include "setup/pages/frmHelp.h"

#include "core/base/Fault.h"
#include "core/base/Program.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Printer.h"
#include "setup/pages/PageViews.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>
#include <QScreen>

frmHelp::frmHelp() : PageScreen("frmHelp") {
    setupUi(this);
    prepare();
    view = newPageView(PagePlugin::Help, pageFrame);
    view->setObjectName("helpView");
    view->finished = [this](const QUrl& address, const QString& title) {
        topicShown = topicShown || address.scheme() == u"qthelp";
        setTitle(QCoreApplication::translate("frmHelp", "%1 Help")
                     .arg(title)); // the page titles also contain the program's name
    };
    const QRect space = screen()->availableGeometry();
    resize(sizeHint().boundedTo(space.size() * .9));
    move(space.center() - rect().center());
    on(bttnBack, ".bttnBack", [this] { view->back(); });
    on(bttnForward, ".bttnForward", [this] { view->forward(); });
    on(bttnHome, ".bttnHome", [this] { goTo("100"); });
    on(bttnZoomIn, ".bttnZoomIn", [this] { view->zoomBy(1); });
    on(bttnZoomOut, ".bttnZoomOut", [this] { view->zoomBy(-1); });
    on(bttnPrint, ".bttnPrint", [this] { print(PageView::Extent::Page); });
    on(bttnPrintAll, ".bttnPrintAll", [this] { print(PageView::Extent::All); });
    on(bttnExport, ".bttnExport", [this] { exportAll(); });
}

void frmHelp::Start() {
    raise(); // early, so that an error window ends up in front
    activateWindow();
    procedure(".Load", [this] {
        if (const QString file = Program::dataFolder() + "/Help/brennovalhelp.qch"; !QFileInfo::exists(file))
            throw Fault(Fault::FileNotFound, "File not found: " + file.toStdString());
        if (!view->knowsTopics()) // the plain control
            throw Fault(Fault::PathFileAccess, "The help plugin is missing or of another version.");
        goTo(StartingAddress);
        if (!topicShown)
            throw Fault(Fault::PathFileAccess, "The help file is damaged.");
    });
}

void frmHelp::goTo(const QString& topic) {
    QUrl address;
    address.setScheme("topic");
    address.setPath(topic);
    view->go(address);
}

void frmHelp::print(PageView::Extent extent) {
    const auto printer = newPrinter();
    printer->announce(windowTitle(), 0);
    if (!Dialogs::current().printer(*printer))
        return;
    const Hourglass hourglass;
    if (!view->print(printer->paper(), extent))
        throw Fault(Fault::Printer, "Printer error");
}

void frmHelp::exportAll() {
    const QString path = Dialogs::current().saveFile("PDF (*.pdf)", "Brennoval manual");
    if (path.isEmpty())
        return;
    const Hourglass hourglass;
    const QByteArray pdf = view->pdf();
    QSaveFile file(path);
    if (pdf.isEmpty() || !file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size() || !file.commit())
        throw Fault(Fault::PathFileAccess,
                    ("Path/File access error: " + path + ": " + file.errorString()).toStdString());
}
