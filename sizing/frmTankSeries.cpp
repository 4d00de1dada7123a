#include "sizing/frmTankSeries.h"

#include "core/base/ApplicationNames.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Deletion.h"
#include "core/store/SessionStore.h"
#include "sizing/Series.h"
#include "sizing/TankSizing.h"

#include <QKeyEvent>

#include <algorithm>

using namespace ApplicationNames;
using namespace Deletion;
using namespace Fields;
using namespace Records;
using namespace StatusBar;

namespace {

/// The required sizes of the line at work, zeros if there is none, in an application and series. Throws Fault
/// 11 when the pressures leave no acceptance.
RequiredSizes sizesOf(const QString& tankID, Application application, const QString& series) {
    const TankLine tank = findTankLine(tankID).value_or(TankLine());
    if (Session::Mode.text() == Session::Modes::Convert)
        return convertedTankSizes(TankSizing::conditionsOf(tank));
    return TankSizing::sizesOf(tank, application, series);
}

} // namespace

frmTankSeries::frmTankSeries() : Screen("frmTankSeries") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    txtTankType->hide();
    cmdNext->setEnabled(false); // until a series is chosen
    for (const Series& series : allSeries) {
        auto* option = control<QAbstractButton>(series.option);
        option->installEventFilter(this);
        on(option, "." + option->objectName(), [this, series] {
            txtTankType->setText(series.code);
            cmdNext->setEnabled(true);
            cmdNext->setFocus();
        });
    }
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdPrevious, ".cmdPrevious", [this] { Previous(); });
    onCancel(cmdCancel, ".cmdCancel", [this] { Cancel(); });
}

/// Arrow keys choose among the visible series and keep the focus on the chosen one.
bool frmTankSeries::chooseByArrow(QObject* option, int key) {
    const bool forward = key == Qt::Key_Down || key == Qt::Key_Right;
    if (!forward && key != Qt::Key_Up && key != Qt::Key_Left)
        return false;
    QList<QAbstractButton*> shown;
    for (const Series& series : allSeries)
        if (auto* other = control<QAbstractButton>(series.option); other->isVisible())
            shown.append(other);
    std::ranges::sort(shown, {}, [this](const QAbstractButton* button) {
        const QPoint place = button->mapTo(this, QPoint(0, 0));
        return std::pair(place.y(), place.x());
    });
    const auto at = shown.indexOf(static_cast<QAbstractButton*>(option));
    const auto next = (at + (forward ? 1 : shown.size() - 1)) % shown.size();
    shown[next]->click();
    shown[next]->setFocus();
    return true;
}

bool frmTankSeries::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress && dynamic_cast<QAbstractButton*>(object) &&
        chooseByArrow(object, static_cast<QKeyEvent*>(event)->key()))
        return true;
    if (event->type() == QEvent::MouseButtonDblClick) {
        for (const Series& series : allSeries) {
            if (object->objectName() != series.option)
                continue;
            if (series.doubleClick == DoubleClick::OnlyChooses)
                cmdNext->setFocus();
            else if (series.doubleClick == DoubleClick::GoesOn)
                goOnWith(static_cast<QAbstractButton*>(object));
            return true;
        }
    }
    return Screen::eventFilter(object, event);
}

void frmTankSeries::Load() {
    setStatusText("Select series");
    QString tankID;
    const bool hasTank = Session::TankID.read(tankID);
    lblTankID->setText(tankID);
    lblJobID->setText(Session::JobID.text());
    QString application;
    lblHeader->setText("Select series");
    if (Session::TankClass.read(application)) {
        lblHeader->setText("Select series of " + application);
        setTitle(lblHeader->text());
    }
    showFrame(Session::application());
    if (hasTank)
        showChanges();
    setProperty("helpContext", SetHelpContext());
}

/// Shows the series stored for the line.
void frmTankSeries::showChanges() {
    asRead = findTankLine(lblTankID->text());
    if (asRead && asRead->tankClass)
        preselect(*asRead->tankClass);
}

/// The series of an application; null if it has none to choose from.
QWidget* frmTankSeries::frameOf(Application application) const {
    switch (application) {
    case Application::Expansion:
        return OptGroupEXP;
    case Application::Thermal:
        return OptGroupTHM;
    case Application::Hydropneumatic:
        return OptGroupHYD;
    case Application::Shock:
    case Application::Package:
        break;
    }
    return nullptr;
}

void frmTankSeries::showFrame(std::optional<Application> application) {
    for (const ApplicationInfo& info : allApplications)
        if (QWidget* frame = frameOf(info.application))
            frame->setVisible(application == info.application);
    shownApplication = application;
    if (!application || !frameOf(*application))
        Dialogs::current().show({"Error loading data", "Error"});
    else if (application == Application::Thermal)
        lblHeader->setText(AppNameThermal());
}

void frmTankSeries::preselect(const QString& stored) {
    for (const Series& series : allSeries)
        if (stored.compare(series.storedCode, Qt::CaseInsensitive) == 0)
            control<QAbstractButton>(series.option)->click();
}

/// False when there is no tank line to size, which the user has been told, or when the user chose to keep
/// someone else's changes.
bool frmTankSeries::storeSizes() {
    QString tankID;
    if (!Session::TankID.read(tankID)) {
        Dialogs::current().show({"Error loading data!\nPlease try again!", "Error", QMessageBox::Critical});
        return false;
    }
    const QString series = txtTankType->text();
    const RequiredSizes sizes = sizesOf(tankID, shownApplication.value_or(Application::Expansion), series);
    TankLine line;
    line.tankClass = series;
    line.requiredVolume = sizes.volume;
    line.requiredAcceptance = sizes.acceptance;
    return saves([&](Record::IfChanged ifChanged) {
        updateTankLine(lblTankID->text(), line, TankLine::sizes(), asRead, ifChanged);
    });
}

void frmTankSeries::Next() {
    const Hourglass hourglass;
    if (ValidateValueEntered(txtTankType, true) && storeSizes())
        leaveFor("frmtankselection");
}

/// A double click chooses and continues.
void frmTankSeries::goOnWith(QAbstractButton* option) {
    option->click();
    cmdNext->click();
}

void frmTankSeries::Previous() {
    const Hourglass hourglass;
    leaveFor(Session::Mode.text() == Session::Modes::Convert ? "frmConvertSteel" : "frmJobConditions");
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
