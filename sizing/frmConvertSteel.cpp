#include "sizing/frmConvertSteel.h"

#include "core/base/Fault.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/FieldChecks.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"

#include <QEvent>
#include <QTimer>

using namespace UtilityFunctions;

namespace {

const QString reservedJob = QStringLiteral("CONVERT");

/// The user's atmospheric pressure in psia, the standard one for a user without settings. Throws Fault 94
/// when the settings leave it open: a conversion has no value of its own for that.
QString defaultPressure(Connection& connection) {
    Recordset user;
    user.Open("tblUser", connection, CursorType::ForwardOnly, LockType::Optimistic, CommandType::Table);
    if (user.AtEnd())
        return "14.7";
    constexpr int invalidUseOfNull = 94;
    if (user["DefaultPSIa"].isNull())
        throw Fault(invalidUseOfNull, "Invalid use of Null");
    return user["DefaultPSIa"].text();
}

void addReservedJob(Connection& connection) {
    Recordset job;
    job.Open("SELECT * FROM tblJobHeader WHERE JobID = 'CONVERT'", connection, CursorType::Keyset);
    if (!job.AtEnd())
        return;
    job.AddNew();
    job["JobID"] = reservedJob;
    job["JobDscrptn"] = "Convert Plain Steel to Bladder Tank";
    job["Contractor"] = "";
    job["Engineer"] = "";
    job["DateCreated"] = QDateTime::currentDateTime();
    job.Update();
}

} // namespace

frmConvertSteel::frmConvertSteel() : Screen("frmConvertSteel") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    lblTotSysFluid->setMinimumWidth(lblSOPMin->sizeHint().width()); // the boxes of both groups in one line
    for (QLineEdit* box : {txtTotSysFluid, txtSOPMin, txtAtmPressure})
        onLeaving(box, "." + box->objectName() + "_Validate", [box] { return ValidateNumeric(box, true); });
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdCancel, ".cmdCancel", [this] { Screens::unload(name()); });
    // There is nothing before this screen: Previous does nothing, on purpose.
}

bool frmConvertSteel::eventFilter(QObject* object, QEvent* event) {
    if (auto* box = dynamic_cast<QLineEdit*>(object)) {
        if (event->type() == QEvent::MouseButtonDblClick) {
            box->clear();
            return true;
        }
        if (event->type() == QEvent::MouseButtonRelease)
            QTimer::singleShot(0, box, &QLineEdit::selectAll);
    }
    return Screen::eventFilter(object, event);
}

void frmConvertSteel::Load() {
    SetStatusText("Convert steel tank(s) to bladder tank(s)");
    QString tankID;
    if (!Session::TankID.read(tankID))
        return;
    Connection connection = openDatabase("User");
    Recordset tank;
    tank.Open(TankQuery(tankID), connection);
    if (tank.AtEnd()) {
        txtAtmPressure->setText(defaultPressure(connection));
        return;
    }
    txtAtmPressure->setText(tank["AtmPressure"].text());
    txtSOPMin->setText(tank["SOPMin"].text());
    txtTotSysFluid->setText(tank["TotSysVolume"].text());
}

void frmConvertSteel::Next() {
    const Hourglass hourglass;
    for (QLineEdit* box : {txtAtmPressure, txtSOPMin, txtTotSysFluid})
        if (!ValidateValueEntered(box, true))
            return;
    Session::JobID.write(reservedJob);
    Session::TankClass.write(AppNameExpansion()); // the frame that the series screen shows
    procedure(".SaveRecord", [this] { SaveRecord(); });
    Session::Mode.write("Convert"); // after the save, to which "New" means a new line
    Tag = "1";
    Screens::unload(name());
    Screens::open("frmTankSeries");
}

void frmConvertSteel::SaveRecord() {
    Connection connection = openDatabase("User");
    addReservedJob(connection);
    QString mode;
    if (!Session::Mode.read(mode))
        return;
    const bool isNew = mode == "New";
    QString tankID = Session::TankID.text();
    Recordset tank;
    if (isNew) {
        const int number = GetNextNumber();
        tankID = reservedJob + "." + QString::number(number);
        AddTankLine(tank, connection, number, tankID, reservedJob);
        tank["SysFluidType"] = "Water";
        tank["DateCreated"] = QDateTime::currentDateTime();
    } else {
        tank.Open(TankQuery(tankID), connection, CursorType::Keyset);
    }
    tank["AtmPressure"] = txtAtmPressure->text();
    tank["SOPMin"] = txtSOPMin->text();
    tank["TotSysVolume"] = txtTotSysFluid->text();
    tank.Update();
    if (isNew)
        Session::TankID.write(tankID);
}

bool frmConvertSteel::QueryUnload() {
    SetStatusBarText();
    return true;
}
