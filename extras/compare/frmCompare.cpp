#include "extras/compare/frmCompare.h"

#include "core/base/ApplicationNames.h"
#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/look/Appearance.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/shell/Trap.h"
#include "core/store/DataState.h"
#include "core/store/JobHeader.h"
#include "core/store/NewTankLines.h"
#include "core/store/SessionStore.h"
#include "core/store/UserDefaults.h"
#include "documents/drawings/Drawings.h"
#include "documents/submittals/ResultScreen.h"
#include "estimates/Estimator.h"
#include "estimates/MetricPad.h"
#include "estimates/Pipes.h"
#include "extras/compare/CompareTable.h"
#include "jobs/InFront.h"
#include "jobs/JobChoice.h"
#include "shock/ShockSizing.h"
#include "sizing/ConditionRules.h"
#include "sizing/FluidLimits.h"
#include "sizing/OpenResults.h"
#include "sizing/Series.h"
#include "sizing/TemperatureRange.h"

#include <QEvent>

#include <algorithm>

using namespace ApplicationNames;
using namespace Fields;
using namespace Records;
using namespace StatusBar;

namespace {

constexpr Application comparable[] = {Application::Expansion, Application::Thermal,
                                      Application::Hydropneumatic, Application::Shock};

} // namespace

frmCompare::frmCompare() : Screen("frmCompare") {
    setupUi(this);
    prepare();
    JobChoice::prepare(cmboJob);
    setDefault(cmdUse);
    cmdFindPipe2->setIcon(Appearance::icon("search"));
    for (const Application each : comparable)
        cmboApplication->addItem(AppName(each));
    for (const FluidLimits& row : fluidLimits)
        cmboFluidType->addItem(toQString(row.fluid));
    prepareBoxes();
    CompareTable::prepare(lvModels);
    connect(lvModels, &QTreeWidget::currentItemChanged, this, [this] {
        ownChoice = CompareTable::chosenTexts(lvModels);
        showChosen();
    });
    connect(lvModels, &QTreeWidget::itemActivated, this, [this] { act(".lvModels", [this] { use(); }); });
    connect(cmboJob, &QComboBox::activated, this,
            [this] { act(".cmboJob", [this] { JobChoice::take(cmboJob); }); });
    on(cmdCalcTSF, ".cmdCalcTSF", [this] { openEstimate(); });
    on(cmdMetric, ".cmdMetric", [this] { openMetric(); });
    on(cmdFindPipe2, ".cmdFindPipe2", [this] { Pipes::openPipeChooser(name()); });
    on(cmdUse, ".cmdUse", [this] { use(); });
    on(cmdCopy, ".cmdCopy", [this] {
        Dialogs::current().copy(CompareTable::tabbed(lvModels, candidates, application()));
        setStatusText("Copied the table");
    });
    on(cmdReport, ".cmdReport", [] { Submittals::showReport("rptCompare"); });
    onCancel(cmdClose, ".cmdClose", [this] { Screens::unload(name()); });
}

/// Everything typed or chosen shows its effect at once.
void frmCompare::prepareBoxes() {
    const auto renew = [this](const QString& box) {
        touched.insert(box);
        trap(".refresh", [this] { refresh(); });
    };
    for (QWidget* panel : {pnlTank, pnlShock})
        for (QLineEdit* box : panel->findChildren<QLineEdit*>())
            connect(box, &QLineEdit::textChanged, this, [renew, box] { renew(box->objectName()); });
    connect(cmboFluidType, &QComboBox::currentTextChanged, this, [this, renew] {
        showLimits();
        renew(cmboFluidType->objectName());
    });
    connect(cmboFluidType, &QComboBox::activated, this, [this] { fluidChosen = true; });
    connect(cmboApplication, &QComboBox::currentIndexChanged, this,
            [this] { trap(".cmboApplication", [this] { adaptToApplication(); }); });
    for (QLineEdit* box : {txtMostHeight, txtMostArea})
        connect(box, &QLineEdit::textChanged, this, [this] {
            markFilters();
            fillTable();
        });
    for (QCheckBox* box : {chkASMEOnly, chkFitting})
        connect(box, &QCheckBox::toggled, this, [this] { fillTable(); });
    on(cmdShowAll, ".cmdShowAll", [this] {
        for (QLineEdit* box : {txtMostHeight, txtMostArea})
            box->clear();
        for (QCheckBox* box : {chkASMEOnly, chkFitting})
            box->setChecked(false);
        lvModels->setFocus(); // the button has nothing left to do
    });
    for (QRadioButton* option : {optOver, optNew})
        connect(option, &QRadioButton::toggled, this, [this] { cmboJob->setEnabled(optNew->isChecked()); });
}

QWidget* frmCompare::firstField() const {
    return application() == Application::Shock ? PipeIndex : txtTotSysFluid;
}

Application frmCompare::application() const {
    return comparable[std::max(0, cmboApplication->currentIndex())];
}

/// Takes the conditions of the tank line that the screen in front shows, if it shows one.
void frmCompare::Load() {
    setStatusText("Compare models");
    asRead = InFront::tank();
    const auto atWork = Session::application();
    if (asRead)
        lineApplication = asRead->tankClass ? applicationOfSeries(asRead->tankClass->toStdString()) : atWork;
    const auto wanted = lineApplication ? lineApplication : atWork;
    const bool sized = wanted && std::ranges::find(comparable, *wanted) != std::end(comparable);
    if (!sized) // such as a package
        asRead.reset();
    const QSignalBlocker quiet(cmboApplication);
    cmboApplication->setCurrentText(AppName(sized ? *wanted : Application::Expansion));
    txtAtmPressure->setText(shownNumber(
        readUserDefaults().value_or(UserDefaults()).defaultPSIa.value_or(UserDefaults::StandardAtmosphere)));
    txtSOTMin->setText("40");
    if (asRead) {
        showLine(*asRead);
        ownChoice = {shownText(asRead->tankClass), shownText(asRead->qty), shownText(asRead->modelNo)};
    }
    JobChoice::fill(cmboJob, InFront::job());
    optOver->setVisible(asRead.has_value());
    if (asRead) {
        optOver->setText(
            tr("O&ver tank %1").arg(QString(asRead->tankID.value_or(QString())).replace("&", "&&")));
        optOver->setChecked(true);
        setTitle(windowTitle() + " " + asRead->tankID.value_or(QString()));
    }
    touched.clear();
    shockAtmosphere = ShockSizing::atmosphericPressure();
    adaptToApplication();
    entriesBefore = entries();
    fluidChosen = false;
    setEntered(false);
}

void frmCompare::Activate() {
    const double before = shockAtmosphere;
    renewAtmosphere();
    if (shockAtmosphere != before)
        trap(".refresh", [this] { refresh(); });
}

/// Another window may have changed the user's atmosphere. While another program is writing, what was read
/// before holds.
void frmCompare::renewAtmosphere() {
    if (application() == Application::Shock && Gateway::readDataState(reservedJob(), {}))
        trap(".renewAtmosphere", [this] { shockAtmosphere = ShockSizing::atmosphericPressure(); });
}

/// The line over which this could have been stored was deleted.
void frmCompare::loseRecord() {
    closePads();
    asRead.reset();
    lineApplication.reset();
    Session::Mode.write(Session::Modes::New);
    Session::TankID.write("");
    if (!readJobHeader(Session::JobID.text()))
        Session::JobID.write("");
    setTitle(tr("Compare Models"));
    optNew->setChecked(true);
    optOver->setVisible(false);
    JobChoice::fill(cmboJob, Session::JobID.text());
    entriesBefore.clear();
    setStatusText(tr("The conditions stay here, for a new tank"));
}

void frmCompare::showLine(const TankLine& line) {
    QHash<QString, QString> boxes = ConditionRules::boxesOf(line);
    if (lineApplication) // what its screens hide would show here for another application
        for (const QString& hidden : ConditionRules::hiddenBoxes(*lineApplication).keys())
            boxes.remove(hidden);
    setTexts(*pnlTank, boxes);
    setTexts(*pnlShock, ShockSizing::boxesOf(line));
}

void frmCompare::adaptToApplication() {
    const Application each = application();
    const bool shock = each == Application::Shock;
    const ApplicationInfo& info = infoOf(each);
    closePads();
    pnlTank->setVisible(!shock);
    pnlShock->setVisible(shock);
    const QHash<QString, QString> fixed = ConditionRules::hiddenBoxes(each);
    const bool choosesFluid = !fixed.contains("cmboFluidType");
    if (cmboFluidType->isEnabled())
        ownFluid = cmboFluidType->currentText();
    cmboFluidType->setEnabled(choosesFluid);
    cmboFluidType->setCurrentText(choosesFluid ? ownFluid : fixed["cmboFluidType"]);
    for (QWidget* hidden :
         std::initializer_list<QWidget*>{txtSOTMin, txtSOTMax, lblSOTMinUM, lblSOTMaxUM, lblSOTMin, lblSOTMax,
                                         lblSOTMinRange, lblSOTMaxRange, cmboFluidType, lblFluidType})
        hidden->setHidden(each == Application::Hydropneumatic);
    lblSysFluidContent->setText(toQString(info.volumeCaption));
    showLimits();
    const bool canReplace = asRead && lineApplication == each;
    optOver->setEnabled(canReplace);
    if (!canReplace)
        optNew->setChecked(true);
    cmboJob->setEnabled(optNew->isChecked());
    comparison.reset();
    compared.reset();
    candidates.clear();
    fillTable();
    comparison.emplace(each);
    renewAtmosphere();
    refresh();
}

void frmCompare::showLimits() {
    const TemperatureLimits limits = ConditionRules::limitsOf(application(), cmboFluidType->currentText());
    showTemperatureRange(txtSOTMin, lblSOTMinRange, limits.minimumLow, limits.minimumHigh);
    showTemperatureRange(txtSOTMax, lblSOTMaxRange, limits.maximumLow, limits.maximumHigh);
}

QHash<QString, QString> frmCompare::boxes() const {
    QHash<QString, QString> texts = textsOf(application() == Application::Shock ? *pnlShock : *pnlTank);
    texts.insert(ConditionRules::hiddenBoxes(application()));
    return texts;
}

/// What was typed into the boxes of the conditions.
QHash<QString, QString> frmCompare::entries() const {
    QHash<QString, QString> texts = textsOf(*pnlTank);
    texts.insert(textsOf(*pnlShock));
    texts.remove(cmboFluidType->objectName()); // which follows the application
    return texts;
}

void frmCompare::markFilters() {
    for (QLineEdit* box : {txtMostHeight, txtMostArea})
        if (EntryRules::objectionToNumber(box->text()))
            markField(box);
        else
            unmarkField(box);
}

/// Marks the boxes that are wrong, or were emptied.
Objections frmCompare::markWrong() {
    Objections wrong = application() == Application::Shock
                           ? ShockSizing::objectionsTo(boxes())
                           : ConditionRules::objectionsTo(boxes(), application());
    for (QWidget* panel : {pnlTank, pnlShock})
        for (QLineEdit* box : panel->findChildren<QLineEdit*>()) {
            const bool isWrong = std::ranges::find(wrong, box->objectName(), &Objection::box) != wrong.end();
            if (isWrong && (touched.contains(box->objectName()) || !box->text().isEmpty()))
                markField(box);
            else
                unmarkField(box);
        }
    return wrong;
}

/// Compares again. Conditions that cannot be compared, or a fault on the way, leave the table as it was,
/// greyed.
void frmCompare::refresh() {
    if (!comparison)
        return;
    lvModels->setEnabled(false); // or a fault would leave a model on offer for other conditions
    cmdUse->setEnabled(false);
    const Objections wrong = markWrong();
    QString obstacle;
    QStringList missing;
    for (const Objection& objection : wrong)
        if (objection.text == EntryRules::nothingEntered)
            missing.append(nameOf(control<QWidget>(objection.box)));
        else if (obstacle.isEmpty())
            obstacle = nameOf(control<QWidget>(objection.box)) + ": " + objection.text;
    if (!missing.isEmpty())
        obstacle = tr("Still to enter: %1").arg(missing.join(", "));
    if (wrong.empty()) {
        try {
            TankLine line;
            double bore = 0; // in
            if (application() == Application::Shock) {
                const ShockConditions conditions = ShockSizing::conditionsIn(boxes(), shockAtmosphere);
                bore = conditions.bore;
                std::optional<std::string_view> objection;
                line = ShockSizing::lineOf(conditions, PipeIndex->text(),
                                           ShockSizing::sizesOf(conditions, objection));
                if (objection)
                    obstacle = toQString(*objection);
            } else {
                line = ConditionRules::lineOf(boxes());
            }
            if (obstacle.isEmpty()) {
                candidates = comparison->candidatesFor(line, bore);
                compared = line;
            }
        } catch (const DatabaseFault&) {
            throw;
        } catch (const Fault& fault) {
            obstacle = tr("These conditions cannot be sized: %1.").arg(fault.what());
        }
    }
    lvModels->setEnabled(obstacle.isEmpty());
    fillTable();
    if (!obstacle.isEmpty())
        lblState->setText(obstacle);
}

CompareFilters frmCompare::filters() const {
    return {.mostHeight = parseNumber(txtMostHeight->text().toStdString()),
            .mostArea = parseNumber(txtMostArea->text().toStdString()),
            .asmeOnly = chkASMEOnly->isChecked(),
            .offeredOnly = chkFitting->isChecked()};
}

void frmCompare::fillTable() {
    const CompareFilters filter = filters();
    std::vector<int> wanted;
    for (std::size_t i = 0; i < candidates.size(); ++i)
        if (filter.allow(candidates[i]))
            wanted.push_back(int(i));
    {
        const QSignalBlocker quiet(lvModels);
        CompareTable::fill(lvModels, candidates, wanted, application(), ownChoice);
    }
    showChosen();
}

const Candidate* frmCompare::chosen() const {
    const int place = CompareTable::chosen(lvModels);
    return place < 0 ? nullptr : &candidates[std::size_t(place)];
}

/// Shows the curve, drawing and notes of the chosen row.
void frmCompare::showChosen() {
    const Candidate* row = chosen();
    const bool current = lvModels->isEnabled();
    cmdUse->setEnabled(current && row && row->isOffered());
    const bool any = lvModels->topLevelItemCount() > 0;
    const bool anyOffered = CompareTable::offersAny(lvModels, candidates);
    cmdCopy->setEnabled(current && anyOffered);
    cmdReport->setEnabled(current && anyOffered);
    imgCurve->clear();
    imgCurve->setAccessibleName({});
    const bool allHidden = !any && !candidates.empty();
    if (current)
        lblState->setText(row         ? CompareTable::remarksOf(*row).join(' ')
                          : allHidden ? tr("The filters hide all models. \"Show all\" brings them back.")
                                      : QString());
    cmdShowAll->setEnabled(chkASMEOnly->isChecked() || chkFitting->isChecked() ||
                           !(txtMostHeight->text() + txtMostArea->text()).isEmpty());
    for (QLineEdit* box : {txtMostHeight, txtMostArea})
        if (const auto objection = EntryRules::objectionToNumber(box->text()))
            lblState->setText(nameOf(box) + ": " + *objection);
    const QString drawing = row && row->model ? shownText(row->model->tankDraw) : QString();
    if (shownDrawing != drawing) { // seldom, and drawing takes a fifth of a key's time
        shownDrawing = drawing;
        imgDrawing->clear();
        if (!drawing.isEmpty())
            Drawings::showQuietly(imgDrawing, drawing);
    }
    if (!row || !row->model)
        return;
    if (const auto curve = curveOf(*row, application())) {
        imgCurve->setPixmap(
            Drawings::onPaper(curvePicture(*curve), imgCurve->minimumSize(), devicePixelRatioF()));
        imgCurve->setAccessibleName(curveInWords(*curve));
    }
    imgDrawing->setAccessibleName(tr("Drawing of %1").arg(shownText(row->model->modelDscrptn)));
}

void frmCompare::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && comparison) {
        shownDrawing.clear();
        fillTable();
    }
    Screen::changeEvent(event);
}

void frmCompare::openEstimate() {
    const Hourglass hourglass;
    openEstimator(estimatorOf(application()), name());
}

void frmCompare::openMetric() {
    openMetricPad(application() == Application::Shock ? "frmMetricSHK" : "frmMetric", name());
}

/// A pad left open would write into boxes that are now hidden.
void frmCompare::closePads() {
    for (const QString& open : Screens::loaded())
        if (const Screen* pad = Screens::find(open); pad && pad->fillsIn() == name())
            Screens::unload(open);
    Pipes::closePipeChooser(name());
}

bool frmCompare::QueryUnload() {
    if ((entries() != entriesBefore || fluidChosen) &&
        Dialogs::current().show(
            {.text = tr("The conditions entered here have not been stored!\nDo you want to "
                        "close the comparison?"),
             .title = tr("Close?"),
             .icon = QMessageBox::Question,
             .buttons = QMessageBox::Yes | QMessageBox::No,
             .defaultButton = QMessageBox::No}) != QMessageBox::Yes)
        return false;
    closePads();
    SetStatusBarText();
    return true;
}

/// Stores the chosen model with its conditions, and shows the results.
void frmCompare::use() {
    const Hourglass hourglass;
    const Candidate* row = chosen();
    if (!cmdUse->isEnabled() || !row)
        return;
    const bool over = optOver->isChecked();
    const QString jobID =
        over ? QString() : JobChoice::require(cmboJob, tr("Choose the job that the tank belongs to"));
    if (!over && jobID.isEmpty())
        return;
    const Candidate taken = *row;
    const bool several = takesSeveral(candidates, taken);
    const Application each = application();
    const auto storeAndShow = [&] {
        if (!over) {
            Session::Mode.write(Session::Modes::New);
            Session::JobID.write(jobID);
            Session::TankID.write("");
        }
        bool saved = false;
        procedure(".store", [&] { saved = store(taken); });
        if (!saved)
            return;
        if (!over)
            Session::Mode.write(Session::Modes::Edit); // what follows is about this tank
        Session::TankClass.write(AppName(each));
        if (over && Screens::find("frmtankselection") &&
            Screens::recordOf(*Screens::find("frmtankselection")) == asRead->tankID)
            Screens::drop(Screens::find("frmtankselection")); // its choice is made
        closePads();
        Screens::drop(this);
        openResults(each, several);
        setStatusText("Selection completed");
    };
    if (over)
        storeAndShow();
    else
        Screens::beginTask([&] { Faults::runTrapped(name() + ".cmdUse", storeAndShow); });
}

/// One write. False when the user chose to keep someone else's changes, or was told that there is such a job.
bool frmCompare::store(const Candidate& candidate) {
    const bool shock = application() == Application::Shock;
    const TankLine::Columns columns = shock ? TankLine::comparedShock() : TankLine::compared();
    TankLine line = candidate.line;
    line.dateCreated = QDateTime::currentDateTime();
    if (optOver->isChecked())
        return saves([&](Record::IfChanged ifChanged) {
            updateTankLine(asRead->tankID.value_or(QString()), line, columns, asRead, ifChanged);
        });
    line.jobID = Session::JobID.text();
    if (const auto newJob = JobChoice::newHeader(cmboJob)) {
        const QStringList added = addJobWithTankLines(*newJob, {line});
        if (added.isEmpty()) // another copy of the program was faster
            JobChoice::refuseNew(cmboJob);
        else
            Session::TankID.write(added.first());
        return !added.isEmpty();
    }
    std::optional<TankLine> none;
    return saveTankLine(line, columns, none, Record::IfChanged::Overwrite);
}

frmCompare::Shown frmCompare::shown() const {
    Shown all{.application = application(), .conditions = compared.value_or(TankLine()), .chosen = chosen()};
    for (const int place : CompareTable::places(lvModels))
        all.rows.push_back(&candidates[std::size_t(place)]);
    return all;
}
