#include "documents/viewer/ReportOutput.h"
#include "documents/viewer/ReportFace.h"

#include "core/shell/Commands.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "documents/export/Export.h"
#include "documents/viewer/Written.h"
#include "documents/viewer/frmReportViewer.h"

#include <QCoreApplication>

namespace {

const QString viewerName = QStringLiteral("frmReportViewer");

frmReportViewer* viewer() {
    return static_cast<frmReportViewer*>(Screens::find(viewerName));
}

void exportDocument(const Export::Format& format) {
    frmReportViewer* source = viewer();
    if (!source || source->document().pages.isEmpty() || !source->makeWhole())
        return;
    const Document document = source->document(); // the screen may show another one meanwhile
    const QString path = Dialogs::current().saveFile(format.filter, proposedName(document));
    if (path.isEmpty())
        return Dialogs::current().beep();
    const Hourglass hourglass;
    if (writeFile(format, document, path))
        sayWritten(QCoreApplication::translate("ReportOutput", "Exported to %1"), path);
    else
        StatusBar::setStatusText(
            QCoreApplication::translate("ReportOutput", "Stopped: nothing has been exported"));
}

} // namespace

void showDocument(const Document& document) {
    if (!Screens::load(viewerName))
        return;
    viewer()->setDocument(document);
    Screens::show(viewerName);
}

void showDocument(std::unique_ptr<DocumentMaker> maker) {
    if (!Screens::load(viewerName))
        return;
    viewer()->setMaker(std::move(maker));
    Screens::show(viewerName);
}

void registerViewer() {
    readReportsToScreenReaders();
    Screens::add(viewerName, [] { return new frmReportViewer; });
    for (const Export::Format& format : Export::formats())
        Commands::set(format.command, [&format] { exportDocument(format); });
}
