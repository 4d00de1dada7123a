#include "shock/frmResultSHK.h"

#include "core/shell/Status.h"
#include "core/store/SessionStore.h"

using namespace UtilityFunctions;

frmResultSHK::frmResultSHK() : FinishedTankScreen("frmResultSHK") {
    setupUi(this);
    prepare();
    // These two never show here, unlike on the results of the other tanks.
    lblMsgFlag->hide();
    lblConsultFactory->hide();
    shows({.model = ModelNo,
           .picture = imgDrawing,
           .drawing = txtDrawing,
           .preview = bttnPreview,
           .print = bttnPrint,
           .specification = bttnSpecs});
    opens(bttnUnitTagID, "frmUnitTagData");
    opens(bttnSchedule, "frmSchedule");
    on(bttnAddMore, ".tbToolbar", [this] { addMore("frmClassSelect"); });
    on(bttnRecalc, ".tbToolbar", [this] { leaveFor("frmJobConditionsSHK"); });
}

void frmResultSHK::Load() {
    setTitle("Results for Job: " + Session::JobID.text());
    FinishedTankScreen::Load();
}

void frmResultSHK::ShowTankLine(Recordset& tank) {
    ShowFields(tank, {{Qty, "Qty"},
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

void frmResultSHK::ShowModel(Recordset& model) {
    ShowFields(model, {{TankVolume, "TankVolume", "#,##0 gal"},
                       {Weight, "ShipWeight", "#,##0 lbs"},
                       {txtTankSysConn, "SysConnStd"}});
    Diameter->setText(FormattedField(model["TankOD"], "#,##0 ") + u'"');
    HeightBox->setText(FormattedField(model["OAL"], "#,##0") + u'"');
    BladderType->setText(bladderType(model));
    BladderType->setCursorPosition(0);
}

bool frmResultSHK::QueryUnload() {
    return Tag == "1" || FinishedTankScreen::QueryUnload();
}
