#include "sizing/frmtankselection.h"

#include "core/base/Format.h"
#include "core/base/Numbers.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/ErrorReport.h"
#include "core/shell/FieldChecks.h"
#include "core/shell/Lists.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "shock/ShockSizes.h"
#include "sizing/CatalogueSearch.h"

#include <QHeaderView>
#include <QLabel>

using namespace UtilityFunctions;

namespace {

QString numberText(double value) {
    return QString::fromStdString(NumberText(value));
}

} // namespace

frmtankselection::frmtankselection() : Screen("frmtankselection") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    lblNoTanks->hide();
    lblConsultFactory->hide();
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdPrevious, ".cmdPrevious", [this] { Previous(); });
    on(cmdCancel, ".cmdCancel", [this] { Cancel(); });
    connect(lvOptions, &QTreeWidget::itemDoubleClicked, this,
            [this] { trap(".lvOptions", [this] { Next(); }); });
}

void frmtankselection::Load() {
    SetStatusText("Multiple options");
    lblJobID->setText(Session::JobID.text());
    QString mode;
    QString application;
    if (!Session::Mode.read(mode) || (mode != "Convert" && !Session::TankClass.read(application))) {
        SetStatusText("Error");
        Dialogs::current().show({"Error loading data", "Error", QMessageBox::Critical});
        Tag = "1";
        Screens::unload(name());
        return;
    }
    if (mode == "Convert")
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
    Trap(name() + ".FindOtherTanks", [this] {
        if (!BeginSearch({"Qty", "Model No.", "Dimensions"}))
            return;
        const Requirement required = ReadRequirement();
        ShowTanks(FindModels(required.series, required.volume, required.acceptance));
    });
}

void frmtankselection::FindConvertedTanks() {
    Trap(name() + ".FindConvertedTanks", [this] {
        if (!BeginSearch({"Qty", "Model No.", "Dimensions"}))
            return;
        const Requirement required = ReadRequirement();
        ShowTanks(FindConvertedModels(required.series, required.volume));
    });
}

frmtankselection::Requirement frmtankselection::ReadRequirement() const {
    Connection user = openDatabase("User");
    Recordset tank;
    tank.Open(TankQuery(lblTankID->text()), user);
    return {tank["TankClass"].text(), tank["RequiredVolume"].number(), tank["RequiredAcceptance"].number()};
}

void frmtankselection::ShowTanks(const std::vector<TankOption>& options) {
    QList<QStringList> rows;
    for (const TankOption& option : options)
        rows.append({QString::number(option.quantity), QString::fromStdString(option.model),
                     numberText(option.tankVolume) + " gal " + numberText(option.diameter) + " X " +
                         numberText(option.length)});
    ShowOptions(rows);
    SearchFamily = "NonSHK";
}

bool frmtankselection::BeginSearch(const QStringList& headings) {
    lvOptions->clear();
    lvOptions->setHeaderLabels(headings);
    QString tankID;
    if (!Session::TankID.read(tankID)) {
        Dialogs::current().show({"Error loading data!\nPlease try again!", "Error", QMessageBox::Critical});
        return false;
    }
    lblTankID->setText(tankID);
    return true;
}

void frmtankselection::ShowOptions(const QList<QStringList>& rows) {
    for (const QStringList& texts : rows)
        lvOptions->addTopLevelItem(new QTreeWidgetItem(texts));
    if (!rows.isEmpty())
        lvOptions->setCurrentItem(lvOptions->topLevelItem(0));
    FitColumns(lvOptions);
}

void frmtankselection::FindSHKTanks() {
    Trap(name() + ".FindSHKTanks", [this] {
        if (!BeginSearch({"Qty", "Model No.", "Leak Load", "Pump Startup Delay"}))
            return;
        const Requirement required = ReadRequirement();
        const ShockConditions conditions = ReadShockConditions();
        const double acceptance = ShockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                        conditions.atmosphericPressure);
        const double area = PipeArea(conditions.bore);
        QList<QStringList> rows;
        for (const TankOption& option : FindShockModels(required.series, required.volume, conditions.bore)) {
            const double leakLoad =
                LeakLoad(acceptance, option.tankVolume, option.quantity, conditions.length, area);
            const double delay =
                PumpStartupDelay(acceptance, option.tankVolume, option.quantity, conditions.flowRate);
            rows.append({QString::number(option.quantity), QString::fromStdString(option.model),
                         QString::fromStdString(Format(leakLoad, "#,##0.0%")),
                         QString::fromStdString(Format(delay, "#,##0.0 sec"))});
        }
        ShowOptions(rows);
        SearchFamily = "SHK";
    });
}

ShockConditions frmtankselection::ReadShockConditions() const {
    ShockConditions conditions;
    QString pipeIndex;
    {
        Connection user = openDatabase("User");
        Recordset tank;
        tank.Open(TankQuery(lblTankID->text()), user);
        conditions.atmosphericPressure = tank["AtmPressure"].number();
        conditions.flowRate = tank["FlowRate"].number();
        conditions.flowPressure = tank["FlowPressure"].number();
        conditions.staticPressure = tank["StaticPressure"].number();
        conditions.length = tank["PipeLength"].number();
        pipeIndex = tank["PipeIndex"].text();
    }
    Connection catalogue = openDatabase("Sys");
    Recordset pipe;
    pipe.Open("SELECT * FROM tblPipeMaster WHERE PipeIndex = '" + SqlEscape(pipeIndex) + "'", catalogue);
    conditions.bore = pipe["ID"].number();
    return conditions;
}

void frmtankselection::SaveRecord() {
    const QTreeWidgetItem* chosen = lvOptions->currentItem();
    if (lvOptions->isHidden() || !chosen || chosen->text(0).isEmpty())
        return;
    const Hourglass hourglass;
    Connection connection = openDatabase("User");
    Recordset tank;
    tank.Open(TankQuery(lblTankID->text()), connection, CursorType::Keyset);
    if (tank.AtEnd())
        return;
    tank["Qty"] = chosen->text(0);
    tank["ModelNo"] = chosen->text(1);
    if (SearchFamily == "SHK") { // the stored figures are those shown, with their one decimal
        tank["LeakLoad"] = ToDouble(chosen->text(2).chopped(1).toStdString()) / 100;
        tank["PumpRunTime"] = ToDouble(chosen->text(3).chopped(4).toStdString());
    }
    tank.Update();
}

void frmtankselection::Next() {
    if (!cmdNext->isEnabled())
        return;
    procedure(".SaveRecord", [this] { SaveRecord(); });
    const QTreeWidgetItem* first = lvOptions->topLevelItem(0);
    const bool severalTanks = first && first->text(0).toInt() > 1;
    Tag = "1";
    Screens::unload(name());
    ShowResults(severalTanks);
    SetStatusText("Selection completed");
}

void frmtankselection::ShowResults(bool severalTanks) {
    QString mode;
    QString application;
    if (!Session::Mode.read(mode))
        return;
    if (mode == "Convert")
        return Screens::open("frmResultsConvert");
    if (!Session::TankClass.read(application))
        return;
    if (application == AppNameShock())
        return Screens::open("frmResultSHK");
    Screen* results = Screens::load("frmResults");
    if (results && severalTanks)
        for (const char* warning : {"lblConsultFactory", "lblMsgFlag"})
            results->control<QLabel>(warning)->setVisible(true);
    Screens::show("frmResults");
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
