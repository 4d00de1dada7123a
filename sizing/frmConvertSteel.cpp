#include "sizing/frmConvertSteel.h"

#include "core/base/ApplicationNames.h"
#include "core/base/Fault.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "core/store/UserDefaults.h"
#include "sizing/FluidLimits.h"

#include <QEvent>
#include <QTimer>

using namespace ApplicationNames;
using namespace Fields;
using namespace Records;
using namespace StatusBar;

namespace {

/// The user's atmospheric pressure in psia, or the standard one for a user without settings. Throws Fault 94
/// when the settings leave it empty: a conversion has no default of its own.
double defaultPressure() {
    const auto user = readUserDefaults();
    if (!user)
        return UserDefaults::StandardAtmosphere;
    if (!user->defaultPSIa)
        throw Fault(Fault::InvalidUseOfNull, "Invalid use of Null");
    return *user->defaultPSIa;
}

} // namespace

frmConvertSteel::frmConvertSteel() : Screen("frmConvertSteel") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    lblTotSysFluid->setMinimumWidth(lblSOPMin->sizeHint().width()); // align the boxes of both groups
    for (QLineEdit* box : {txtTotSysFluid, txtSOPMin, txtAtmPressure})
        onLeaving(box, "." + box->objectName() + "_Validate", [box] { return ValidateNumeric(box, true); });
    on(cmdNext, ".cmdNext", [this] { Next(); });
    onCancel(cmdCancel, ".cmdCancel", [this] { Screens::unload(name()); });
    // Nothing comes before this screen: Previous deliberately does nothing.
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
    setStatusText("Convert steel tank(s) to bladder tank(s)");
    QString tankID;
    if (!Session::TankID.read(tankID))
        return;
    asRead = findTankLine(tankID);
    if (!asRead) {
        txtAtmPressure->setText(shownNumber(defaultPressure()));
        return;
    }
    txtAtmPressure->setText(shownText(asRead->atmPressure));
    txtSOPMin->setText(shownText(asRead->sopMin));
    txtTotSysFluid->setText(shownText(asRead->totSysVolume));
}

void frmConvertSteel::Next() {
    const Hourglass hourglass;
    for (QLineEdit* box : {txtAtmPressure, txtSOPMin, txtTotSysFluid})
        if (!ValidateValueEntered(box, true))
            return;
    const QString jobBefore = Session::JobID.text();
    const QString classBefore = Session::TankClass.text();
    Session::JobID.write(reservedJob());
    Session::TankClass.write(AppNameExpansion()); // the frame shown by the series screen
    const auto putBack = [&] {                    // a failed save leaves the session as it was
        Session::JobID.write(jobBefore);
        Session::TankClass.write(classBefore);
    };
    bool saved = false;
    try {
        procedure(".SaveRecord", [&] { saved = SaveRecord(); });
    } catch (const Fault&) {
        putBack();
        throw;
    }
    if (!saved)
        return putBack();
    Session::Mode.write(Session::Modes::Convert); // after the save, because "New" means a new line to it
    leaveFor("frmTankSeries");
}

/// False when the user chose to keep someone else's changes.
bool frmConvertSteel::SaveRecord() {
    addReservedJob();
    TankLine line;
    line.jobID = reservedJob();
    line.dateCreated = QDateTime::currentDateTime();
    line.sysFluidType = waterFluid;
    line.atmPressure = toNumber(txtAtmPressure->text());
    line.sopMin = toNumber(txtSOPMin->text());
    line.totSysVolume = toNumber(txtTotSysFluid->text());
    const bool isNew = Session::Mode.text() == Session::Modes::New;
    const TankLine::Columns columns = isNew ? TankLine::newSteelTank() : TankLine::steelTank();
    return saves([&](Record::IfChanged ifChanged) { saveTankLine(line, columns, asRead, ifChanged); });
}

bool frmConvertSteel::QueryUnload() {
    SetStatusBarText();
    return true;
}
