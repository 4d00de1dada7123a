#include "shock/frmResultSHK.h"

#include "core/BrennovalMain.h"
#include "core/DisplayFields.h"
#include "core/FieldChecks.h"
#include "core/Gateway.h"
#include "core/SessionStore.h"
#include "core/TankLine.h"
#include "documents/Drawings.h"

using namespace UtilityFunctions;

frmResultSHK::frmResultSHK() : ResultScreen("frmResultSHK") {
    setupUi(this);
    prepare();
    // These two never show here, unlike on the results of the other tanks.
    lblMsgFlag->hide();
    lblConsultFactory->hide();
    txtDrawing->hide();
    enlarges(imgDrawing, [this] { return txtDrawing->text(); });
    offersSubmittal(bttnPreview, bttnPrint);
    opens(bttnSpecs, "frmResultSpecs");
    opens(bttnUnitTagID, "frmUnitTagData");
    opens(bttnSchedule, "frmSchedule");
    on(bttnAddMore, ".tbToolbar", [this] { addMore("frmClassSelect"); });
    on(bttnRecalc, ".tbToolbar", [this] { leaveFor("frmJobConditionsSHK"); });
}

void frmResultSHK::Load() {
    SetStatusText("View results");
    setWindowTitle("Results for Job: " + Session::JobID.text());
    QString tankID;
    if (Session::TankID.read(tankID))
        ShowTankLine(tankID);
    ShowModel();
}

void frmResultSHK::ShowTankLine(const QString& tankID) {
    Connection connection = openDatabase("User");
    Recordset tank;
    tank.Open(TankQuery(tankID), connection);
    if (tank.AtEnd())
        return;
    Qty->setText(tank["Qty"].text());
    ModelNo->setText(tank["ModelNo"].text());
    WaterVelocity->setText(FormattedField(tank["WaterVelocity"], "#,##0.0 ft/sec"));
    KineticEnergy->setText(FormattedField(tank["KineticEnergy"], "#,##0.00 ft lbs/ft"));
    TotalKineticEnergy->setText(FormattedField(tank["TotalKineticEnergy"], "#,##0.00 ft lbs"));
    RequiredVolume->setText(FormattedField(tank["RequiredVolume"], "#,##0.0 gal"));
    LeakLoad->setText(FormattedField(tank["LeakLoad"], "#,##0.0%"));
    PumpRunTime->setText(FormattedField(tank["PumpRunTime"], "#,##0.0 sec"));
    PipeIndex->setText(tank["PipeIndex"].text());
    PipeLength->setText(FormattedField(tank["PipeLength"], "#,##0 ft"));
    FlowRate->setText(FormattedField(tank["FlowRate"], "#,##0 gpm"));
    FlowPressure->setText(FormattedField(tank["FlowPressure"], "#,##0 psi"));
    StaticPressure->setText(FormattedField(tank["StaticPressure"], "#,##0 psi"));
    ShockPressure->setText(FormattedField(tank["ShockPressure"], "#,##0 psi"));
}

void frmResultSHK::ShowModel() {
    Connection connection = openDatabase("Sys");
    Recordset model;
    model.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(ModelNo->text()) + "'",
               connection);
    QString drawing;
    if (!model.AtEnd()) {
        TankVolume->setText(FormattedField(model["TankVolume"], "#,##0 gal"));
        Diameter->setText(FormattedField(model["TankOD"], "#,##0 ") + u'"');
        HeightBox->setText(FormattedField(model["OAL"], "#,##0") + u'"');
        Weight->setText(FormattedField(model["ShipWeight"], "#,##0 lbs"));
        txtTankSysConn->setText(model["SysConnStd"].text());
        BladderType->setText((model["ASME"].boolean() ? "ASME " : "non-ASME ") + model["Bladder"].text());
        BladderType->setCursorPosition(0);
        drawing = model["TankDraw"].text();
    }
    ShowTankDrawing(imgDrawing, txtDrawing, drawing);
}

void frmResultSHK::Activate() {
    showResultCommands(true);
    SetStatusText("View results");
}

void frmResultSHK::Deactivate() {
    showResultCommands(false);
}

bool frmResultSHK::QueryUnload() {
    if (Tag != "1")
        SetStatusBarText();
    return true;
}
