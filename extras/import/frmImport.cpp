#include "extras/import/frmImport.h"

#include "core/base/ApplicationNames.h"
#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Fields.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/shell/Trap.h"
#include "core/store/SessionStore.h"
#include "core/store/UserDefaults.h"
#include "extras/import/TextTable.h"
#include "jobs/JobChoice.h"
#include "shock/ShockSizing.h"
#include "sizing/ConditionRules.h"
#include "sizing/Series.h"
#include "sizing/TankSizing.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QProgressDialog>
#include <QSaveFile>

#include <algorithm>
#include <array>

using namespace ApplicationNames;
using namespace Fields;
using namespace Records;
using namespace StatusBar;

namespace {

constexpr qint64 largestFile = 10'000'000; // bytes; 100,000 systems have less
const QString filter = QStringLiteral("Tables (*.csv *.txt *.tsv)");

Fault accessFault(const QFileDevice& file) {
    return {Fault::PathFileAccess,
            ("Path/File access error: " + file.fileName() + ": " + file.errorString()).toStdString()};
}

/// The conditions in a few words, with their units.
QString inWords(const ImportedTank& tank) {
    const TankLine& line = tank.line;
    if (tank.application == Application::Shock)
        return QStringLiteral("%1, %2 ft, %3 gpm, %4 / %5 / %6 psig")
            .arg(shownText(line.pipeIndex), shownText(line.pipeLength), shownText(line.flowRate),
                 shownText(line.flowPressure), shownText(line.staticPressure), shownText(line.shockPressure));
    const QString pressures =
        QStringLiteral("%1 to %2 psig, %3 psia")
            .arg(shownText(line.sopMin), shownText(line.sopMax), shownText(line.atmPressure));
    const QString volume = shownText(line.totSysVolume) + " gal";
    if (tank.application == Application::Hydropneumatic)
        return volume + ", " + pressures;
    return QStringLiteral("%1 of %2, %3 to %4 °F, %5")
        .arg(volume, shownText(line.sysFluidType), shownText(line.sotMin), shownText(line.sotMax), pressures);
}

} // namespace

frmImport::frmImport() : Screen("frmImport") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    for (const auto& [box, application] : {std::pair(cmboSeriesEXP, Application::Expansion),
                                           {cmboSeriesTHM, Application::Thermal},
                                           {cmboSeriesHYD, Application::Hydropneumatic}}) {
        box->addItem(tr("None"), QString());
        for (const Series& series : allSeries)
            if (series.application == application)
                box->addItem(series.code, QString(series.code));
        connect(box, &QComboBox::activated, this, [this] {
            act(".cmboSeries", [this] {
                if (!source.isNull())
                    read(source, sourceName);
            });
        });
    }
    connect(cmboJob, &QComboBox::activated, this, [this] {
        act(".cmboJob", [this] {
            unmarkField(cmboJob);
            JobChoice::take(cmboJob);
        });
    });
    connect(chkLeaveOut, &QCheckBox::toggled, this, [this] { showState(); });
    on(cmdFile, ".cmdFile", [this] { openFile(); });
    on(cmdPaste, ".cmdPaste", [this] { read(QGuiApplication::clipboard()->text(), tr("clipboard")); });
    on(cmdTemplate, ".cmdTemplate", [this] { saveTemplate(); });
    on(cmdOK, ".cmdOK", [this] { store(); });
    onCancel(cmdCancel, ".cmdCancel", [this] { Screens::unload(name()); });
}

void frmImport::Load() {
    setStatusText("Import conditions");
    JobChoice::fill(cmboJob);
    showTanks();
}

void frmImport::openFile() {
    const QString path = Dialogs::current().openFile(filter, {}, windowTitle());
    if (path.isEmpty())
        return;
    const Hourglass hourglass;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw accessFault(file);
    const QByteArray bytes = file.read(largestFile + 1);
    if (bytes.size() > largestFile) {
        Dialogs::current().show(
            {.text = tr("This file is too large for a table of conditions."), .title = windowTitle()});
        return;
    }
    if (file.error() != QFileDevice::NoError)
        throw accessFault(file);
    read(decoded(bytes), QFileInfo(path).fileName());
}

void frmImport::saveTemplate() {
    const QString path = Dialogs::current().saveFile(filter, "conditions.csv");
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    const QByteArray text =
        "\xEF\xBB\xBF" + ConditionTable::sample().toUtf8(); // by which spreadsheets know it
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
        throw accessFault(file);
    setStatusText(tr("Saved a template to %1").arg(path));
}

/// Shows what the text would store. Whoever stops a long search for models keeps what was shown before.
void frmImport::read(const QString& text, const QString& origin) {
    const UserDefaults user = readUserDefaults().value_or(UserDefaults());
    ConditionTable::Systems before = std::exchange(
        systems,
        ConditionTable::systemsIn(text, user.defaultPSIa.value_or(UserDefaults::StandardAtmosphere)));
    if (!chooseModels()) {
        systems = std::move(before);
        return setStatusText(tr("Stopped"));
    }
    source = text.isNull() ? QString("") : text;
    sourceName = origin;
    showTanks();
    (cmdOK->isEnabled() ? static_cast<QWidget*>(cmdOK) : lvLines)->setFocus();
}

QString frmImport::seriesFor(const ImportedTank& tank) const {
    if (const QString given = shownText(tank.line.tankClass); !given.isEmpty())
        return given;
    switch (tank.application.value_or(Application::Package)) {
    case Application::Expansion:
        return cmboSeriesEXP->currentData().toString();
    case Application::Thermal:
        return cmboSeriesTHM->currentData().toString();
    case Application::Hydropneumatic:
        return cmboSeriesHYD->currentData().toString();
    case Application::Shock:
    case Application::Package:
        break;
    }
    return {};
}

/// False when the user stops it.
bool frmImport::chooseModels() {
    constexpr int patience = 800; // milliseconds before the progress shows
    QProgressDialog progress(tr("Choosing models..."), tr("&Stop"), 0, int(systems.tanks.size()), this);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(patience);
    for (ImportedTank& tank : systems.tanks) {
        if (tank.isGood())
            chooseModel(tank);
        progress.setValue(progress.value() + 1);
        if (progress.wasCanceled())
            return false;
    }
    return true;
}

/// Takes the first model that the search offers.
void frmImport::chooseModel(ImportedTank& tank) {
    const QString series = seriesFor(tank);
    if (series.isEmpty()) {
        tank.remark = tr("No series is chosen.");
        return;
    }
    try {
        const auto comparison =
            comparisons.try_emplace(*tank.application, *tank.application).first; // reads the models once
        const auto candidates = comparison->second.candidatesFor(tank.line, tank.bore);
        const auto of = [&](const Candidate& one) { return one.series == series; };
        auto taken = std::ranges::find_if(candidates,
                                          [&](const Candidate& one) { return of(one) && one.isOffered(); });
        if (taken == candidates.end())
            taken = std::ranges::find_if(candidates, of);
        if (taken == candidates.end())
            return;
        const auto tags = tank.line.tags;
        tank.line = taken->line;
        tank.line.tags = tags;
        if (!taken->isOffered()) {
            tank.line.modelNo.reset();
            tank.line.qty.reset();
            tank.remark = tr("No model of the series is large enough.");
        } else {
            tank.remark = taken->notes.join(' ');
        }
    } catch (const DatabaseFault&) {
        throw;
    } catch (const Fault& fault) {
        tank.problems.append(tr("These conditions cannot be sized: %1.").arg(fault.what()));
    }
}

void frmImport::showTanks() {
    ListRows rows;
    for (const ImportedTank& tank : systems.tanks) {
        const TankLine& line = tank.line;
        rows.push_back(std::make_unique<ListRow>(QStringList{
            QString::number(tank.row), shownText(line.tags[0]),
            tank.application ? AppName(*tank.application) : QString(), shownText(line.tankClass),
            tank.isGood() ? inWords(tank) : QString(), shownText(line.modelNo), shownText(line.qty),
            tank.isGood() ? tank.remark : tr("Wrong: %1").arg(tank.problems.join(' '))}));
        rows.back()->setSortKey(0, tank.row);
    }
    fillList(lvLines, {"Line", "Tag", "Application", "Series", "Conditions", "Model No.", "Qty", "Remarks"},
             std::move(rows));
    const bool wrong =
        std::ranges::any_of(systems.tanks, [](const ImportedTank& tank) { return !tank.isGood(); });
    chkLeaveOut->setVisible(wrong);
    chkLeaveOut->setChecked(false);
    showState();
}

std::vector<TankLine> frmImport::goodLines() const {
    std::vector<TankLine> lines;
    for (const ImportedTank& tank : systems.tanks)
        if (tank.isGood())
            lines.push_back(tank.line);
    return lines;
}

void frmImport::showState() {
    const std::size_t good = goodLines().size();
    const std::size_t wrong = systems.tanks.size() - good;
    QString state = systems.problems.join(' ');
    if (state.isEmpty() && source.isNull())
        state = tr("Open a file or paste a table whose first line names the columns.");
    else if (state.isEmpty())
        state = tr("%1: %2 systems, %3 wrong.").arg(sourceName).arg(systems.tanks.size()).arg(wrong);
    lblState->setText(state);
    cmdOK->setEnabled(good > 0 && (wrong == 0 || chkLeaveOut->isChecked()));
    setEntered(good > 0);
}

/// Stores all lines in one write, and shows the job.
void frmImport::store() {
    const Hourglass hourglass;
    const QString jobID = cmboJob->currentData().toString();
    if (jobID.isEmpty()) {
        setStatusText(tr("Choose the job that the tanks belong to"));
        markField(cmboJob);
        cmboJob->setFocus();
        return;
    }
    std::vector<TankLine> lines = goodLines();
    for (TankLine& line : lines)
        line.dateCreated = QDateTime::currentDateTime();
    Screens::beginTask([&] {
        Faults::runTrapped(name() + ".cmdOK", [&] {
            addTankLines(jobID, lines);
            Session::JobID.write(jobID);
            Session::TankID.write("");
            Session::Mode.write(Session::Modes::Edit);
            Screens::drop(this);
            Screens::open("frmJobOverview");
            setStatusText(QCoreApplication::translate("frmImport", "Imported %1 tanks").arg(lines.size()));
        });
    });
}
