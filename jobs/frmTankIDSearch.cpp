#include "jobs/frmTankIDSearch.h"

#include "core/shell/BrennovalMain.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Lists.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"

#include <QLocale>

using namespace UtilityFunctions;

namespace {

const QString addNew = QStringLiteral("Add New...");

/// The application of a model: its code in the catalogue, its name and its first screen.
struct Road {
    const char* application;
    QString (*name)();
    const char* screen;
};

constexpr Road roads[] = {
    {"EXP", AppNameExpansion, "frmJobConditions"}, {"THM", AppNameThermal, "frmJobConditions"},
    {"HYD", AppNameHydro, "frmJobConditions"},     {"PKG", AppNamePackage, "frmPKGSelect"},
    {"SHK", AppNameShock, "frmJobConditionsSHK"},
};

/// The application code of a model; an empty text for one that the catalogue does not hold.
QString applicationOf(const QString& model) {
    Connection connection = openDatabase("Sys");
    Recordset rows;
    rows.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(model) + "'", connection);
    return rows.AtEnd() ? QString() : rows["App"].text();
}

/// A list line of a tank. Its ID sorts by the tank's number.
std::unique_ptr<ListRow> lineOf(Recordset& tank) {
    const QDateTime created = tank["DateCreated"].dateTime();
    auto line = std::make_unique<ListRow>(QStringList{tank["TankID"].text(), tank["Qty"].text(),
                                                      tank["ModelNo"].text(),
                                                      QLocale().toString(created, QLocale::ShortFormat)});
    line->setSortKey(0, tank["TankNo"].number());
    if (!tank["Qty"].isNull())
        line->setSortKey(1, tank["Qty"].number());
    line->setSortKey(3, created);
    return line;
}

} // namespace

frmTankIDSearch::frmTankIDSearch() : Screen("frmTankIDSearch") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    SortByHeadings(lvOptions);
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdPrevious, ".cmdPrevious", [this] { LeaveFor("frmJobHeader"); });
    on(cmdCancel, ".cmdCancel", [this] { Cancel(); });
    connect(lvOptions, &QTreeWidget::itemDoubleClicked, this,
            [this] { trap(".lvOptions", [this] { Next(); }); });
}

void frmTankIDSearch::Load() {
    SetStatusText("Select Tank to Edit");
    ListRows lines;
    QString jobID;
    if (Session::JobID.read(jobID)) {
        lblJobID->setText(jobID);
        Connection connection = openDatabase("User");
        Recordset tank;
        tank.Open("SELECT * FROM tblJobData WHERE JobID = '" + SqlEscape(jobID) + "'", connection);
        for (; !tank.AtEnd(); tank.MoveNext())
            lines.push_back(lineOf(tank));
    }
    lines.push_back(std::make_unique<ListRow>(QStringList{addNew}));
    FillList(lvOptions, {"TankID", "Qty", "ModelNo", "Date Created"}, std::move(lines));
}

QString frmTankIDSearch::SelectedTank() const {
    const QTreeWidgetItem* selected = lvOptions->currentItem();
    return selected ? selected->text(0) : QString();
}

void frmTankIDSearch::Next() {
    const Hourglass hourglass;
    const QString tankID = SelectedTank();
    if (tankID.isEmpty()) {
        Dialogs::current().show({"Please select an item from the list!", "Error"});
        return;
    }
    if (tankID == addNew) {
        Session::Mode.write("New");
        LeaveFor("frmClassSelect");
        return;
    }
    Session::TankID.write(tankID);
    const QString application = applicationOf(lvOptions->currentItem()->text(2));
    SetStatusText("Edit job conditions for " + tankID);
    QString screen = "frmJobConditions"; // also of a tank without a model, in the session's application
    for (const Road& road : roads)
        if (application == road.application) {
            Session::TankClass.write(road.name());
            screen = road.screen;
        }
    LeaveFor(Session::JobID.text() == "CONVERT" ? "frmConvertSteel" : screen);
}

void frmTankIDSearch::LeaveFor(const QString& screen) {
    const Hourglass hourglass;
    Tag = "1";
    Screens::unload(name());
    Screens::open(screen);
}

void frmTankIDSearch::Cancel() {
    SetStatusBarText();
    Screens::unload(name());
}

bool frmTankIDSearch::QueryUnload() {
    Session::TankID.write(SelectedTank()); // at every closing, "Add New..." too
    if (Tag != "1")
        SetStatusBarText();
    return true;
}
