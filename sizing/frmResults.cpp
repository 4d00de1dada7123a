#include "sizing/frmResults.h"

#include "core/BrennovalMain.h"
#include "core/FieldChecks.h"
#include "core/Format.h"
#include "core/Gateway.h"
#include "core/SessionStore.h"
#include "documents/Drawings.h"

#include <QAction>
#include <QEvent>

using namespace UtilityFunctions;

namespace {

QString formatted(Recordset::Field field, const char* pattern) {
    return field.isNull() ? QString() : QString::fromStdString(Format(field.number(), pattern));
}

} // namespace

frmResults::frmResults() : Screen("frmResults") {
    setupUi(this);
    prepare();
    lblMsgFlag->hide();
    lblConsultFactory->hide();
    txtDrawing->hide();
    imgDrawing->installEventFilter(this);
    on(bttnAddMore, ".tbToolbar", [this] {
        Session::TankID.write("");
        Session::Mode.write("New");
        Leave("frmClassSelect");
    });
    on(bttnRecalc, ".tbToolbar", [this] { Leave("frmJobConditions"); });
}

bool frmResults::eventFilter(QObject* object, QEvent* event) {
    if (object == imgDrawing && event->type() == QEvent::MouseButtonRelease)
        trap(".imgDrawing", [this] { ShowLargeDrawing(txtDrawing->text()); });
    return Screen::eventFilter(object, event);
}

void frmResults::Load() {
    SetStatusText("View results");
    QString text;
    if (Session::TankID.read(text))
        ShowTankLine(text);
    ShowModel();
    if (Session::JobID.read(text) && parentWidget())
        parentWidget()->setWindowTitle("Results for Job: " + text);
    setProperty("helpContext", SetHelpContext());
}

void frmResults::ShowTankLine(const QString& tankID) {
    Connection connection = openDatabase("User");
    Recordset tank;
    tank.Open("SELECT * FROM tblJobData WHERE TankID = '" + SqlEscape(tankID) + "'", connection);
    if (tank.AtEnd())
        return;
    txtQty->setText(tank["Qty"].text());
    txtModelNo->setText(tank["ModelNo"].text());
    txtRequiredAcceptance->setText(formatted(tank["RequiredAcceptance"], "#,##0 gal"));
    txtRequiredVolume->setText(formatted(tank["RequiredVolume"], "#,##0 gal"));
    txtTotSysFluid->setText(formatted(tank["TotSysVolume"], "#,##0 gal"));
    txtAtmPressure->setText(formatted(tank["AtmPressure"], "#,##0.0 psi"));
    txtSOPMin->setText(formatted(tank["SOPMin"], "#,##0 psi"));
    txtSOPMax->setText(formatted(tank["SOPMax"], "#,##0 psi"));
    txtSOTMin->setText(formatted(tank["SOTMin"], "#,##0°F"));
    txtSOTMax->setText(formatted(tank["SOTMax"], "#,##0°F"));
    txtSysFluidType->setText(tank["SysFluidType"].text());
}

void frmResults::ShowModel() {
    Connection connection = openDatabase("Sys");
    Recordset model;
    model.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(txtModelNo->text()) + "'",
               connection);
    QString drawing;
    QString application;
    if (!model.AtEnd()) {
        chkASMEFlag->setChecked(model["ASME"].boolean());
        txtDiameter->setText(model["TankOD"].text());
        txtHeightBox->setText(model["OAL"].text());
        txtWeight->setText(formatted(model["Shipweight"], "#,##0 lbs"));
        txtTankAcceptance->setText(formatted(model["AcceptanceVolume"], "#,##0 gal"));
        txtTankVolume->setText(formatted(model["TankVolume"], "#,## gal"));
        txtTankSysConn->setText(model["SysConnStd"].text());
        txtBladderType->setText((model["ASME"].boolean() ? "ASME " : "non-ASME ") + model["Bladder"].text());
        txtBladderType->setCursorPosition(0);
        drawing = model["TankDraw"].text();
        application = model["App"].text();
    }
    QString path;
    const bool loaded = LoadDrawing(imgDrawing, imgDrawing->width(), imgDrawing->height(), drawing, path);
    if (loaded || !drawing.isEmpty()) {
        imgDrawing->setVisible(loaded);
        txtDrawing->setText(drawing);
        txtDrawing->setVisible(!loaded);
    }
    if (application == "HYD") {
        for (QWidget* hidden : std::initializer_list<QWidget*>{lblTemp, lblTempMin, lblTempMax, txtSOTMin,
                                                               txtSOTMax, lblFluidType, txtSysFluidType})
            hidden->hide();
        lblSysVolume->setText("Drawdown");
    }
}

void frmResults::Leave(const QString& nextScreen) {
    Tag = "1";
    Screens::unload(name());
    Screens::open(nextScreen);
}

void frmResults::Activate() {
    BrennovalMain::instance()->command("mnuSchedule")->setVisible(true);
    SetStatusText("View results");
}

void frmResults::Deactivate() {
    BrennovalMain::instance()->command("mnuSchedule")->setVisible(false);
}

bool frmResults::QueryUnload() {
    SetStatusBarText();
    return true;
}
