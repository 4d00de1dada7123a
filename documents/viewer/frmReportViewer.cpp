#include "documents/viewer/frmReportViewer.h"

#include "core/shell/BrennovalMain.h"
#include "core/shell/FieldChecks.h"
#include "documents/viewer/ReportOutput.h"

#include <QAction>

using namespace UtilityFunctions;

frmReportViewer::frmReportViewer() : Screen("frmReportViewer") {
    setupUi(this);
    prepare();
    on(bttnFirst, ".bttnFirst", [this] { ARViewer21->goTo(0); });
    on(bttnPrevious, ".bttnPrevious", [this] { ARViewer21->goTo(ARViewer21->currentPage() - 1); });
    on(bttnNext, ".bttnNext", [this] { ARViewer21->goTo(ARViewer21->currentPage() + 1); });
    on(bttnLast, ".bttnLast", [this] { ARViewer21->goTo(int(shownDocument.pages.size()) - 1); });
    constexpr double zoomStep = 1.25;
    on(bttnZoomIn, ".bttnZoomIn", [this] { ARViewer21->zoomBy(zoomStep); });
    on(bttnZoomOut, ".bttnZoomOut", [this] { ARViewer21->zoomBy(1 / zoomStep); });
    on(bttnPageWidth, ".bttnPageWidth", [this] { ARViewer21->setZoom(ReportView::Zoom::PageWidth); });
    on(bttnWholePage, ".bttnWholePage", [this] { ARViewer21->setZoom(ReportView::Zoom::WholePage); });
    on(bttnPrint, ".bttnPrint", [this] { PrintDocument(document()); });
    on(bttnFind, ".bttnFind", [this] { Find(); });
    connect(txtPage, &QLineEdit::returnPressed, this,
            [this] { ARViewer21->goTo(txtPage->text().toInt() - 1); });
    connect(txtFind, &QLineEdit::returnPressed, this, [this] { Find(); });
    ARViewer21->pageChanged = [this] { ShowPage(); };
}

void frmReportViewer::setDocument(const Document& shown) {
    shownDocument = shown;
    ARViewer21->setPages(shown.pages);
    ShowPage();
}

void frmReportViewer::ShowPage() {
    txtPage->setText(QString::number(shownDocument.pages.isEmpty() ? 0 : ARViewer21->currentPage() + 1));
    lblPages->setText(QString("of %1").arg(shownDocument.pages.size()));
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
    BrennovalMain::instance()->command("mnuExport")->setEnabled(true);
}

void frmReportViewer::Deactivate() {
    BrennovalMain::instance()->command("mnuExport")->setEnabled(false);
}

bool frmReportViewer::QueryUnload() {
    BrennovalMain::instance()->command("mnuExport")->setEnabled(false);
    SetStatusBarText();
    return true;
}
