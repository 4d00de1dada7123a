#include "sizing/frmtankselection.h"

#include "core/base/ApplicationNames.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Catalogue.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "shock/ShockSizes.h"
#include "sizing/CatalogueSearch.h"

#include <QHeaderView>
#include <QLabel>

using namespace UtilityFunctions;

namespace {

/// A list line of a quantity of a model, which sort as numbers and by capacity, with further texts.
std::unique_ptr<ListRow> RowOf(const TankOption& option, const QStringList& more) {
    auto row = std::make_unique<ListRow>(
        QStringList{QString::number(option.quantity), QString::fromStdString(option.model)} + more);
    row->setSortKey(0, option.quantity);
    row->setSortKey(1, option.tankVolume);
    return row;
}

} // namespace

frmtankselection::frmtankselection() : Screen("frmtankselection") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    SortByHeadings(lvOptions);
    lblNoTanks->hide();
    lblConsultFactory->hide();
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdPrevious, ".cmdPrevious", [this] { Previous(); });
    onCancel(cmdCancel, ".cmdCancel", [this] { Cancel(); });
    connect(lvOptions, &QTreeWidget::itemDoubleClicked, this,
            [this] { trap(".lvOptions", [this] { Next(); }); });
}

void frmtankselection::Load() {
    SetStatusText("Multiple options");
    lblJobID->setText(Session::JobID.text());
    QString mode;
    QString application;
    if (!Session::Mode.read(mode) ||
        (mode != Session::Modes::Convert && !Session::TankClass.read(application))) {
        SetStatusText("Error");
        Dialogs::current().show({"Error loading data", "Error", QMessageBox::Critical});
        Tag = "1";
        Screens::unload(name());
        return;
    }
    if (mode == Session::Modes::Convert)
        FindConvertedTanks();
    else if (application == AppNameShock())
        FindSHKTanks();
    else
        FindOtherTanks();
    if (lvOptions->topLevelItemCount() == 0) {
        for (QWidget* hidden : std::initializer_list<QWidget*>{lvOptions, lblHeader1, lblHeader2})
            hidden->hide();
        lblConsultFactory->show();
        lblNoTanks->show();
        cmdNext->setEnabled(false);
    }
}

void frmtankselection::FindOtherTanks() {
    procedure(".FindOtherTanks", [this] {
        if (!BeginSearch({"Qty", "Model No.", "Dimensions"}))
            return;
        const Requirement required = ReadRequirement();
        ShowTanks(FindModels(required.series, required.volume, required.acceptance));
    });
}

void frmtankselection::FindConvertedTanks() {
    procedure(".FindConvertedTanks", [this] {
        if (!BeginSearch({"Qty", "Model No.", "Dimensions"}))
            return;
        const Requirement required = ReadRequirement();
        ShowTanks(FindConvertedModels(required.series, required.volume));
    });
}

frmtankselection::Requirement frmtankselection::ReadRequirement() const {
    Rows tank = ReadTankLine(lblTankID->text());
    return {tank["TankClass"].text(), tank["RequiredVolume"].number(), tank["RequiredAcceptance"].number()};
}

void frmtankselection::ShowTanks(const std::vector<TankOption>& options) {
    ListRows rows;
    for (const TankOption& option : options) {
        rows.push_back(RowOf(option, {ShownNumber(option.tankVolume) + " gal " +
                                      ShownNumber(option.diameter) + " X " + ShownNumber(option.length)}));
        rows.back()->setSortKey(2, option.tankVolume);
    }
    ShowOptions(std::move(rows));
    SearchFamily = "NonSHK";
}

bool frmtankselection::BeginSearch(const QStringList& headings) {
    headings_ = headings;
    FillList(lvOptions, headings, {});
    QString tankID;
    if (!Session::TankID.read(tankID)) {
        Dialogs::current().show({"Error loading data!\nPlease try again!", "Error", QMessageBox::Critical});
        return false;
    }
    lblTankID->setText(tankID);
    return true;
}

void frmtankselection::ShowOptions(ListRows rows) {
    severalTanks = !rows.empty() && rows.front()->text(0).toInt() > 1;
    FillList(lvOptions, headings_, std::move(rows));
}

void frmtankselection::FindSHKTanks() {
    procedure(".FindSHKTanks", [this] {
        if (!BeginSearch({"Qty", "Model No.", "Leak Load", "Pump Startup Delay"}))
            return;
        const Requirement required = ReadRequirement();
        const ShockConditions conditions = ReadShockConditions();
        const double acceptance = ShockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                        conditions.atmosphericPressure);
        const double area = PipeArea(conditions.bore);
        ListRows rows;
        for (const TankOption& option : FindShockModels(required.series, required.volume, conditions.bore)) {
            const double leakLoad =
                LeakLoad(acceptance, option.tankVolume, option.quantity, conditions.length, area);
            const double delay =
                PumpStartupDelay(acceptance, option.tankVolume, option.quantity, conditions.flowRate);
            rows.push_back(RowOf(
                option, {FormattedNumber(leakLoad, "#,##0.0%"), FormattedNumber(delay, "#,##0.0 sec")}));
            rows.back()->setSortKey(2, leakLoad);
            rows.back()->setSortKey(3, delay);
        }
        ShowOptions(std::move(rows));
        SearchFamily = "SHK";
    });
}

ShockConditions frmtankselection::ReadShockConditions() const {
    Rows tank = ReadTankLine(lblTankID->text());
    return {.bore = PipeBore(tank["PipeIndex"].text()),
            .length = tank["PipeLength"].number(),
            .flowRate = tank["FlowRate"].number(),
            .flowPressure = tank["FlowPressure"].number(),
            .staticPressure = tank["StaticPressure"].number(),
            .atmosphericPressure = tank["AtmPressure"].number()};
}

void frmtankselection::SaveRecord() {
    const QTreeWidgetItem* chosen = lvOptions->currentItem();
    if (lvOptions->isHidden() || !chosen || chosen->text(0).isEmpty())
        return;
    const Hourglass hourglass;
    Rows tank = ReadTankLine(lblTankID->text(), CursorType::Keyset);
    if (tank.AtEnd())
        return;
    tank["Qty"] = chosen->text(0);
    tank["ModelNo"] = chosen->text(1);
    if (SearchFamily == "SHK") { // the stored figures are those shown, with their one decimal
        tank["LeakLoad"] = ToNumber(chosen->text(2).chopped(1)) / 100;
        tank["PumpRunTime"] = ToNumber(chosen->text(3).chopped(4));
    }
    tank->Update();
}

void frmtankselection::Next() {
    if (!cmdNext->isEnabled())
        return;
    procedure(".SaveRecord", [this] { SaveRecord(); });
    Tag = "1";
    Screens::unload(name());
    ShowResults();
    SetStatusText("Selection completed");
}

void frmtankselection::ShowResults() {
    QString mode;
    QString application;
    if (!Session::Mode.read(mode))
        return;
    if (mode == Session::Modes::Convert) {
        Screens::open("frmResultsConvert");
        return;
    }
    if (!Session::TankClass.read(application))
        return;
    const QString screen = application == AppNameShock() ? "frmResultSHK" : "frmResults";
    const Screen* results = Screens::load(screen);
    if (results && severalTanks && application != AppNameShock())
        for (const char* warning : {"lblConsultFactory", "lblMsgFlag"})
            results->control<QLabel>(warning)->setVisible(true);
    Screens::show(screen);
}

void frmtankselection::Previous() {
    Tag = "1";
    procedure(".SaveRecord", [this] { SaveRecord(); });
    Screens::unload(name());
    QString application;
    if (Session::TankClass.read(application))
        Screens::open(application == AppNameShock() ? "frmJobConditionsSHK" : "frmTankSeries");
}

void frmtankselection::Cancel() {
    Tag = "1";
    CancelJobInput(lblTankID->text()); // the tank's caption here, where other screens give the job's
    Screens::unload(name());
    SetStatusText("Recalc");
}

bool frmtankselection::QueryUnload() {
    if (Tag == "0")
        Cancel();
    SetStatusBarText();
    return true;
}
