#include "sizing/frmResultsConvert.h"

#include "core/shell/FieldChecks.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"

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
           .specification = bttnSpecs});
    on(bttnAddMore, ".tbToolbar", [this] { addMore("frmConvertSteel"); });
    on(bttnRecalc, ".tbToolbar", [this] { leaveFor("frmConvertSteel"); });
}

void frmResultsConvert::Load() {
    FinishedTankScreen::Load();
    setProperty("helpContext", SetHelpContext());
}

void frmResultsConvert::ShowTankLine(const TankLine& tank) {
    ShowTexts({{txtQty, Shown(tank.qty)},
               {txtModelNo, Shown(tank.modelNo)},
               {txtRequiredAcceptance, Shown(tank.requiredAcceptance, "#,##0 gal")},
               {txtSteelTankVol, Shown(tank.totSysVolume, "#,##0 gal")}});
}

void frmResultsConvert::ShowModel(const Model& model) {
    ShowTexts({{txtDiameter, Shown(model.tankOD)},
               {txtHeightBox, Shown(model.oal)},
               {txtWeight, Shown(model.shipWeight, "#,##0 lbs")},
               {txtTankVolume, Shown(model.tankVolume, "#,## gal")},
               {txtTankSysConn, Shown(model.sysConnStd)}});
}

void frmResultsConvert::Activate() {
    enablePrinting(true);
    SetStatusText("View results");
}
