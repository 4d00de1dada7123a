#include "sizing/frmJobConditions.h"

#include "core/base/Numbers.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/FieldChecks.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"

#include <QEvent>
#include <QTimer>

#include <algorithm>

using namespace UtilityFunctions;

namespace {

constexpr double standardAtmosphere = 14.7; // psia
// Above every limit of the expansion tanks; meant so.
constexpr FluidLimits thermalLimits{"", 40, 100, 90, 245};
constexpr FluidLimits noLimits{"", -999999, 999999, -999999, 999999};

QString range(double low, double high) {
    return QString("Range: %1°F - %2°F").arg(low).arg(high);
}

} // namespace

frmJobConditions::frmJobConditions() : Screen("frmJobConditions") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    connect(cmboFluidType, &QComboBox::currentTextChanged, this, [this] { SelectFluid(); });
    for (QLineEdit* box : {txtAtmPressure, txtSOPMin, txtSOPMax, txtTotSysFluid})
        onLeaving(box, "." + box->objectName() + "_Validate", [box] {
            ValidateNumeric(box, true); // the focus may move on; Next checks again
            return true;
        });
    for (QLineEdit* box : {txtSOTMin, txtSOTMax})
        onLeaving(box, "." + box->objectName() + "_Validate", [this, box] { return CheckTemperature(box); });
    for (const auto& [button, opened] : {std::pair(cmdCalcTSF, "frmCalcExpTSF"), {cmdMetric, "frmMetric"}})
        if (!Screens::known(opened))
            makeUnavailable(button);
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdPrevious, ".cmdPrevious", [this] { Previous(); });
    on(cmdCancel, ".cmdCancel", [this] { Cancel(); });
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
    for (const FluidLimits& row : fluidLimits)
        cmboFluidType->addItem(QString::fromUtf8(row.fluid.data(), static_cast<qsizetype>(row.fluid.size())));
    cmboFluidType->setCurrentText("Water");
    txtSOTMin->setText("40");

    Connection connection = openDatabase("User");
    Recordset tank;
    const bool known = Session::TankID.read(text) && (tank.Open(TankQuery(text), connection), !tank.AtEnd());
    if (known) {
        txtAtmPressure->setText(tank["AtmPressure"].text());
        // A fluid that the list does not offer leaves it empty, so that Next asks for one.
        cmboFluidType->setCurrentIndex(cmboFluidType->findText(tank["SysFluidType"].text()));
        txtSOTMin->setText(tank["SOTMin"].text());
        txtSOTMax->setText(tank["SOTMax"].text());
        txtSOPMin->setText(tank["SOPMin"].text());
        txtSOPMax->setText(tank["SOPMax"].text());
        txtTotSysFluid->setText(tank["TotSysVolume"].text());
    } else {
        SetStatusText("Enter job conditions");
        Recordset user;
        user.Open("tblUser", connection, CursorType::ForwardOnly, LockType::Optimistic, CommandType::Table);
        const bool given = !user.AtEnd() && !user["DefaultPSIa"].isNull();
        txtAtmPressure->setText(
            QString::fromStdString(NumberText(given ? user["DefaultPSIa"].number() : standardAtmosphere)));
    }
    AdaptToApplication();
    setProperty("helpContext", SetHelpContext());
}

void frmJobConditions::AdaptToApplication() {
    const QString application = Session::TankClass.text();
    if (application == AppNameExpansion()) {
        ShowLimits();
        lblHeader->setText("Enter Job Conditions For Expansion Tank...");
    } else if (application == AppNameThermal()) {
        txtSOTMin->setToolTip(range(40, 100));
        txtSOTMax->setToolTip(range(90, 245));
        cmboFluidType->setToolTip("");
        cmboFluidType->setEnabled(false);
        lblHeader->setText("Enter Job Conditions For Thermal Expansion Tank...");
    } else if (application == AppNameHydro()) {
        for (QWidget* hidden :
             std::initializer_list<QWidget*>{txtSOTMin, txtSOTMax, lblSOTMinUM, lblSOTMaxUM, lblSOT,
                                             lblSOTMin, lblSOTMax, cmboFluidType, lblFluidType})
            hidden->hide();
        txtSOTMin->setText("0"); // hidden values that pass the checks
        txtSOTMax->setText("1");
        lblHeader->setText("Enter Job Conditions For Hydro-Pneumatic Tank...");
        lblSysFluidContent->setText("&Drawdown");
    }
}

void frmJobConditions::SelectFluid() {
    const std::string fluid = cmboFluidType->currentText().toStdString();
    const auto* row = std::ranges::find(fluidLimits, std::string_view(fluid), &FluidLimits::fluid);
    if (row != fluidLimits.end())
        limits = *row;
    ShowLimits();
}

void frmJobConditions::ShowLimits() {
    txtSOTMin->setToolTip(range(limits.SOTMinLow, limits.SOTMinHigh));
    txtSOTMax->setToolTip(range(limits.SOTMaxLow, limits.SOTMaxHigh));
}

FluidLimits frmJobConditions::LimitsInForce() const {
    const QString application = Session::TankClass.text();
    return application == AppNameExpansion() ? limits
           : application == AppNameThermal() ? thermalLimits
                                             : noLimits;
}

bool frmJobConditions::CheckTemperature(QLineEdit* box) {
    const FluidLimits force = LimitsInForce();
    return ValidateNumeric(box, true) &&
           (box == txtSOTMin ? ValidateMinMax(box, force.SOTMinLow, force.SOTMinHigh)
                             : ValidateMinMax(box, force.SOTMaxLow, force.SOTMaxHigh));
}

bool frmJobConditions::CheckFields() {
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
    const FluidLimits force = LimitsInForce();
    return ValidateMinMax(txtSOTMin, force.SOTMinLow, force.SOTMinHigh) &&
           ValidateMinMax(txtSOTMax, force.SOTMaxLow, force.SOTMaxHigh);
}

void frmJobConditions::SaveRecord() {
    QString mode;
    if (!Session::Mode.read(mode))
        return;
    const bool isNew = mode == "New";
    const int number = isNew ? GetNextNumber() : 0;
    Connection connection = openDatabase("User");
    Recordset tank;
    if (isNew) {
        const QString tankID = lblJobID->text() + "." + QString::number(number);
        Session::TankID.write(tankID);
        AddTankLine(tank, connection, number, tankID, lblJobID->text());
        tank["DateCreated"] = QDateTime::currentDateTime();
        tank.Update();
    } else {
        QString tankID;
        if (!Session::TankID.read(tankID))
            return;
        tank.Open(TankQuery(tankID), connection, CursorType::Keyset);
    }
    tank["AtmPressure"] = txtAtmPressure->text();
    tank["SOPMin"] = txtSOPMin->text();
    tank["SOPMax"] = txtSOPMax->text();
    tank["SOTMin"] = txtSOTMin->text();
    tank["SOTMax"] = txtSOTMax->text();
    tank["SysFluidType"] = cmboFluidType->currentText();
    tank["TotSysVolume"] = txtTotSysFluid->text();
    tank.Update();
}

void frmJobConditions::Next() {
    const Hourglass hourglass;
    if (!CheckFields())
        return;
    procedure(".SaveRecord", [this] { SaveRecord(); });
    Tag = "1";
    Screens::unload(name());
    Screens::open("frmTankSeries");
}

void frmJobConditions::Previous() {
    const Hourglass hourglass;
    Tag = "1";
    QString mode;
    if (Session::Mode.read(mode))
        Screens::open(mode == "New" ? "frmClassSelect" : "frmTankIDSearch");
    Screens::unload(name());
}

void frmJobConditions::Cancel() {
    const Hourglass hourglass;
    Tag = "1";
    CancelJobInput(lblJobID->text());
    for (const char* opened :
         {"frmCalcExpTSF", "frmCalcHydTSF", "frmcalcThmTSF", "frmMetric", "frmPipeSelect"})
        Screens::unload(opened);
    Screens::unload(name());
}

bool frmJobConditions::QueryUnload() {
    if (Tag == "0")
        Cancel();
    SetStatusBarText();
    return true;
}
