#include "sizing/frmResultsConvert.h"

#include "core/shell/FieldChecks.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "sizing/TankSizing.h"

using namespace Fields;
using namespace StatusBar;

frmResultsConvert::frmResultsConvert() : FinishedTankScreen("frmResultsConvert") {
    setupUi(this);
    prepare();
    shows({.model = txtModelNo,
           .picture = imgDrawing,
           .drawing = txtDrawing,
           .preview = bttnPreview,
           .print = bttnPrint,
           .specification = bttnSpecs,
           .calculation = bttnCalculation,
           .notes = lblNotes});
    opens(bttnOverview, "frmJobOverview");
    on(bttnAddMore, ".tbToolbar", [this] { addMore("frmConvertSteel"); });
    on(bttnRecalc, ".tbToolbar", [this] { leaveFor("frmConvertSteel"); });
}

void frmResultsConvert::Load() {
    FinishedTankScreen::Load();
    setProperty("helpContext", SetHelpContext());
}

void frmResultsConvert::showTankLine(const TankLine& tank) {
    showTexts({{txtQty, shownText(tank.qty)},
               {txtModelNo, shownText(tank.modelNo)},
               {txtRequiredAcceptance, shownText(tank.requiredAcceptance, "#,##0 gal")},
               {txtSteelTankVol, shownText(tank.totSysVolume, "#,##0 gal")}});
}

void frmResultsConvert::showModel(const Model& model) {
    showTexts({{txtDiameter, shownText(model.tankOD)},
               {txtHeightBox, shownText(model.oal)},
               {txtWeight, shownText(model.shipWeight, "#,##0 lbs")},
               {txtTankVolume, shownText(model.tankVolume, "#,## gal")},
               {txtTankSysConn, shownText(model.sysConnStd)}});
}

void frmResultsConvert::Activate() {
    enablePrinting(true);
    setStatusText("View results");
}

void frmResultsConvert::addFacts(SizingNotes::Facts& facts, const TankLine& tank) const {
    TankSizing::addSizes(facts, tank);
}
