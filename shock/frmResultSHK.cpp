#include "shock/frmResultSHK.h"

#include "core/shell/Status.h"
#include "core/store/SessionStore.h"

frmResultSHK::frmResultSHK() : FinishedTankScreen("frmResultSHK") {
    setupUi(this);
    prepare();
    // Unlike on the results of the other tanks, these two are never shown here.
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

void frmResultSHK::ShowTankLine(const TankLine& tank) {
    ShowTexts({{Qty, Shown(tank.qty)},
               {ModelNo, Shown(tank.modelNo)},
               {WaterVelocity, Shown(tank.waterVelocity, "#,##0.0 ft/sec")},
               {KineticEnergy, Shown(tank.kineticEnergy, "#,##0.00 ft lbs/ft")},
               {TotalKineticEnergy, Shown(tank.totalKineticEnergy, "#,##0.00 ft lbs")},
               {RequiredVolume, Shown(tank.requiredVolume, "#,##0.0 gal")},
               {LeakLoad, Shown(tank.leakLoad, "#,##0.0%")},
               {PumpRunTime, Shown(tank.pumpRunTime, "#,##0.0 sec")},
               {PipeIndex, Shown(tank.pipeIndex)},
               {PipeLength, Shown(tank.pipeLength, "#,##0 ft")},
               {FlowRate, Shown(tank.flowRate, "#,##0 gpm")},
               {FlowPressure, Shown(tank.flowPressure, "#,##0 psi")},
               {StaticPressure, Shown(tank.staticPressure, "#,##0 psi")},
               {ShockPressure, Shown(tank.shockPressure, "#,##0 psi")}});
}

void frmResultSHK::ShowModel(const Model& model) {
    ShowTexts({{TankVolume, Shown(model.tankVolume, "#,##0 gal")},
               {Weight, Shown(model.shipWeight, "#,##0 lbs")},
               {txtTankSysConn, Shown(model.sysConnStd)}});
    Diameter->setText(Shown(model.tankOD, "#,##0 ") + u'"');
    HeightBox->setText(Shown(model.oal, "#,##0") + u'"');
    BladderType->setText(bladderType(model));
    BladderType->setCursorPosition(0);
}

bool frmResultSHK::QueryUnload() {
    return Tag == "1" || FinishedTankScreen::QueryUnload();
}
