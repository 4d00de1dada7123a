#include "sizing/frmResultsConvert.h"

#include "core/shell/DisplayFields.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Status.h"
#include "core/store/Gateway.h"
#include "core/store/SqlText.h"
#include "documents/Drawings.h"

using namespace UtilityFunctions;

frmResultsConvert::frmResultsConvert() : ResultScreen("frmResultsConvert") {
    setupUi(this);
    prepare();
    txtDrawing->hide();
    enlarges(imgDrawing, [this] { return txtDrawing->text(); });
    offersSubmittal(bttnPreview, bttnPrint);
    opens(bttnSpecs, "frmResultSpecs");
    on(bttnAddMore, ".tbToolbar", [this] { addMore("frmConvertSteel"); });
    on(bttnRecalc, ".tbToolbar", [this] { leaveFor("frmConvertSteel"); });
}

void frmResultsConvert::Load() {
    SetStatusText("View results");
    ShowTankLine();
    ShowModel();
    setProperty("helpContext", SetHelpContext());
}

void frmResultsConvert::ShowTankLine() {
    showTankLine({{txtQty, "Qty"},
                  {txtModelNo, "ModelNo"},
                  {txtRequiredAcceptance, "RequiredAcceptance", "#,##0 gal"},
                  {txtSteelTankVol, "TotSysVolume", "#,##0 gal"}});
}

void frmResultsConvert::ShowModel() {
    Connection connection = openDatabase("Sys");
    Recordset model;
    model.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(txtModelNo->text()) + "'",
               connection);
    QString drawing;
    if (!model.AtEnd()) {
        ShowFields(model, {{txtDiameter, "TankOD"},
                           {txtHeightBox, "OAL"},
                           {txtWeight, "Shipweight", "#,##0 lbs"},
                           {txtTankVolume, "TankVolume", "#,## gal"},
                           {txtTankSysConn, "SysConnStd"}});
        drawing = model["TankDraw"].text();
    }
    ShowTankDrawing(imgDrawing, txtDrawing, drawing);
}

void frmResultsConvert::Activate() { // and nothing switches them off when it is left; that is meant
    enablePrinting(true);
    SetStatusText("View results");
}

bool frmResultsConvert::QueryUnload() {
    SetStatusBarText();
    return true;
}
