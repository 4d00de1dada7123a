#include "extras/overview/frmJobOverview.h"

#include "core/base/ApplicationNames.h"
#include "core/base/Text.h"
#include "core/shell/Commands.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/shell/Trap.h"
#include "core/store/Deletion.h"
#include "core/store/Gateway.h"
#include "core/store/JobCopies.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"
#include "documents/submittals/ResultScreen.h"
#include "documents/submittals/Submittals.h"
#include "jobs/JobIDs.h"
#include "jobs/JobSearch.h"
#include "jobs/OpenOverview.h"
#include "jobs/TankWork.h"

#include <QKeyEvent>

#include <algorithm>

using namespace ApplicationNames;
using namespace Records;
using namespace StatusBar;

namespace {

/// A line and its place in the list, which sorts by numbers where there are any.
std::unique_ptr<ListRow> rowOf(const JobLine& shown, int place) {
    const int quantity = shown.line.qty.value_or(0);
    const double volume = shown.model ? quantity * Record::orZero(shown.model->tankVolume) : 0;
    auto row = std::make_unique<ListRow>(QStringList{
        shownText(shown.line.tankID),
        shown.line.jobID == reservedJob() ? QStringLiteral("Steel tank conversion")
        : shown.application               ? AppName(*shown.application)
                                          : QString(),
        shownText(shown.line.modelNo), shownText(shown.line.qty),
        volume > 0 ? formattedNumber(volume, "#,##0.## gal") : QString(), shown.tags(), shown.state()});
    row->setSortKey(0, place);
    if (shown.line.qty)
        row->setSortKey(3, quantity);
    if (volume > 0)
        row->setSortKey(4, volume);
    row->setToolTip(6, shown.notes.join(u'\n'));
    return row;
}

} // namespace

frmJobOverview::frmJobOverview() : Screen("frmJobOverview") {
    setupUi(this);
    prepare();
    sortByHeadings(lvTanks);
    letGiveWay(lvTanks, {1, 5}); // application and tags
    lvTanks->installEventFilter(this);
    cmdCopyTank->installEventFilter(this);
    // The list itself is silent while the chosen row is restored after others' changes.
    connect(lvTanks->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { showChosen(); });
    connect(lvTanks, &QTreeWidget::itemDoubleClicked, this,
            [this] { (cmdResults->isEnabled() ? cmdResults : cmdConditions)->click(); });
    onChosen(cmdResults, ".cmdResults", [this](const JobLine& line) { openResults(line); });
    onChosen(cmdConditions, ".cmdConditions", [this](const JobLine& line) {
        openFor(line, Session::Modes::Edit, [&] {
            setStatusText("Edit job conditions for " + shownText(line.line.tankID));
            Screens::open(TankWork::conditionsScreenOf(lblJobID->text(), line.application));
        });
    });
    onChosen(cmdCopyTank, ".cmdCopyTank", [this](const JobLine& line) { copyTank(line); });
    onChosen(cmdDelete, ".cmdDelete", [this](const JobLine& line) { deleteTank(line); });
    for (const auto& [button, screen] : {std::pair<QAbstractButton*, const char*>(cmdTags, "frmUnitTagData"),
                                         {cmdSpecification, "frmResultSpecs"}})
        onChosen(button, "." + button->objectName(), [this, screen = QString(screen)](const JobLine& line) {
            openFor(line, Session::Modes::Edit, [&] { Screens::open(screen); });
        });
    onChosen(cmdSubmittal, ".cmdSubmittal", [this](const JobLine& line) {
        openFor(line, Session::Modes::Edit,
                [&] { Submittals::showReport(Submittals::SetReport(shownText(line.line.modelNo))); });
    });
    onChosen(cmdCalculation, ".cmdCalculation", [this](const JobLine& line) {
        openFor(line, Session::Modes::Edit, [] { Submittals::showReport("rptCalculation"); });
    });
    onChosen(cmdUp, ".cmdUp", [this](const JobLine& line) { move(line, -1); });
    onChosen(cmdDown, ".cmdDown", [this](const JobLine& line) { move(line, 1); });
    on(cmdAdd, ".cmdAdd", [this] { openInJob("frmClassSelect"); });
    on(cmdHeader, ".cmdHeader", [this] { openInJob(JobSearch::editScreenOf(lblJobID->text())); });
    on(cmdSchedule, ".cmdSchedule", [this] { openInJob("frmSchedule"); });
    on(cmdPackage, ".cmdPackage", [] {
        if (const auto package = Commands::handlerOf("mnuPackage"))
            package();
    });
    cmdPackage->setVisible(bool(Commands::handlerOf("mnuPackage")));
    on(cmdCopyJob, ".cmdCopyJob", [this] { copyJob(); });
    onCancel(cmdClose, ".cmdClose", [this] { Screens::unload(name()); });
}

/// A button for the chosen tank line. The list is read anew first if others have changed the data: one of
/// them may have deleted the line.
void frmJobOverview::onChosen(QAbstractButton* button, const QString& procedure,
                              const std::function<void(const JobLine&)>& handler) {
    connect(button, &QAbstractButton::clicked, this, [this, procedure, handler] {
        const JobLine* line = chosen();
        if (!line)
            return;
        const QString tankID = shownText(line->line.tankID);
        if (Screens::freshen(this))
            act(procedure, [&] {
                const Hourglass hourglass;
                actOn(tankID, handler);
            });
    });
}

void frmJobOverview::actOn(const QString& tankID, const std::function<void(const JobLine&)>& handler) {
    try {
        const auto found = std::ranges::find(
            lines, tankID, [](const JobLine& shown) { return shownText(shown.line.tankID); });
        if (found == lines.end())
            throw RecordGone("This tank has been deleted.");
        const JobLine taken = *found; // the list may be filled again
        handler(taken);
    } catch (const RecordGone& gone) {
        if (!readJobHeader(lblJobID->text()))
            throw;
        Dialogs::current().show({.text = QString::fromUtf8(gone.what()), .title = "Error"});
        fillTanks(); // the job has others
    }
}

bool frmJobOverview::eventFilter(QObject* object, QEvent* event) {
    if (object == cmdCopyTank && event->type() == QEvent::MouseButtonDblClick)
        return true; // one copy is meant
    if (object == lvTanks && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        QAbstractButton* const button = key->key() == Qt::Key_Delete          ? cmdDelete
                                        : key->modifiers() != Qt::AltModifier ? nullptr
                                        : key->key() == Qt::Key_Up            ? cmdUp
                                        : key->key() == Qt::Key_Down          ? cmdDown
                                                                              : nullptr;
        if (button) {
            button->click();
            return true;
        }
    }
    return Screen::eventFilter(object, event);
}

void frmJobOverview::Load() {
    setStatusText("Job overview");
    lblJobID->setText(Session::JobID.text());
    setTitle("Job Overview " + lblJobID->text());
    showHeader();
    fillTanks();
}

bool frmJobOverview::QueryUnload() {
    SetStatusBarText();
    return true;
}

void frmJobOverview::showHeader() {
    const JobHeader header = readJobHeader(lblJobID->text()).value_or(JobHeader());
    lblJobDscrptn->setText(shownText(header.jobDscrptn));
    QStringList names;
    for (const auto& [caption, value] :
         {std::pair(tr("Engineer"), shownText(header.engineer)),
          {tr("Contractor"), shownText(header.contractor)},
          {tr("Last saved"), shownDate(header.dateCreated.value_or(QDateTime()).date())}})
        if (!value.isEmpty())
            names.append(caption + ": " + value);
    lblNames->setText(names.join("   "));
    cmdHeader->setVisible(lblJobID->text() != reservedJob()); // which has none
    cmdAdd->setVisible(lblJobID->text() != reservedJob());
    cmdCopyJob->setVisible(lblJobID->text() != reservedJob());
}

void frmJobOverview::fillTanks() {
    lines = jobLinesOf(lblJobID->text());
    ListRows rows;
    for (std::size_t i = 0; i < lines.size(); ++i)
        rows.push_back(rowOf(lines[i], int(i)));
    fillList(lvTanks, {"TankID", "Application", "Model No.", "Qty", "Volume", "Tags", "State"},
             std::move(rows));
    showChosen();
}

void frmJobOverview::choose(const QString& tankID) {
    for (QTreeWidgetItem* row : lvTanks->findItems(tankID, Qt::MatchFixedString))
        lvTanks->setCurrentItem(row);
    lvTanks->setFocus(); // whose keys move and delete it
}

const JobLine* frmJobOverview::chosen() const {
    const int place = chosenPlace();
    return place < 0 ? nullptr : &lines[std::size_t(place)];
}

/// The place of the chosen line among the job's, however the list is sorted; -1 without one.
int frmJobOverview::chosenPlace() const {
    const QTreeWidgetItem* row = lvTanks->currentItem();
    if (!row)
        return -1;
    const auto found = std::ranges::find(lines, row->text(0),
                                         [](const JobLine& shown) { return shownText(shown.line.tankID); });
    return found == lines.end() ? -1 : int(found - lines.begin());
}

/// Offers what the chosen line allows.
void frmJobOverview::showChosen() {
    const JobLine* line = chosen();
    const bool sized = line && line->model;
    for (QAbstractButton* button :
         std::initializer_list<QAbstractButton*>{cmdConditions, cmdCopyTank, cmdDelete, cmdTags})
        button->setEnabled(line);
    for (QAbstractButton* button :
         std::initializer_list<QAbstractButton*>{cmdResults, cmdSpecification, cmdSubmittal})
        button->setEnabled(sized);
    cmdCalculation->setEnabled(line && (line->line.requiredVolume || sized));
    setDefault(sized ? cmdResults : cmdConditions);
    const int place = chosenPlace();
    cmdUp->setEnabled(place > 0);
    cmdDown->setEnabled(line && place + 1 < std::ssize(lines));
    lblNotes->setText(line ? line->notes.join(' ') : QString());
}

/// Opens something for a line in a task of its own, so that the screens of another line stay with that
/// line.
void frmJobOverview::openFor(const JobLine& line, const QString& mode, const std::function<void()>& open) {
    Screens::beginTask([&] {
        Faults::runTrapped(name() + ".open", [&] {
            Session::Mode.write(mode);
            Session::JobID.write(lblJobID->text());
            Session::TankID.write(shownText(line.line.tankID));
            if (line.application)
                Session::TankClass.write(AppName(*line.application));
            open();
        });
    });
}

void frmJobOverview::openResults(const JobLine& line) {
    const QString job = lblJobID->text();
    const QString mode =
        job == reservedJob() ? QString(Session::Modes::Convert) : QString(Session::Modes::Edit);
    openFor(line, mode, [&] { Screens::open(TankWork::resultsScreenOf(job, line.application)); });
}

/// Opens a screen for the job itself; a new tank is one of mode "New".
void frmJobOverview::openInJob(const QString& screen) {
    const Hourglass hourglass;
    Screens::beginTask([&] {
        Faults::runTrapped(name() + ".open", [&] {
            Session::Mode.write(screen == "frmClassSelect" ? Session::Modes::New : Session::Modes::Edit);
            Session::JobID.write(lblJobID->text());
            Session::TankID.write("");
            Screens::open(screen);
        });
    });
}

void frmJobOverview::copyTank(const JobLine& line) {
    const QString copy = copyTankLine(shownText(line.line.tankID));
    fillTanks();
    choose(copy);
    setStatusText(tr("Added tank %1").arg(copy));
}

void frmJobOverview::deleteTank(const JobLine& line) {
    if (!confirmDeletion(
            "The selected item(s) will be deleted!\nDo you want to delete the selected item(s)?"))
        return;
    const int place = chosenPlace();
    Deletion::deleteTankLines({shownText(line.line.tankID)});
    fillTanks();
    if (!lines.empty()) // the next one, or the last
        choose(shownText(lines[std::min(std::size_t(place), lines.size() - 1)].line.tankID));
}

/// Moves a line among the documents; its number stays. Its neighbour may be gone by now.
void frmJobOverview::move(const JobLine& line, int by) {
    const QString tankID = shownText(line.line.tankID);
    QStringList order;
    for (const JobLine& shown : lines)
        order.append(shownText(shown.line.tankID));
    const qsizetype place = order.indexOf(tankID);
    if (place < 0 || place + by < 0 || place + by >= order.size())
        return;
    order.swapItemsAt(place, place + by);
    orderTankLines(lblJobID->text(), order);
    fillTanks();
    choose(tankID);
}

void frmJobOverview::copyJob() {
    const QString copy = askForJobID(tr("Duplicate job"), tr("ID of the new job:"));
    if (copy.isEmpty())
        return;
    if (!JobCopies::duplicate(Gateway::openDatabase("User"), lblJobID->text(), copy))
        return refuseJobID(jobExists); // another copy of the program was faster
    setStatusText(tr("Added job %1").arg(copy));
    Screens::beginTask([&] { Faults::runTrapped(name() + ".open", [&] { openOverviewOf(copy); }); });
}
