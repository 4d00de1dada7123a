#include "documents/viewer/ReportOutput.h"
#include "documents/viewer/ReportFace.h"

#include "core/shell/Commands.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "documents/export/Export.h"
#include "documents/viewer/frmReportViewer.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>

namespace {

const QString viewerName = QStringLiteral("frmReportViewer");

frmReportViewer* viewer() {
    return static_cast<frmReportViewer*>(Screens::find(viewerName));
}

/// A file name that every system accepts.
QString plainName(QString name) {
    static const QRegularExpression refused(R"([/\\:*?"<>|\x00-\x1f]+)");
    constexpr int longest = 120;
    return name.replace(refused, "-").trimmed().left(longest);
}

void exportDocument(const Export::Format& format) {
    const frmReportViewer* source = viewer();
    if (!source || source->document().pages.isEmpty())
        return;
    const QString path = Dialogs::current().saveFile(format.filter, plainName(source->document().fileName));
    if (path.isEmpty())
        return Dialogs::current().beep();
    const Hourglass hourglass;
    Export::toFile(format, source->document(), path);
    StatusBar::setStatusText(
        QCoreApplication::translate("ReportOutput", "Exported to %1").arg(QDir::toNativeSeparators(path)));
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
