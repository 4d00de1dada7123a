#include "sizing/frmtankselection.h"

#include "core/base/Applications.h"
#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "shock/ShockSizing.h"
#include "sizing/CatalogueSearch.h"
#include "sizing/OpenResults.h"

#include <QHeaderView>
#include <QLabel>

using namespace Deletion;
using namespace Records;
using namespace StatusBar;

namespace {

/// A list row for a quantity of a model, sorted numerically and by capacity, with additional texts.
std::unique_ptr<ListRow> rowOf(const TankOption& option, const QStringList& more) {
    auto row = std::make_unique<ListRow>(
        QStringList{QString::number(option.quantity), QString::fromStdString(option.model)} + more);
    row->setSortKey(0, option.quantity);
    row->setSortKey(1, option.tankVolume);
    return row;
}

/// Where Previous leads: shock arrestors come in one series, so no screen asks for it.
QString screenBefore(Application application) {
    switch (application) {
    case Application::Expansion:
    case Application::Thermal:
    case Application::Hydropneumatic:
        return "frmTankSeries";
    case Application::Shock:
    case Application::Package:
        break;
    }
    return toQString(infoOf(application).conditionsScreen);
}

} // namespace

frmtankselection::frmtankselection() : Screen("frmtankselection") {
    setupUi(this);
    prepare();
    setDefault(cmdNext);
    sortByHeadings(lvOptions);
    lblNoTanks->hide();
    lblConsultFactory->hide();
    on(cmdNext, ".cmdNext", [this] { Next(); });
    on(cmdPrevious, ".cmdPrevious", [this] { Previous(); });
    opens(cmdCompare, "frmCompare");
    onCancel(cmdCancel, ".cmdCancel", [this] { Cancel(); });
    connect(lvOptions, &QTreeWidget::itemDoubleClicked, this,
            [this] { act(".lvOptions", [this] { Next(); }); });
}

void frmtankselection::Load() {
    setStatusText("Multiple options");
    lblJobID->setText(Session::JobID.text());
    QString mode;
    QString application;
    if (!Session::Mode.read(mode) ||
        (mode != Session::Modes::Convert && !Session::TankClass.read(application))) {
        setStatusText("Error");
        Dialogs::current().show({"Error loading data", "Error", QMessageBox::Critical});
        Tag = "1";
        Screens::unload(name());
        return;
    }
    showChanges();
    setTitle(windowTitle() + " " + lblTankID->text());
}

/// Searches again with the line's current requirements.
void frmtankselection::showChanges() {
    if (Session::Mode.text() == Session::Modes::Convert)
        FindConvertedTanks();
    else
        switch (Session::application().value_or(Application::Expansion)) {
        case Application::Shock:
            FindSHKTanks();
            break;
        case Application::Expansion:
        case Application::Thermal:
        case Application::Hydropneumatic:
        case Application::Package:
            FindOtherTanks();
            break;
        }
    const bool found = lvOptions->topLevelItemCount() > 0;
    for (QWidget* shown : std::initializer_list<QWidget*>{lvOptions, lblHeader1, lblHeader2})
        shown->setVisible(found);
    for (QWidget* shown : {lblConsultFactory, lblNoTanks})
        shown->setVisible(!found);
    cmdNext->setEnabled(found);
    cmdCompare->setVisible(Session::Mode.text() != Session::Modes::Convert);
}

void frmtankselection::FindOtherTanks() {
    procedure(".FindOtherTanks", [this] {
        if (!beginSearch({"Qty", "Model No.", "Dimensions"}))
            return;
        const Requirement required = readRequirement();
        showTanks(findModels(required.series, required.volume, required.acceptance));
    });
}

void frmtankselection::FindConvertedTanks() {
    procedure(".FindConvertedTanks", [this] {
        if (!beginSearch({"Qty", "Model No.", "Dimensions"}))
            return;
        const Requirement required = readRequirement();
        showTanks(findConvertedModels(required.series, required.volume));
    });
}

/// Throws RecordGone if there is no line.
frmtankselection::Requirement frmtankselection::readRequirement() {
    asRead = findTankLine(lblTankID->text());
    if (!asRead)
        throw RecordGone("This tank has been deleted.");
    return {asRead->tankClass.value_or(QString()), Record::orZero(asRead->requiredVolume),
            Record::orZero(asRead->requiredAcceptance)};
}

void frmtankselection::showTanks(const std::vector<TankOption>& options) {
    ListRows rows;
    for (const TankOption& option : options) {
        rows.push_back(rowOf(option, {shownNumber(option.tankVolume) + " gal " +
                                      shownNumber(option.diameter) + " X " + shownNumber(option.length)}));
        rows.back()->setSortKey(2, option.tankVolume);
    }
    showOptions(std::move(rows));
    SearchFamily = "NonSHK";
}

bool frmtankselection::beginSearch(const QStringList& headings) {
    headings_ = headings;
    fillList(lvOptions, headings, {});
    QString tankID;
    if (!Session::TankID.read(tankID)) {
        Dialogs::current().show({"Error loading data!\nPlease try again!", "Error", QMessageBox::Critical});
        return false;
    }
    lblTankID->setText(tankID);
    return true;
}

void frmtankselection::showOptions(ListRows rows) {
    severalTanks = !rows.empty() && rows.front()->text(0).toInt() > 1;
    fillList(lvOptions, headings_, std::move(rows));
}

void frmtankselection::FindSHKTanks() {
    procedure(".FindSHKTanks", [this] {
        if (!beginSearch({"Qty", "Model No.", "Leak Load", "Pump Startup Delay"}))
            return;
        const Requirement required = readRequirement();
        const ShockConditions conditions = ShockSizing::conditionsOf(*asRead);
        ListRows rows;
        for (const TankOption& option : findShockModels(required.series, required.volume, conditions.bore)) {
            const ShockSizing::Outcome outcome =
                ShockSizing::outcomeOf(conditions, option.tankVolume, option.quantity);
            rows.push_back(rowOf(option, {outcome.leakLoadText, outcome.delayText}));
            rows.back()->setSortKey(2, outcome.leakLoad);
            rows.back()->setSortKey(3, outcome.delay);
        }
        showOptions(std::move(rows));
        SearchFamily = "SHK";
    });
}

/// False when the user chose to keep someone else's changes.
bool frmtankselection::SaveRecord() {
    const QTreeWidgetItem* chosen = lvOptions->currentItem();
    if (lvOptions->isHidden() || !chosen || chosen->text(0).isEmpty())
        return true;
    const Hourglass hourglass;
    const bool shock = SearchFamily == "SHK";
    TankLine line;
    line.qty = chosen->text(0).toInt();
    line.modelNo = chosen->text(1);
    if (shock)
        ShockSizing::setOutcome(line, {.leakLoadText = chosen->text(2), .delayText = chosen->text(3)});
    const TankLine::Columns columns = shock ? TankLine::shockChoice() : TankLine::choice();
    return saves([&](Record::IfChanged ifChanged) {
        updateTankLine(lblTankID->text(), line, columns, asRead, ifChanged);
    });
}

void frmtankselection::Next() {
    if (!cmdNext->isEnabled())
        return;
    bool saved = false;
    procedure(".SaveRecord", [&] { saved = SaveRecord(); });
    if (!saved)
        return;
    Tag = "1";
    Screens::unload(name());
    showResults();
    setStatusText("Selection completed");
}

void frmtankselection::showResults() {
    QString mode;
    if (!Session::Mode.read(mode))
        return;
    if (mode == Session::Modes::Convert) {
        Screens::open("frmResultsConvert");
        return;
    }
    const auto application = Session::application();
    if (!application)
        return;
    openResults(*application, severalTanks);
}

void frmtankselection::Previous() {
    bool saved = false;
    procedure(".SaveRecord", [&] { saved = SaveRecord(); });
    if (!saved)
        return;
    if (const auto application = Session::application()) {
        leaveFor(screenBefore(*application));
        return;
    }
    Tag = "1";
    Screens::unload(name());
}

void frmtankselection::Cancel() {
    Tag = "1";
    CancelJobInput(lblJobID->text());
    Screens::unload(name());
    setStatusText("Recalc");
}

bool frmtankselection::QueryUnload() {
    if (Tag == "0")
        Cancel();
    SetStatusBarText();
    return true;
}
