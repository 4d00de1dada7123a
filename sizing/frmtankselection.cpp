#include "sizing/frmtankselection.h"

#include "core/BrennovalMain.h"
#include "core/ErrorReport.h"
#include "core/FieldChecks.h"
#include "core/Gateway.h"
#include "core/Numbers.h"
#include "core/SessionStore.h"

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

void frmtankselection::FindTanks(const QString& sizeColumn) {
    lvOptions->clear();
    lvOptions->setHeaderLabels({"Qty", "Model No.", "Dimensions"});
    QString tankID;
    if (!Session::TankID.read(tankID)) {
        Dialogs::current().show({"Error loading data!\nPlease try again!", "Error", QMessageBox::Critical});
        return;
    }
    lblTankID->setText(tankID);
    QString series;
    double requiredVolume = 0;
    double requiredAcceptance = 0;
    {
        Connection user = openDatabase("User");
        Recordset tank;
        tank.Open("SELECT * FROM tblJobData WHERE TankID = '" + SqlEscape(tankID) + "'", user);
        series = tank["TankClass"].text();
        requiredVolume = tank["RequiredVolume"].number();
        requiredAcceptance = tank["RequiredAcceptance"].number();
    }
    Connection catalogue = openDatabase("Sys");
    const ModelSource source{
        [&](int quantity) -> std::optional<double> {
            const QString times = " * " + QString::number(quantity) + " >= ";
            const QString acceptance =
                sizeColumn == "AcceptanceVolume"
                    ? "AcceptanceVolume" + times + numberText(requiredAcceptance) + " AND "
                    : "";
            Recordset smallest;
            smallest.Open("SELECT Min(" + sizeColumn + ") AS MinAccVol FROM tblModelMaster WHERE " +
                              acceptance + "TankVolume" + times + numberText(requiredVolume) +
                              " GROUP BY Class HAVING CLASS = '" + series + "'",
                          catalogue);
            return smallest.AtEnd() ? std::nullopt : std::optional(smallest["MinAccVol"].number());
        },
        [&](double size) {
            std::vector<TankOption> options;
            Recordset models;
            models.Open("SELECT * FROM tblModelMaster WHERE " + sizeColumn + " = " + numberText(size) +
                            " AND Class = '" + SqlEscape(series) + "'",
                        catalogue);
            for (; !models.AtEnd(); models.MoveNext())
                options.push_back({0, models["ModelDscrptn"].text().toStdString(),
                                   models["TankVolume"].number(), models["TankOD"].number(),
                                   models["OAL"].number()});
            return options;
        }};
    for (const TankOption& option : SearchModels(source))
        lvOptions->addTopLevelItem(
            new QTreeWidgetItem({QString::number(option.quantity), QString::fromStdString(option.model),
                                 numberText(option.tankVolume) + " gal " + numberText(option.diameter) +
                                     " X " + numberText(option.length)}));
    if (lvOptions->topLevelItemCount() > 0)
        lvOptions->setCurrentItem(lvOptions->topLevelItem(0));
    for (int column = 0; column < lvOptions->columnCount(); ++column)
        lvOptions->resizeColumnToContents(column);
    SearchFamily = "NonSHK";
}

void frmtankselection::SaveRecord() {
    const QTreeWidgetItem* chosen = lvOptions->currentItem();
    if (lvOptions->isHidden() || !chosen || chosen->text(0).isEmpty())
        return;
    const Hourglass hourglass;
    Connection connection = openDatabase("User");
    Recordset tank;
    tank.Open("SELECT * FROM tblJobData WHERE TankID = '" + SqlEscape(lblTankID->text()) + "'", connection,
              CursorType::Keyset);
    if (tank.AtEnd())
        return;
    tank["Qty"] = chosen->text(0);
    tank["ModelNo"] = chosen->text(1);
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
    QString mode;
    if (Session::Mode.read(mode)) {
        const QString results = mode == "Convert" ? "frmResultsConvert" : "frmResults";
        Screen* screen = Screens::load(results);
        if (screen && severalTanks && mode != "Convert")
            for (const char* warning : {"lblConsultFactory", "lblMsgFlag"})
                screen->control<QLabel>(warning)->setVisible(true);
        Screens::show(results);
    }
    SetStatusText("Selection completed");
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
