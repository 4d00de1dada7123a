#include "sizing/frmConvertSteel.h"

#include "core/base/ApplicationNames.h"
#include "core/base/Fault.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
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
QString defaultPressure() {
    Rows user("User", "tblUser", CursorType::ForwardOnly, CommandType::Table);
    if (user.AtEnd())
        return "14.7";
    if (user["DefaultPSIa"].isNull())
        throw Fault(Fault::InvalidUseOfNull, "Invalid use of Null");
    return user["DefaultPSIa"].text();
}

void addReservedJob() {
    Rows job("User", "SELECT * FROM tblJobHeader WHERE JobID = 'CONVERT'", CursorType::Keyset);
    if (!job.AtEnd())
        return;
    job->AddNew();
    job["JobID"] = reservedJob;
    job["JobDscrptn"] = "Convert Plain Steel to Bladder Tank";
    job["Contractor"] = "";
    job["Engineer"] = "";
    job["DateCreated"] = QDateTime::currentDateTime();
    job->Update();
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
    onCancel(cmdCancel, ".cmdCancel", [this] { Screens::unload(name()); });
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
    Rows tank = ReadTankLine(tankID);
    if (tank.AtEnd()) {
        txtAtmPressure->setText(defaultPressure());
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
    const QString jobBefore = Session::JobID.text();
    const QString classBefore = Session::TankClass.text();
    Session::JobID.write(reservedJob);
    Session::TankClass.write(AppNameExpansion()); // the frame that the series screen shows
    try {
        procedure(".SaveRecord", [this] { SaveRecord(); });
    } catch (const Fault&) { // a save that failed leaves the session as it was
        Session::JobID.write(jobBefore);
        Session::TankClass.write(classBefore);
        throw;
    }
    Session::Mode.write(Session::Modes::Convert); // after the save, to which "New" means a new line
    leaveFor("frmTankSeries");
}

void frmConvertSteel::SaveRecord() {
    addReservedJob();
    SaveTankLine(reservedJob, reservedJob, QDateTime::currentDateTime(), [this](Recordset& tank, bool isNew) {
        if (isNew)
            tank["SysFluidType"] = "Water";
        tank["AtmPressure"] = txtAtmPressure->text();
        tank["SOPMin"] = txtSOPMin->text();
        tank["TotSysVolume"] = txtTotSysFluid->text();
    });
}

bool frmConvertSteel::QueryUnload() {
    SetStatusBarText();
    return true;
}
