#include "sizing/frmResults.h"

#include "core/shell/DisplayFields.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Status.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqlText.h"
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
    ShowTankLine();
    ShowModel();
    QString text;
    if (Session::JobID.read(text))
        setTitle("Results for Job: " + text);
    setProperty("helpContext", SetHelpContext());
}

void frmResults::ShowTankLine() {
    showTankLine({{txtQty, "Qty"},
                  {txtModelNo, "ModelNo"},
                  {txtRequiredAcceptance, "RequiredAcceptance", "#,##0 gal"},
                  {txtRequiredVolume, "RequiredVolume", "#,##0 gal"},
                  {txtTotSysFluid, "TotSysVolume", "#,##0 gal"},
                  {txtAtmPressure, "AtmPressure", "#,##0.0 psi"},
                  {txtSOPMin, "SOPMin", "#,##0 psi"},
                  {txtSOPMax, "SOPMax", "#,##0 psi"},
                  {txtSOTMin, "SOTMin", "#,##0°F"},
                  {txtSOTMax, "SOTMax", "#,##0°F"},
                  {txtSysFluidType, "SysFluidType"}});
}

void frmResults::ShowModel() {
    Connection connection = openDatabase("Sys");
    Recordset model;
    model.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(txtModelNo->text()) + "'",
               connection);
    QString drawing;
    QString application;
    if (!model.AtEnd()) {
        ShowFields(model, {{txtDiameter, "TankOD"},
                           {txtHeightBox, "OAL"},
                           {txtWeight, "Shipweight", "#,##0 lbs"},
                           {txtTankAcceptance, "AcceptanceVolume", "#,##0 gal"},
                           {txtTankVolume, "TankVolume", "#,## gal"},
                           {txtTankSysConn, "SysConnStd"}});
        chkASMEFlag->setChecked(model["ASME"].boolean());
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
