#include "sizing/frmResults.h"

#include "core/base/Applications.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "sizing/TankSizing.h"

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
           .specification = bttnSpecs,
           .calculation = bttnCalculation,
           .notes = lblNotes});
    chkASMEFlag->setAttribute(Qt::WA_TransparentForMouseEvents); // display only: keys do not change it either
    connect(chkASMEFlag, &QCheckBox::clicked, this, [this](bool checked) {
        chkASMEFlag->setChecked(!checked);
        setEntered(false);
    });
    opens(bttnCompare, "frmCompare");
    opens(bttnUnitTagID, "frmUnitTagData");
    opens(bttnSchedule, "frmSchedule");
    opens(bttnOverview, "frmJobOverview");
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

void frmResults::showTankLine(const TankLine& tank) {
    showTexts({{txtQty, shownText(tank.qty)},
               {txtModelNo, shownText(tank.modelNo)},
               {txtRequiredAcceptance, shownText(tank.requiredAcceptance, "#,##0 gal")},
               {txtRequiredVolume, shownText(tank.requiredVolume, "#,##0 gal")},
               {txtTotSysFluid, shownText(tank.totSysVolume, "#,##0 gal")},
               {txtAtmPressure, shownText(tank.atmPressure, "#,##0.0 psi")},
               {txtSOPMin, shownText(tank.sopMin, "#,##0 psi")},
               {txtSOPMax, shownText(tank.sopMax, "#,##0 psi")},
               {txtSOTMin, shownText(tank.sotMin, "#,##0°F")},
               {txtSOTMax, shownText(tank.sotMax, "#,##0°F")},
               {txtSysFluidType, shownText(tank.sysFluidType)}});
}

void frmResults::showModel(const Model& model) {
    showTexts({{txtDiameter, shownText(model.tankOD)},
               {txtHeightBox, shownText(model.oal)},
               {txtWeight, shownText(model.shipWeight, "#,##0 lbs")},
               {txtTankAcceptance, shownText(model.acceptanceVolume, "#,##0 gal")},
               {txtTankVolume, shownText(model.tankVolume, "#,## gal")},
               {txtTankSysConn, shownText(model.sysConnStd)}});
    chkASMEFlag->setChecked(model.asme.value_or(false));
    txtBladderType->setText(bladderType(model));
    txtBladderType->setCursorPosition(0);
    const auto application = applicationCoded(shownText(model.app).toStdString());
    if (application != Application::Hydropneumatic)
        return;
    for (QWidget* hidden : std::initializer_list<QWidget*>{lblTemp, lblTempMin, lblTempMax, txtSOTMin,
                                                           txtSOTMax, lblFluidType, txtSysFluidType})
        hidden->hide();
    lblSysVolume->setText(toQString(infoOf(*application).resultCaption));
}

void frmResults::addFacts(SizingNotes::Facts& facts, const TankLine& tank) const {
    TankSizing::addSizes(facts, tank);
}
