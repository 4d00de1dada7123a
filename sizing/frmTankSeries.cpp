#include "sizing/frmTankSeries.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/FieldChecks.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "sizing/RequiredSizes.h"

#include <QEvent>

using namespace UtilityFunctions;

namespace {

enum class DoubleClick { GoesOn, OnlyChooses, IsIgnored };

/// A series: its option button, its code, and the stored code that selects the button again. RCBD differs
/// between the two, so a stored RCBD is not selected again; that is meant.
struct Series {
    const char* option;
    const char* code;
    const char* storedCode;
    DoubleClick doubleClick = DoubleClick::GoesOn;
};

constexpr Series allSeries[] = {
    {"OptRF", "R", "R"},
    {"OptRCBD", "RCBD", "RCD"},
    {"OptRC", "RC", "RC"},
    {"OptRB", "RB", "RB"},
    {"OptRGB", "RGB", "RGB"},
    {"OptRCB", "RCB", "RCB"},
    {"OptRHB", "RHB", "RHB"},
    {"OptGWB", "GWB", "GWB"},
    {"OptGGB", "GGB", "GGB", DoubleClick::IsIgnored},
    {"OptGW", "GW", "GW", DoubleClick::OnlyChooses},
    {"OptGD", "G", "G"},
    {"OptJW", "JW", "JW"},
    {"OptJWB", "JWB", "JWB"},
    {"OptJWG", "JWG", "JWG"},
};

QString numberText(double value) {
    return QString::fromStdString(NumberText(value));
}

/// The expansion of water from the table; 0 when the maximum temperature is above its last row.
double waterExpansion(const SystemConditions& conditions) {
    Connection connection = openDatabase("Sys");
    Recordset factor;
    factor.Open("SELECT [" + QString::number(ExpansionColumn(conditions.minimumTemperature)) +
                    "] AS minSOT FROM tblExpFactor WHERE SOTMax >= " +
                    numberText(conditions.maximumTemperature) + " ORDER BY SOTMax",
                connection);
    return factor.AtEnd() ? 0 : factor["minSOT"].number();
}

} // namespace

frmTankSeries::frmTankSeries() : Screen("frmTankSeries") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    txtTankType->hide();
    for (const Series& series : allSeries) {
        auto* option = control<QAbstractButton>(series.option);
        option->installEventFilter(this);
        on(option, "." + option->objectName(), [this, series] {
            txtTankType->setText(series.code);
            cmdNext->setFocus();
        });
    }
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdPrevious, ".cmdPrevious", [this] { Previous(); });
    on(cmdCancel, ".cmdCancel", [this] { Cancel(); });
}

bool frmTankSeries::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick) {
        for (const Series& series : allSeries) {
            if (object->objectName() != series.option)
                continue;
            if (series.doubleClick == DoubleClick::OnlyChooses)
                cmdNext->setFocus();
            else if (series.doubleClick == DoubleClick::GoesOn)
                static_cast<QAbstractButton*>(object)->click(), cmdNext->click();
            return true;
        }
    }
    return Screen::eventFilter(object, event);
}

void frmTankSeries::Load() {
    SetStatusText("Select series");
    QString tankID;
    const bool hasTank = Session::TankID.read(tankID);
    lblTankID->setText(tankID);
    lblJobID->setText(Session::JobID.text());
    QString application;
    lblHeader->setText("Select series");
    if (Session::TankClass.read(application)) {
        lblHeader->setText("Select series of " + application);
        setWindowTitle(lblHeader->text());
    }
    ShowFrame(application);
    if (hasTank) {
        Connection connection = openDatabase("User");
        Recordset tank; // the trailing blank is what keeps a stored series from being preselected
        tank.Open("SELECT * FROM tblJobData WHERE TankID = '" + SqlEscape(tankID) + " '", connection);
        if (!tank.AtEnd() && !tank["TankClass"].isNull())
            Preselect(tank["TankClass"].text());
    }
    setProperty("helpContext", SetHelpContext());
}

void frmTankSeries::ShowFrame(const QString& application) {
    OptGroupEXP->setVisible(application == AppNameExpansion());
    OptGroupTHM->setVisible(application == AppNameThermal());
    OptGroupHYD->setVisible(application == AppNameHydro());
    if (application == AppNameThermal())
        lblHeader->setText(application);
    else if (application != AppNameExpansion() && application != AppNameHydro())
        Dialogs::current().show({"Error loading data", "Error"});
}

void frmTankSeries::Preselect(const QString& stored) {
    for (const Series& series : allSeries)
        if (stored.compare(series.storedCode, Qt::CaseInsensitive) == 0)
            control<QAbstractButton>(series.option)->click();
}

void frmTankSeries::StoreSizes() {
    QString tankID;
    if (!Session::TankID.read(tankID)) {
        Dialogs::current().show({"Error loading data!\nPlease try again!", "Error", QMessageBox::Critical});
        throw AlreadyReported{};
    }
    SystemConditions conditions;
    QString fluid;
    {
        Connection connection = openDatabase("User");
        Recordset tank;
        tank.Open("SELECT * FROM tblJobData WHERE TankID = '" + SqlEscape(tankID) + "'", connection);
        if (!tank.AtEnd()) {
            conditions = {tank["SOTMin"].number(),      tank["SOTMax"].number(),
                          tank["SOPMin"].number(),      tank["SOPMax"].number(),
                          tank["AtmPressure"].number(), tank["TotSysVolume"].number()};
            fluid = tank["SysFluidType"].text();
        }
    }
    const QString series = txtTankType->text();
    RequiredSizes sizes;
    if (Session::Mode.text() == "Convert") {
        sizes = ConvertedTankSizes(conditions);
    } else {
        const double expansion =
            fluid == "Water" ? waterExpansion(conditions)
                             : FluidExpansionFactor(fluid.toStdString(), conditions.minimumTemperature,
                                                    conditions.maximumTemperature);
        const double acceptance = AcceptanceFactor(conditions, series == "RB");
        sizes = !OptGroupHYD->isHidden() ? HydropneumaticTankSizes(conditions, acceptance)
                                         : ExpansionTankSizes(conditions, expansion, acceptance);
    }
    Connection connection = openDatabase("User");
    Recordset tank;
    tank.Open("SELECT * FROM tblJobData WHERE TankID ='" + SqlEscape(lblTankID->text()) + "'", connection,
              CursorType::Keyset);
    if (tank.AtEnd())
        return;
    tank["TankClass"] = series;
    tank["RequiredVolume"] = sizes.volume;
    tank["RequiredAcceptance"] = sizes.acceptance;
    tank.Update();
}

void frmTankSeries::Next() {
    const Hourglass hourglass;
    if (!ValidateValueEntered(txtTankType, true))
        return;
    StoreSizes();
    Tag = "1";
    Screens::open("frmtankselection");
    Screens::unload(name());
}

void frmTankSeries::Previous() {
    const Hourglass hourglass;
    Tag = "1";
    Screens::unload(name());
    Screens::open(Session::Mode.text() == "Convert" ? "frmConvertSteel" : "frmJobConditions");
}

void frmTankSeries::Cancel() {
    const Hourglass hourglass;
    Tag = "1";
    CancelJobInput(lblJobID->text());
    Screens::unload(name());
}

bool frmTankSeries::QueryUnload() {
    if (Tag == "0")
        Cancel();
    SetStatusBarText();
    return true;
}
