#include "documents/viewer/ReportOutput.h"
#include "documents/viewer/ReportFace.h"

#include "core/shell/Commands.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Screens.h"
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
    const frmReportViewer* source = viewer();
    if (!source || source->document().pages.isEmpty())
        return;
    const QString path = Dialogs::current().saveFile(format.filter, proposedName(source->document()));
    if (path.isEmpty())
        return Dialogs::current().beep();
    const Hourglass hourglass;
    Export::toFile(format, source->document(), path);
    sayWritten(QCoreApplication::translate("ReportOutput", "Exported to %1"), path);
}

} // namespace

void showDocument(const Document& document) {
    if (!Screens::load(viewerName))
        return;
    viewer()->setDocument(document);
    Screens::show(viewerName);
}

void registerViewer() {
    readReportsToScreenReaders();
    Screens::add(viewerName, [] { return new frmReportViewer; });
    for (const Export::Format& format : Export::formats())
        Commands::set(format.command, [&format] { exportDocument(format); });
}
