#include "sizing/frmResults.h"

#include "core/BrennovalMain.h"
#include "core/DisplayFields.h"
#include "core/FieldChecks.h"
#include "core/Gateway.h"
#include "core/SessionStore.h"
#include "core/TankLine.h"
#include "documents/Drawings.h"

using namespace UtilityFunctions;

frmResults::frmResults() : ResultScreen("frmResults") {
    setupUi(this);
    prepare();
    lblMsgFlag->hide();
    lblConsultFactory->hide();
    txtDrawing->hide();
    enlarges(imgDrawing, [this] { return txtDrawing->text(); });
    chkASMEFlag->setAttribute(Qt::WA_TransparentForMouseEvents); // it tells, it does not ask
    offersSubmittal(bttnPreview, bttnPrint);
    opens(bttnSpecs, "frmResultSpecs");
    opens(bttnUnitTagID, "frmUnitTagData");
    opens(bttnSchedule, "frmSchedule");
    on(bttnAddMore, ".tbToolbar", [this] { addMore("frmClassSelect"); });
    on(bttnRecalc, ".tbToolbar", [this] { leaveFor("frmJobConditions"); });
}

void frmResults::Load() {
    SetStatusText("View results");
    QString text;
    if (Session::TankID.read(text))
        ShowTankLine(text);
    ShowModel();
    if (Session::JobID.read(text))
        setWindowTitle("Results for Job: " + text);
    setProperty("helpContext", SetHelpContext());
}

void frmResults::ShowTankLine(const QString& tankID) {
    Connection connection = openDatabase("User");
    Recordset tank;
    tank.Open(TankQuery(tankID), connection);
    if (tank.AtEnd())
        return;
    txtQty->setText(tank["Qty"].text());
    txtModelNo->setText(tank["ModelNo"].text());
    txtRequiredAcceptance->setText(FormattedField(tank["RequiredAcceptance"], "#,##0 gal"));
    txtRequiredVolume->setText(FormattedField(tank["RequiredVolume"], "#,##0 gal"));
    txtTotSysFluid->setText(FormattedField(tank["TotSysVolume"], "#,##0 gal"));
    txtAtmPressure->setText(FormattedField(tank["AtmPressure"], "#,##0.0 psi"));
    txtSOPMin->setText(FormattedField(tank["SOPMin"], "#,##0 psi"));
    txtSOPMax->setText(FormattedField(tank["SOPMax"], "#,##0 psi"));
    txtSOTMin->setText(FormattedField(tank["SOTMin"], "#,##0°F"));
    txtSOTMax->setText(FormattedField(tank["SOTMax"], "#,##0°F"));
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
        txtWeight->setText(FormattedField(model["Shipweight"], "#,##0 lbs"));
        txtTankAcceptance->setText(FormattedField(model["AcceptanceVolume"], "#,##0 gal"));
        txtTankVolume->setText(FormattedField(model["TankVolume"], "#,## gal"));
        txtTankSysConn->setText(model["SysConnStd"].text());
        txtBladderType->setText((model["ASME"].boolean() ? "ASME " : "non-ASME ") + model["Bladder"].text());
        txtBladderType->setCursorPosition(0);
        drawing = model["TankDraw"].text();
        application = model["App"].text();
    }
    ShowTankDrawing(imgDrawing, txtDrawing, drawing);
    if (application == "HYD") {
        for (QWidget* hidden : std::initializer_list<QWidget*>{lblTemp, lblTempMin, lblTempMax, txtSOTMin,
                                                               txtSOTMax, lblFluidType, txtSysFluidType})
            hidden->hide();
        lblSysVolume->setText("Drawdown");
    }
}

void frmResults::Activate() {
    showResultCommands(true);
    SetStatusText("View results");
}

void frmResults::Deactivate() {
    showResultCommands(false);
}

bool frmResults::QueryUnload() {
    SetStatusBarText();
    return true;
}
