#include "sizing/frmResults.h"

#include "core/base/Applications.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"

using namespace Fields;

frmResults::frmResults() : FinishedTankScreen("frmResults") {
    setupUi(this);
    prepare();
    lblMsgFlag->hide();
    lblConsultFactory->hide();
    shows({.model = txtModelNo,
           .picture = imgDrawing,
           .drawing = txtDrawing,
           .preview = bttnPreview,
           .print = bttnPrint,
           .specification = bttnSpecs});
    chkASMEFlag->setAttribute(Qt::WA_TransparentForMouseEvents); // display only
    opens(bttnUnitTagID, "frmUnitTagData");
    opens(bttnSchedule, "frmSchedule");
    on(bttnAddMore, ".tbToolbar", [this] { addMore("frmClassSelect"); });
    on(bttnRecalc, ".tbToolbar", [this] { leaveFor("frmJobConditions"); });
}

void frmResults::Load() {
    FinishedTankScreen::Load();
    QString jobID;
    if (Session::JobID.read(jobID))
        setTitle("Results for Job: " + jobID);
    setProperty("helpContext", SetHelpContext());
}

void frmResults::ShowTankLine(const TankLine& tank) {
    ShowTexts({{txtQty, Shown(tank.qty)},
               {txtModelNo, Shown(tank.modelNo)},
               {txtRequiredAcceptance, Shown(tank.requiredAcceptance, "#,##0 gal")},
               {txtRequiredVolume, Shown(tank.requiredVolume, "#,##0 gal")},
               {txtTotSysFluid, Shown(tank.totSysVolume, "#,##0 gal")},
               {txtAtmPressure, Shown(tank.atmPressure, "#,##0.0 psi")},
               {txtSOPMin, Shown(tank.sopMin, "#,##0 psi")},
               {txtSOPMax, Shown(tank.sopMax, "#,##0 psi")},
               {txtSOTMin, Shown(tank.sotMin, "#,##0°F")},
               {txtSOTMax, Shown(tank.sotMax, "#,##0°F")},
               {txtSysFluidType, Shown(tank.sysFluidType)}});
}

void frmResults::ShowModel(const Model& model) {
    ShowTexts({{txtDiameter, Shown(model.tankOD)},
               {txtHeightBox, Shown(model.oal)},
               {txtWeight, Shown(model.shipWeight, "#,##0 lbs")},
               {txtTankAcceptance, Shown(model.acceptanceVolume, "#,##0 gal")},
               {txtTankVolume, Shown(model.tankVolume, "#,## gal")},
               {txtTankSysConn, Shown(model.sysConnStd)}});
    chkASMEFlag->setChecked(model.asme.value_or(false));
    txtBladderType->setText(bladderType(model));
    txtBladderType->setCursorPosition(0);
    const auto application = ApplicationCoded(Shown(model.app).toStdString());
    if (application != Application::Hydropneumatic)
        return;
    for (QWidget* hidden : std::initializer_list<QWidget*>{lblTemp, lblTempMin, lblTempMax, txtSOTMin,
                                                           txtSOTMax, lblFluidType, txtSysFluidType})
        hidden->hide();
    lblSysVolume->setText(ToQString(InfoOf(*application).resultCaption));
}
