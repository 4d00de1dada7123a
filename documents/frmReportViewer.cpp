#include "documents/frmReportViewer.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "documents/Submittals.h"
#include "documents/export/Export.h"
#include "documents/report/PagePainter.h"

#include <QAction>
#include <QPainter>
#include <QPrinter>

using namespace UtilityFunctions;

namespace {

const QString viewerName = QStringLiteral("frmReportViewer");

frmReportViewer* viewer() {
    return static_cast<frmReportViewer*>(Screens::find(viewerName));
}

/// The name of the screen in front, when Print or Preview knows it.
QString activeScreen(const QStringList& known) {
    const QString name = Screens::active();
    return known.contains(name) ? name : QString();
}

void print() {
    const QString name = activeScreen({viewerName, "frmResults", "frmResultSHK", "frmPKGSelect"});
    if (!name.isEmpty()) // over the viewer it ends in the beep; the viewer has a print button of its own
        PrintSubmittal(name);
}

void preview() {
    const QString name = activeScreen({"frmResults", "frmResultSHK", "frmPKGSelect"});
    if (!name.isEmpty())
        PreviewSubmittal(name);
}

void exportPages(Export::Format format, const QString& filter) {
    const frmReportViewer* source = viewer();
    if (!source || source->pages().isEmpty())
        return;
    const QString path = Dialogs::current().saveFile(filter);
    if (path.isEmpty())
        return Dialogs::current().beep();
    Export::toFile(format, source->pages(), source->reportTitle(), path);
}

} // namespace

frmReportViewer::frmReportViewer() : Screen(viewerName) {
    setupUi(this);
    prepare();
    on(bttnFirst, ".bttnFirst", [this] { ARViewer21->goTo(0); });
    on(bttnPrevious, ".bttnPrevious", [this] { ARViewer21->goTo(ARViewer21->currentPage() - 1); });
    on(bttnNext, ".bttnNext", [this] { ARViewer21->goTo(ARViewer21->currentPage() + 1); });
    on(bttnLast, ".bttnLast", [this] { ARViewer21->goTo(int(pages().size()) - 1); });
    constexpr double zoomStep = 1.25;
    on(bttnZoomIn, ".bttnZoomIn", [this] { ARViewer21->zoomBy(zoomStep); });
    on(bttnZoomOut, ".bttnZoomOut", [this] { ARViewer21->zoomBy(1 / zoomStep); });
    on(bttnPageWidth, ".bttnPageWidth", [this] { ARViewer21->setZoom(ReportView::Zoom::PageWidth); });
    on(bttnWholePage, ".bttnWholePage", [this] { ARViewer21->setZoom(ReportView::Zoom::WholePage); });
    on(bttnPrint, ".bttnPrint", [this] { PrintPages(pages(), title); });
    on(bttnFind, ".bttnFind", [this] { Find(); });
    connect(txtPage, &QLineEdit::returnPressed, this,
            [this] { ARViewer21->goTo(txtPage->text().toInt() - 1); });
    connect(txtFind, &QLineEdit::returnPressed, this, [this] { Find(); });
    ARViewer21->pageChanged = [this] { ShowPage(); };
}

void frmReportViewer::setReport(const Pages& pages, const QString& reportTitle) {
    title = reportTitle;
    ARViewer21->setPages(pages);
    ShowPage();
}

void frmReportViewer::ShowPage() {
    txtPage->setText(QString::number(pages().isEmpty() ? 0 : ARViewer21->currentPage() + 1));
    lblPages->setText(QString("of %1").arg(pages().size()));
}

void frmReportViewer::Find() {
    if (!ARViewer21->find(txtFind->text()))
        Dialogs::current().beep();
}

void frmReportViewer::Load() {
    SetStatusText("Brennoval Report Viewer");
}

void frmReportViewer::Activate() {
    SetStatusText("Brennoval Report Viewer");
    Commands::setEnabled("mnuExport", true);
}

void frmReportViewer::Deactivate() {
    Commands::setEnabled("mnuExport", false);
}

bool frmReportViewer::QueryUnload() {
    Commands::setEnabled("mnuExport", false);
    SetStatusBarText();
    return true;
}

void ShowPages(const Pages& pages, const QString& title) {
    if (!Screens::load(viewerName))
        return;
    viewer()->setReport(pages, title);
    Screens::show(viewerName);
}

void PrintPages(const Pages& pages, const QString& title) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    printer.setPageSize(QPageSize(QPageSize::Letter));
    printer.setFullPage(true);
    if (pages.isEmpty() || !Dialogs::current().printer(printer))
        return;
    QPainter painter(&printer);
    for (qsizetype i = 0; i < pages.size(); ++i) {
        if (i > 0)
            printer.newPage();
        painter.save();
        painter.scale(printer.logicalDpiX() / 72.0, printer.logicalDpiY() / 72.0);
        PaintPage(painter, pages[i]);
        painter.restore();
    }
}

void registerReportCommands() {
    Commands::set("mnuPrint", print);
    Commands::set("mnuPrintPreview", preview);
    const struct {
        const char* command;
        Export::Format format;
        const char* filter;
    } exports[] = {{"mnuExportPDF", Export::Format::Pdf, "PDF (*.pdf)"},
                   {"mnuExportTIFF", Export::Format::Tiff, "Tiff (*.tif)"},
                   {"mnuExportHTML", Export::Format::Html, "HTML (*.htm)"},
                   {"mnuExportExcel", Export::Format::Excel, "Excel (*.xls)"},
                   {"mnuExportRTF", Export::Format::Rtf, "RTF (*.rtf)"},
                   {"mnuExportText", Export::Format::Text, "Text Files (*.txt)"}};
    for (const auto& one : exports)
        Commands::set(one.command, [one] { exportPages(one.format, one.filter); });
}
