#include "sizing/frmJobConditions.h"

#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Deletion.h"
#include "core/store/SessionStore.h"
#include "core/store/UserDefaults.h"
#include "estimates/Estimator.h"
#include "estimates/MetricPad.h"
#include "sizing/ConditionRules.h"
#include "sizing/FluidLimits.h"
#include "sizing/TemperatureRange.h"

#include <QEvent>
#include <QLabel>
#include <QTimer>

using namespace Deletion;
using namespace Fields;
using namespace Records;
using namespace StatusBar;

frmJobConditions::frmJobConditions() : Screen("frmJobConditions") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    connect(cmboFluidType, &QComboBox::currentTextChanged, this, [this] { showLimits(); });
    for (QLineEdit* box : {txtAtmPressure, txtSOPMin, txtSOPMax, txtTotSysFluid})
        onLeaving(box, "." + box->objectName() + "_Validate", [box] {
            ValidateNumeric(box, true); // the focus may move on; Next checks again
            return true;
        });
    for (QLineEdit* box : {txtSOTMin, txtSOTMax})
        onLeaving(box, "." + box->objectName() + "_Validate", [this, box] { return checkTemperature(box); });
    on(cmdCalcTSF, ".cmdCalcTSF", [this] { Estimate(); });
    on(cmdMetric, ".cmdMetric", [this] { openMetricPad("frmMetric", name()); });
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdPrevious, ".cmdPrevious", [this] { Previous(); });
    onCancel(cmdCancel, ".cmdCancel", [this] { Cancel(); });
}

bool frmJobConditions::eventFilter(QObject* object, QEvent* event) {
    if (object == txtAtmPressure && event->type() == QEvent::MouseButtonDblClick) {
        txtAtmPressure->clear();
        return true;
    }
    if (object == txtAtmPressure && event->type() == QEvent::MouseButtonRelease)
        QTimer::singleShot(0, txtAtmPressure, &QLineEdit::selectAll);
    return Screen::eventFilter(object, event);
}

void frmJobConditions::Load() {
    QString text;
    if (Session::JobID.read(text))
        lblJobID->setText(text);
    if (Session::TankType.read(text))
        lblHeader->setText("Enter Job Conditions for " + text + "...");
    cmboFluidType->clear();
    for (const FluidLimits& row : fluidLimits)
        cmboFluidType->addItem(toQString(row.fluid));
    cmboFluidType->setCurrentText(waterFluid);
    txtSOTMin->setText("40");
    asRead = readTankLineToEdit();
    if (asRead)
        showStored(*asRead);
    else
        showDefaults();
    adaptToApplication();
    setProperty("helpContext", SetHelpContext());
}

void frmJobConditions::showStored(const TankLine& tank) {
    // A tank line of another application may have no fluid, or one that is not in the list: Water stays.
    setTexts(*this, ConditionRules::boxesOf(tank));
}

void frmJobConditions::showDefaults() {
    setStatusText("Enter job conditions");
    const UserDefaults user = readUserDefaults().value_or(UserDefaults());
    txtAtmPressure->setText(shownNumber(user.defaultPSIa.value_or(UserDefaults::StandardAtmosphere)));
}

void frmJobConditions::adaptToApplication() {
    const auto application = Session::application();
    if (!application)
        return;
    const ApplicationInfo& info = infoOf(*application);
    switch (*application) {
    case Application::Expansion:
        showLimits();
        break;
    case Application::Thermal:
        if (Session::Mode.text() ==
            Session::Modes::New) // a new line does not inherit glycol from another application
            cmboFluidType->setCurrentText(waterFluid);
        cmboFluidType->setToolTip("");
        cmboFluidType->setEnabled(false);
        showLimits();
        break;
    case Application::Hydropneumatic:
        for (QWidget* hidden : std::initializer_list<QWidget*>{txtSOTMin, txtSOTMax, lblSOTMinUM, lblSOTMaxUM,
                                                               lblSOT, lblSOTMin, lblSOTMax, lblSOTMinRange,
                                                               lblSOTMaxRange, cmboFluidType, lblFluidType})
            hidden->hide();
        txtSOTMin->setText("0"); // hidden values that pass the checks
        txtSOTMax->setText("1");
        break;
    case Application::Shock:
    case Application::Package:
        return; // these have screens of their own
    }
    lblHeader->setText(toQString(info.conditionsHeading));
    lblSysFluidContent->setText(toQString(info.volumeCaption));
}

void frmJobConditions::showLimits() {
    const TemperatureLimits limits = limitsInForce();
    showTemperatureRange(txtSOTMin, lblSOTMinRange, limits.minimumLow, limits.minimumHigh);
    showTemperatureRange(txtSOTMax, lblSOTMaxRange, limits.maximumLow, limits.maximumHigh);
}

TemperatureLimits frmJobConditions::limitsInForce() const {
    return ConditionRules::limitsOf(Session::application().value_or(Application::Expansion),
                                    cmboFluidType->currentText());
}

bool frmJobConditions::checkTemperature(QLineEdit* box) {
    const TemperatureLimits force = limitsInForce();
    return ValidateNumeric(box, true) &&
           (box == txtSOTMin ? ValidateMinMax(box, force.minimumLow, force.minimumHigh)
                             : ValidateMinMax(box, force.maximumLow, force.maximumHigh));
}

bool frmJobConditions::checkFields() {
    if (!ValidateValueEntered(txtAtmPressure, true) || !ValidateItemSelected(cmboFluidType, true))
        return false;
    for (QLineEdit* box : {txtTotSysFluid, txtSOPMin, txtSOPMax, txtSOTMin, txtSOTMax})
        if (!ValidateValueEntered(box, true))
            return false;
    for (QLineEdit* box : {txtAtmPressure, txtTotSysFluid, txtSOPMin, txtSOPMax, txtSOTMin, txtSOTMax})
        if (!ValidateNumeric(box, true))
            return false;
    if (!ValidateValueRange(txtSOTMin, txtSOTMax) || !ValidateValueRange(txtSOPMin, txtSOPMax))
        return false;
    const TemperatureLimits force = limitsInForce();
    return ValidateMinMax(txtSOTMin, force.minimumLow, force.minimumHigh) &&
           ValidateMinMax(txtSOTMax, force.maximumLow, force.maximumHigh);
}

/// False when the user chose to keep someone else's changes.
bool frmJobConditions::SaveRecord() {
    TankLine line = ConditionRules::lineOf(textsOf(*this));
    line.jobID = lblJobID->text();
    line.dateCreated = QDateTime::currentDateTime();
    return saves(
        [&](Record::IfChanged ifChanged) { saveTankLine(line, TankLine::conditions(), asRead, ifChanged); });
}

void frmJobConditions::Estimate() {
    const Hourglass hourglass;
    const auto application = Session::application();
    const QString estimator = application ? estimatorOf(*application) : QString();
    if (!estimator.isEmpty())
        openEstimator(estimator, name());
}

void frmJobConditions::Next() {
    const Hourglass hourglass;
    if (!checkFields())
        return;
    bool saved = false;
    procedure(".SaveRecord", [&] { saved = SaveRecord(); });
    if (saved)
        leaveFor("frmTankSeries");
}

void frmJobConditions::Previous() {
    const Hourglass hourglass;
    Tag = "1";
    QString mode;
    if (Session::Mode.read(mode))
        Screens::open(mode == Session::Modes::New ? "frmClassSelect" : "frmTankIDSearch");
    Screens::unload(name());
}

void frmJobConditions::Cancel() {
    const Hourglass hourglass;
    Tag = "1";
    CancelJobInput(lblJobID->text());
    for (const char* opened : {"frmCalcExpTSF", "frmCalcHydTSF", "frmcalcThmTSF", "frmMetric"})
        if (const Screen* pad = Screens::find(opened); pad && !Screens::isOfAnotherJob(*pad, name()))
            Screens::unload(opened); // closes its pipe chooser too
    Screens::unload(name());
}

bool frmJobConditions::QueryUnload() {
    if (Tag == "0")
        Cancel();
    SetStatusBarText();
    return true;
}
