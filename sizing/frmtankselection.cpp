#include "sizing/frmtankselection.h"

#include "core/BrennovalMain.h"
#include "core/ErrorReport.h"
#include "core/FieldChecks.h"
#include "core/Format.h"
#include "core/Gateway.h"
#include "core/Lists.h"
#include "core/Numbers.h"
#include "core/SessionStore.h"

#include <QHeaderView>
#include <QLabel>

using namespace UtilityFunctions;

namespace {

QString numberText(double value) {
    return QString::fromStdString(NumberText(value));
}

QString tankQuery(const QString& tankID) {
    return "SELECT * FROM tblJobData WHERE TankID = '" + SqlEscape(tankID) + "'";
}

std::optional<double> smallestSize(const QString& sql, Connection& catalogue) {
    Recordset smallest;
    smallest.Open(sql, catalogue);
    return smallest.AtEnd() ? std::nullopt : std::optional(smallest["MinAccVol"].number());
}

std::vector<TankOption> modelsOf(const QString& sql, Connection& catalogue) {
    std::vector<TankOption> options;
    Recordset models;
    models.Open(sql, catalogue);
    for (; !models.AtEnd(); models.MoveNext())
        options.push_back({0, models["ModelDscrptn"].text().toStdString(), models["TankVolume"].number(),
                           models["TankOD"].number(), models["OAL"].number()});
    return options;
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
    Trap(name() + ".FindOtherTanks", [this] { FindTanks("AcceptanceVolume"); });
}

void frmtankselection::FindConvertedTanks() {
    Trap(name() + ".FindConvertedTanks", [this] { FindTanks("TankVolume"); });
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

void frmtankselection::FindTanks(const QString& sizeColumn) {
    if (!BeginSearch({"Qty", "Model No.", "Dimensions"}))
        return;
    QString series;
    double requiredVolume = 0;
    double requiredAcceptance = 0;
    {
        Connection user = openDatabase("User");
        Recordset tank;
        tank.Open(tankQuery(lblTankID->text()), user);
        series = tank["TankClass"].text();
        requiredVolume = tank["RequiredVolume"].number();
        requiredAcceptance = tank["RequiredAcceptance"].number();
    }
    Connection catalogue = openDatabase("Sys");
    const auto smallest = [&](int quantity) {
        const QString times = " * " + QString::number(quantity) + " >= ";
        const QString acceptance = sizeColumn == "AcceptanceVolume"
                                       ? "AcceptanceVolume" + times + numberText(requiredAcceptance) + " AND "
                                       : "";
        return smallestSize("SELECT Min(" + sizeColumn + ") AS MinAccVol FROM tblModelMaster WHERE " +
                                acceptance + "TankVolume" + times + numberText(requiredVolume) +
                                " GROUP BY Class HAVING CLASS = '" + series + "'",
                            catalogue);
    };
    const auto models = [&](double size) {
        return modelsOf("SELECT * FROM tblModelMaster WHERE " + sizeColumn + " = " + numberText(size) +
                            " AND Class = '" + SqlEscape(series) + "'",
                        catalogue);
    };
    QList<QStringList> rows;
    for (const TankOption& option : SearchModels({smallest, models}))
        rows.append({QString::number(option.quantity), QString::fromStdString(option.model),
                     numberText(option.tankVolume) + " gal " + numberText(option.diameter) + " X " +
                         numberText(option.length)});
    ShowOptions(rows);
    SearchFamily = "NonSHK";
}

void frmtankselection::FindSHKTanks() {
    Trap(name() + ".FindSHKTanks", [this] {
        if (!BeginSearch({"Qty", "Model No.", "Leak Load", "Pump Startup Delay"}))
            return;
        ShockConditions conditions;
        QString series;
        QString pipeIndex;
        double requiredVolume = 0;
        {
            Connection user = openDatabase("User");
            Recordset tank;
            tank.Open(tankQuery(lblTankID->text()), user);
            conditions.atmosphericPressure = tank["AtmPressure"].number();
            conditions.flowRate = tank["FlowRate"].number();
            conditions.flowPressure = tank["FlowPressure"].number();
            conditions.staticPressure = tank["StaticPressure"].number();
            series = tank["TankClass"].text();
            requiredVolume = tank["RequiredVolume"].number();
            pipeIndex = tank["PipeIndex"].text();
            conditions.length = tank["PipeLength"].number();
        }
        Connection catalogue = openDatabase("Sys");
        {
            Recordset pipe;
            pipe.Open("SELECT * FROM tblPipeMaster WHERE PipeIndex = '" + SqlEscape(pipeIndex) + "'",
                      catalogue);
            conditions.bore = pipe["ID"].number();
        }
        ShowOptions(ShockOptions(conditions, series, requiredVolume, catalogue));
        SearchFamily = "SHK";
    });
}

QList<QStringList> frmtankselection::ShockOptions(const ShockConditions& conditions, const QString& series,
                                                  double requiredVolume, Connection& catalogue) {
    const double acceptance = ShockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                    conditions.atmosphericPressure);
    const double area = PipeArea(conditions.bore);
    // With n tanks side by side, the connection of each must reach 0.47 bores over the root of n.
    const auto smallest = [&](int quantity) {
        const QString tanks = QString::number(quantity);
        return smallestSize(
            "SELECT Min(AcceptanceVolume) AS MinAccVol FROM tblModelMaster WHERE TankVolume * " + tanks +
                " >= " + numberText(requiredVolume) + " AND TankSysConn >= (1/" + tanks + "^.5) * (" +
                numberText(conditions.bore) + " * .47) GROUP BY Class HAVING CLASS = '" + series + "'",
            catalogue);
    };
    const auto models = [&](double size) {
        return modelsOf("SELECT * FROM tblModelMaster WHERE AcceptanceVolume = " + numberText(size) +
                            " AND Class = '" + series + "'",
                        catalogue);
    };
    QList<QStringList> rows;
    for (const TankOption& option : SearchShockModels({smallest, models})) {
        const double leakLoad =
            LeakLoad(acceptance, option.tankVolume, option.quantity, conditions.length, area);
        const double delay =
            PumpStartupDelay(acceptance, option.tankVolume, option.quantity, conditions.flowRate);
        rows.append({QString::number(option.quantity), QString::fromStdString(option.model),
                     QString::fromStdString(Format(leakLoad, "#,##0.0%")),
                     QString::fromStdString(Format(delay, "#,##0.0 sec"))});
    }
    return rows;
}

void frmtankselection::SaveRecord() {
    const QTreeWidgetItem* chosen = lvOptions->currentItem();
    if (lvOptions->isHidden() || !chosen || chosen->text(0).isEmpty())
        return;
    const Hourglass hourglass;
    Connection connection = openDatabase("User");
    Recordset tank;
    tank.Open(tankQuery(lblTankID->text()), connection, CursorType::Keyset);
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
