#include "shock/frmResultSHK.h"

#include "core/base/Fault.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "shock/ShockSizing.h"

#include <algorithm>

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
           .specification = bttnSpecs,
           .calculation = bttnCalculation,
           .notes = lblNotes});
    opens(bttnCompare, "frmCompare");
    opens(bttnUnitTagID, "frmUnitTagData");
    opens(bttnSchedule, "frmSchedule");
    opens(bttnOverview, "frmJobOverview");
    on(bttnAddMore, ".tbToolbar", [this] { addMore("frmClassSelect"); });
    on(bttnRecalc, ".tbToolbar", [this] { leaveFor("frmJobConditionsSHK"); });
}

void frmResultSHK::Load() {
    setTitle("Results for Job: " + Session::JobID.text());
    FinishedTankScreen::Load();
}

void frmResultSHK::showTankLine(const TankLine& tank) {
    showTexts({{Qty, shownText(tank.qty)},
               {ModelNo, shownText(tank.modelNo)},
               {WaterVelocity, shownText(tank.waterVelocity, "#,##0.0 ft/sec")},
               {KineticEnergy, shownText(tank.kineticEnergy, "#,##0.00 ft lbs/ft")},
               {TotalKineticEnergy, shownText(tank.totalKineticEnergy, "#,##0.00 ft lbs")},
               {RequiredVolume, shownText(tank.requiredVolume, "#,##0.0 gal")},
               {LeakLoad, shownText(tank.leakLoad, "#,##0.0%")},
               {PumpRunTime, shownText(tank.pumpRunTime, "#,##0.0 sec")},
               {PipeIndex, shownText(tank.pipeIndex)},
               {PipeLength, shownText(tank.pipeLength, "#,##0 ft")},
               {FlowRate, shownText(tank.flowRate, "#,##0 gpm")},
               {FlowPressure, shownText(tank.flowPressure, "#,##0 psi")},
               {StaticPressure, shownText(tank.staticPressure, "#,##0 psi")},
               {ShockPressure, shownText(tank.shockPressure, "#,##0 psi")}});
}

void frmResultSHK::showModel(const Model& model) {
    showTexts({{TankVolume, shownText(model.tankVolume, "#,##0 gal")},
               {Weight, shownText(model.shipWeight, "#,##0 lbs")},
               {txtTankSysConn, shownText(model.sysConnStd)}});
    Diameter->setText(shownText(model.tankOD, "#,##0 ") + u'"');
    HeightBox->setText(shownText(model.oal, "#,##0") + u'"');
    BladderType->setText(bladderType(model));
    BladderType->setCursorPosition(0);
}

void frmResultSHK::addFacts(SizingNotes::Facts& facts, const TankLine& tank) const {
    const ShockConditions conditions = ShockSizing::conditionsOf(tank);
    facts.requiredConnection = ShockSizing::requiredConnection(tank, conditions.bore);
    try {
        std::optional<std::string_view> objection;
        const ShockSizes sizes = ShockSizing::sizesOf(conditions, objection);
        facts.computedVolume = sizes.requiredVolume;
        facts.computedAcceptance = sizes.requiredAcceptance;
    } catch (const DatabaseFault&) {
        throw;
    } catch (const Fault&) { // nothing comes out of these conditions: their own notes tell why
    }
}

bool frmResultSHK::QueryUnload() {
    return Tag == "1" || FinishedTankScreen::QueryUnload();
}
