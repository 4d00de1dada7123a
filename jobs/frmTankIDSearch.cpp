#include "jobs/frmTankIDSearch.h"

#include "core/base/ApplicationNames.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/JobHeader.h"
#include "core/store/Model.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "jobs/TankWork.h"

#include <QLocale>

using namespace ApplicationNames;
using namespace Catalogue;
using namespace Records;
using namespace StatusBar;

namespace {

const QString addNew = QStringLiteral("Add New...");

/// The application of a model; nothing if the catalogue does not have it.
std::optional<Application> applicationOf(const QString& model) {
    const auto found = findModel(model);
    return found ? applicationCoded(shownText(found->app).toStdString()) : std::nullopt;
}

/// The list row of a tank. Its ID sorts by tank number.
std::unique_ptr<ListRow> lineOf(const TankLine& tank) {
    const QDateTime created = tank.dateCreated.value_or(QDateTime());
    auto line = std::make_unique<ListRow>(QStringList{shownText(tank.tankID), shownText(tank.qty),
                                                      shownText(tank.modelNo), shownDate(created.date())});
    line->setSortKey(0, tank.tankNo.value_or(0));
    if (tank.qty)
        line->setSortKey(1, *tank.qty);
    line->setSortKey(3, created);
    return line;
}

} // namespace

frmTankIDSearch::frmTankIDSearch() : Screen("frmTankIDSearch") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    sortByHeadings(lvOptions);
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdPrevious, ".cmdPrevious", [this] { leaveFor("frmJobHeader"); });
    opens(cmdOverview, "frmJobOverview");
    onCancel(cmdCancel, ".cmdCancel", [this] { Cancel(); });
    connect(lvOptions, &QTreeWidget::itemDoubleClicked, this,
            [this] { act(".lvOptions", [this] { Next(); }); });
}

void frmTankIDSearch::Load() {
    setStatusText("Select Tank to Edit");
    ListRows lines;
    QString jobID;
    if (Session::JobID.read(jobID)) {
        lblJobID->setText(jobID);
        for (const TankLine& tank : tankLinesOf(jobID))
            lines.push_back(lineOf(tank));
    }
    lines.push_back(std::make_unique<ListRow>(QStringList{addNew}));
    fillList(lvOptions, {"TankID", "Qty", "ModelNo", "Date Created"}, std::move(lines));
}

QString frmTankIDSearch::selectedTank() const {
    const QTreeWidgetItem* selected = lvOptions->currentItem();
    return selected ? selected->text(0) : QString();
}

void frmTankIDSearch::Next() {
    const Hourglass hourglass;
    const QString tankID = selectedTank();
    if (tankID.isEmpty()) {
        Dialogs::current().show({"Please select an item from the list!", "Error"});
        return;
    }
    if (tankID == addNew) {
        Session::Mode.write(Session::Modes::New);
        leaveFor("frmClassSelect");
        return;
    }
    Session::TankID.write(tankID);
    const auto application = applicationOf(lvOptions->currentItem()->text(2));
    setStatusText("Edit job conditions for " + tankID);
    if (application)
        Session::TankClass.write(AppName(*application));
    // A tank without a model opens in the session's application.
    leaveFor(TankWork::conditionsScreenOf(Session::JobID.text(), application));
}

void frmTankIDSearch::Cancel() {
    SetStatusBarText();
    Screens::unload(name());
}

bool frmTankIDSearch::QueryUnload() {
    Session::TankID.write(selectedTank()); // at every closing, after "Add New..." too
    if (Tag != "1")
        SetStatusBarText();
    return true;
}
