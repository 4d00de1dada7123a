#include "shock/frmResultSHK.h"

#include "core/shell/DisplayFields.h"
#include "core/shell/Status.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqlText.h"
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
    setTitle("Results for Job: " + Session::JobID.text());
    ShowTankLine();
    ShowModel();
}

void frmResultSHK::ShowTankLine() {
    showTankLine({{Qty, "Qty"},
                  {ModelNo, "ModelNo"},
                  {WaterVelocity, "WaterVelocity", "#,##0.0 ft/sec"},
                  {KineticEnergy, "KineticEnergy", "#,##0.00 ft lbs/ft"},
                  {TotalKineticEnergy, "TotalKineticEnergy", "#,##0.00 ft lbs"},
                  {RequiredVolume, "RequiredVolume", "#,##0.0 gal"},
                  {LeakLoad, "LeakLoad", "#,##0.0%"},
                  {PumpRunTime, "PumpRunTime", "#,##0.0 sec"},
                  {PipeIndex, "PipeIndex"},
                  {PipeLength, "PipeLength", "#,##0 ft"},
                  {FlowRate, "FlowRate", "#,##0 gpm"},
                  {FlowPressure, "FlowPressure", "#,##0 psi"},
                  {StaticPressure, "StaticPressure", "#,##0 psi"},
                  {ShockPressure, "ShockPressure", "#,##0 psi"}});
}

void frmResultSHK::ShowModel() {
    Connection connection = openDatabase("Sys");
    Recordset model;
    model.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(ModelNo->text()) + "'",
               connection);
    QString drawing;
    if (!model.AtEnd()) {
        ShowFields(model, {{TankVolume, "TankVolume", "#,##0 gal"},
                           {Weight, "ShipWeight", "#,##0 lbs"},
                           {txtTankSysConn, "SysConnStd"}});
        Diameter->setText(FormattedField(model["TankOD"], "#,##0 ") + u'"');
        HeightBox->setText(FormattedField(model["OAL"], "#,##0") + u'"');
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
