#include "sizing/frmResultsConvert.h"

#include "core/BrennovalMain.h"
#include "core/DisplayFields.h"
#include "core/FieldChecks.h"
#include "core/Gateway.h"
#include "core/SessionStore.h"
#include "core/TankLine.h"
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
    if (!Screens::known("frmConvertSteel"))
        for (QToolButton* button : {bttnAddMore, bttnRecalc})
            makeUnavailable(button);
}

void frmResultsConvert::Load() {
    SetStatusText("View results");
    QString tankID;
    if (Session::TankID.read(tankID))
        ShowTankLine(tankID);
    ShowModel();
    setProperty("helpContext", SetHelpContext());
}

void frmResultsConvert::ShowTankLine(const QString& tankID) {
    Connection connection = openDatabase("User");
    Recordset tank;
    tank.Open(TankQuery(tankID), connection);
    if (tank.AtEnd())
        return;
    txtQty->setText(tank["Qty"].text());
    txtModelNo->setText(tank["ModelNo"].text());
    txtRequiredAcceptance->setText(FormattedField(tank["RequiredAcceptance"], "#,##0 gal"));
    txtSteelTankVol->setText(FormattedField(tank["TotSysVolume"], "#,##0 gal"));
}

void frmResultsConvert::ShowModel() {
    Connection connection = openDatabase("Sys");
    Recordset model;
    model.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(txtModelNo->text()) + "'",
               connection);
    QString drawing;
    if (!model.AtEnd()) {
        txtDiameter->setText(model["TankOD"].text());
        txtHeightBox->setText(model["OAL"].text());
        txtWeight->setText(FormattedField(model["Shipweight"], "#,##0 lbs"));
        txtTankVolume->setText(FormattedField(model["TankVolume"], "#,## gal"));
        txtTankSysConn->setText(model["SysConnStd"].text());
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
