#include "extras/import/frmImport.h"

#include "core/base/ApplicationNames.h"
#include "core/base/Fault.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/shell/Trap.h"
#include "core/store/NewTankLines.h"
#include "core/store/SessionStore.h"
#include "jobs/InFront.h"
#include "jobs/JobChoice.h"
#include "sizing/Series.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace StatusBar;

namespace {

const QString textFilter = QStringLiteral("CSV Files (*.csv *.txt)");
constexpr qint64 largestFile = 10'000'000; // bytes; the most lines take a tenth

QStringList headings() {
    return {"Line",  "Tag",         "Application", "Series",     "Model No.",    "Qty",        "Message",
            "Fluid", "Volume, gal", "Min., °F",    "Max., °F",   "Min., psig",   "Max., psig", "Atm., psia",
            "Pipe",  "Length, ft",  "Flow, gpm",   "Flow, psig", "Static, psig", "Shock, psig"};
}
constexpr int numberColumn = 0;
constexpr int messageColumn = 6;

/// The boxes behind the columns after the message.
const char* const shownBoxes[] = {"cmboFluidType", "txtTotSysFluid", "txtSOTMin",      "txtSOTMax",
                                  "txtSOPMin",     "txtSOPMax",      "txtAtmPressure", "PipeIndex",
                                  "PipeLength",    "FlowRate",       "FlowPressure",   "StaticPressure",
                                  "ShockPressure"};

QStringList messagesOf(const ImportedLine& line) {
    return line.isRight() ? line.remarks : line.read.problems;
}

/// The first problems of a text, as many as have room below the table.
QString problemsInShort(const QStringList& problems) {
    constexpr qsizetype most = 3;
    QStringList shown;
    for (const QString& each : problems.first(std::min(most, problems.size())))
        shown.append(beginningOf(each));
    if (problems.size() > most)
        shown.last() += QStringLiteral(" (%1 more)").arg(problems.size() - most);
    return shown.join('\n');
}

std::unique_ptr<ListRow> rowOf(const ImportedLine& line) {
    const ImportText::Line& read = line.read;
    QStringList texts{QString::number(read.number),
                      read.tag,
                      read.application ? ApplicationNames::AppName(*read.application) : QString(),
                      read.series,
                      line.model,
                      line.line.qty ? QString::number(*line.line.qty) : QString(),
                      messagesOf(line).join(' ')};
    const QStringList own = read.application ? ImportText::boxesOf(*read.application) : QStringList();
    for (const char* box : shownBoxes)
        texts.append(own.contains(box) ? read.boxes.value(box) : QString());
    auto row = std::make_unique<ListRow>(texts);
    row->setSortKey(numberColumn, read.number);
    row->setToolTip(messageColumn, messagesOf(line).join(u'\n'));
    return row;
}

} // namespace

frmImport::frmImport() : Screen("frmImport") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    fillSeries();
    sortByHeadings(lvLines);
    lvLines->setProperty("narrow", true); // its columns scroll in it
    on(cmdFile, ".cmdFile", [this] { openFile(); });
    on(cmdPaste, ".cmdPaste", [this] { paste(); });
    on(cmdTemplate, ".cmdTemplate", [this] { saveTemplate(); });
    on(cmdOK, ".cmdOK", [this] { store(); });
    onCancel(cmdCancel, ".cmdCancel", [this] { Screens::unload(name()); });
    JobChoice::prepare(cmboJob);
    connect(cmboJob, &QComboBox::activated, this,
            [this] { act(".cmboJob", [this] { JobChoice::take(cmboJob); }); });
    connect(lvLines, &QTreeWidget::currentItemChanged, this, [this] { showChosen(); });
    for (QComboBox* box : {cmboExpansion, cmboThermal, cmboHydro})
        connect(box, &QComboBox::currentIndexChanged, this, [this] { trap(".begin", [this] { begin(); }); });
}

void frmImport::fillSeries() {
    for (const auto& [box, application] : {std::pair(cmboExpansion, Application::Expansion),
                                           {cmboThermal, Application::Thermal},
                                           {cmboHydro, Application::Hydropneumatic}})
        for (const std::string_view series : seriesOf(application))
            box->addItem(toQString(series));
}

ImportSizing::ChosenSeries frmImport::chosenSeries() const {
    return {{Application::Expansion, cmboExpansion->currentText()},
            {Application::Thermal, cmboThermal->currentText()},
            {Application::Hydropneumatic, cmboHydro->currentText()}};
}

void frmImport::Load() {
    setStatusText("Import conditions");
    JobChoice::fill(cmboJob, InFront::job());
    fillTable();
    finish();
    setEntered(false);
}

bool frmImport::QueryUnload() {
    ++round; // ends the sizing
    SetStatusBarText();
    return true;
}

void frmImport::openFile() {
    const QString path = Dialogs::current().openFile(textFilter, {}, tr("Import conditions"));
    if (path.isEmpty())
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestFile) {
        const QString why = file.isOpen() ? tr("it is too large") : file.errorString();
        Dialogs::current().show(
            {.text = tr("This file cannot be read: %1.").arg(why), .title = tr("Import conditions")});
        return;
    }
    take(ImportText::decoded(file.readAll()), QFileInfo(path).fileName());
}

void frmImport::paste() {
    take(QApplication::clipboard()->text(), tr("From the clipboard"));
}

void frmImport::saveTemplate() {
    const QString path = Dialogs::current().saveFile("CSV Files (*.csv)", "conditions");
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    const QByteArray text = ImportText::sample();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        Dialogs::current().show({.text = tr("The template cannot be saved: %1.").arg(file.errorString()),
                                 .title = tr("Import conditions")});
        return;
    }
    setStatusText(tr("Saved the template"));
}

void frmImport::take(const QString& text, const QString& origin) {
    table = ImportText::read(text);
    lblOrigin->setText(origin);
    lvLines->setFocus(); // where Return means OK
    begin();
}

/// Sizes all lines again, a slice at a time, so that the user can go on and close the screen.
void frmImport::begin() {
    stopAsking();
    ++round;
    lines.clear();
    sizing.reset();
    if (!table)
        return;
    fillTable(); // if the data cannot be read, nothing of the table before is left to store
    prgLines->setRange(0, std::max(1, int(table->lines.size())));
    lines.reserve(table->lines.size());
    work();
}

/// What a locked database has stopped goes on with OK.
void frmImport::work() {
    halted = true;
    try {
        workOn();
    } catch (const Fault&) {
        showState();
        throw;
    }
}

void frmImport::workOn() {
    constexpr int slice = 200; // milliseconds
    const ImportSizing::ChosenSeries series = chosenSeries();
    QElapsedTimer clock;
    clock.start();
    if (!sizing)
        sizing.emplace();
    while (lines.size() < table->lines.size() && !clock.hasExpired(slice))
        lines.push_back(sizing->sized(table->lines[lines.size()], series));
    halted = false;
    if (lines.size() == table->lines.size()) {
        fillTable();
        return finish();
    }
    showState();
    QTimer::singleShot(0, this, [this, begun = round] {
        if (begun == round)
            trap(".work", [this] { work(); });
    });
}

void frmImport::finish() {
    sizing.reset();
    showState();
}

void frmImport::fillTable() {
    ListRows rows;
    for (const ImportedLine& line : lines)
        rows.push_back(rowOf(line));
    fillList(lvLines, headings(), std::move(rows), Selected::None);
    const auto wrong = std::ranges::find_if_not(lines, &ImportedLine::isRight);
    if (wrong == lines.end())
        return showChosen();
    for (QTreeWidgetItem* row : lvLines->findItems(QString::number(wrong->read.number), Qt::MatchExactly))
        lvLines->setCurrentItem(row);
}

/// Shows the messages of the chosen line in full, for which its column may be too narrow. Those of the first
/// wrong line are in the state already.
void frmImport::showChosen() {
    const QTreeWidgetItem* row = lvLines->currentItem();
    const auto line = std::ranges::find_if(lines, [row](const ImportedLine& each) {
        return row && row->text(numberColumn) == QString::number(each.read.number);
    });
    const bool shown = line == std::ranges::find_if_not(lines, &ImportedLine::isRight);
    const QStringList messages = shown || line == lines.end() ? QStringList() : messagesOf(*line);
    lblMessage->setVisible(!messages.isEmpty());
    if (!messages.isEmpty())
        lblMessage->setText(tr("Line %1: %2").arg(line->read.number).arg(beginningOf(messages.join(' '))));
}

bool frmImport::isReady() const {
    return table && table->problems.isEmpty() && !lines.empty() && lines.size() == table->lines.size() &&
           std::ranges::all_of(lines, &ImportedLine::isRight);
}

/// Says what OK would do, or what is in its way.
void frmImport::showState() {
    const bool working = table && lines.size() < table->lines.size();
    prgLines->setVisible(working);
    prgLines->setValue(int(lines.size()));
    if (!table)
        return lblState->setText(tr("Open a file with one system a line, or paste it from a spreadsheet. The "
                                    "template shows the columns."));
    if (working && halted)
        return lblState->setText(tr("The lines could not be sized. OK tries again."));
    if (working)
        return lblState->setText(tr("Line %1 of %2").arg(lines.size()).arg(table->lines.size()));
    if (!table->problems.isEmpty())
        return lblState->setText(problemsInShort(table->problems));
    const auto wrong = std::ranges::find_if_not(lines, &ImportedLine::isRight);
    if (wrong != lines.end()) {
        const auto count =
            std::ranges::count_if(lines, [](const ImportedLine& each) { return !each.isRight(); });
        return lblState->setText(tr("%1 of %2 lines cannot be stored. Line %3: %4")
                                     .arg(count)
                                     .arg(lines.size())
                                     .arg(wrong->read.number)
                                     .arg(beginningOf(wrong->read.problems.join(' '))));
    }
    const auto without =
        std::ranges::count_if(lines, [](const ImportedLine& each) { return each.model.isEmpty(); });
    lblState->setText(
        without == 0 ? tr("Lines to store: %1").arg(lines.size())
                     : tr("Lines to store: %1, of which without a model: %2").arg(lines.size()).arg(without));
}

/// Stores all lines in one transaction, and shows their job. Otherwise it says why it cannot.
void frmImport::store() {
    const Hourglass hourglass;
    if (halted)
        return work(); // the user has not seen yet what would be stored
    if (!isReady())
        return ask(lblState->text().replace(u'\n', u' '));
    const QString jobID = JobChoice::require(cmboJob, tr("Choose the job that the tanks belong to"));
    if (jobID.isEmpty())
        return;
    if (const int room = Records::roomForTankLines(jobID); std::cmp_greater(lines.size(), room)) {
        Dialogs::current().show(
            {.text = tr("Job %1 has numbers for %2 more tanks only. Nothing has been stored.")
                         .arg(jobID)
                         .arg(room),
             .title = tr("Import conditions")});
        return;
    }
    const std::optional<JobHeader> newJob = JobChoice::newHeader(cmboJob);
    Screens::beginTask([&] {
        Faults::runTrapped(name() + ".cmdOK", [&] {
            std::vector<TankLine> tanks;
            for (const ImportedLine& each : lines) {
                tanks.push_back(each.line);
                tanks.back().dateCreated = QDateTime::currentDateTime();
            }
            QStringList added;
            procedure(".store", [&] {
                added = newJob ? Records::addJobWithTankLines(*newJob, tanks)
                               : Records::addTankLines(jobID, tanks);
            });
            if (added.isEmpty()) // another copy of the program was faster
                return JobChoice::refuseNew(cmboJob);
            Session::JobID.write(jobID);
            Session::TankID.write("");
            Session::Mode.write(Session::Modes::Edit);
            Screens::drop(this);
            Screens::open("frmJobOverview");
            setStatusText(QStringLiteral("Imported %1 tanks").arg(added.size()));
        });
    });
}
