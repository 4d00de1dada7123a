#include "core/base/Text.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Commands.h"
#include "core/shell/Fields.h"
#include "estimates/MetricConversions.h"
#include "tests/support/Driver.h"
#include "tests/walk/Walk.h"

#include <QAction>
#include <QLabel>
#include <QTreeWidget>

namespace {

/// A box that a step fills with a number, and its range.
struct Entry {
    const char* window;
    const char* box;
    const char* column;
    double low;
    double high;
};

constexpr Entry entries[] = {
    {"frmJobConditions", "txtTotSysFluid", "TotSysVolume", 50, 4000},
    {"frmJobConditions", "txtSOTMin", "SOTMin", 40, 89},
    {"frmJobConditions", "txtSOTMax", "SOTMax", 91, 240},
    {"frmJobConditions", "txtSOPMin", "SOPMin", 5, 30},
    {"frmJobConditions", "txtSOPMax", "SOPMax", 40, 150},
    {"frmJobConditions", "txtAtmPressure", "AtmPressure", 12, 15},
    {"frmConvertSteel", "txtTotSysFluid", "TotSysVolume", 50, 2000},
    {"frmConvertSteel", "txtSOPMin", "SOPMin", 5, 30},
    {"frmConvertSteel", "txtAtmPressure", "AtmPressure", 12, 15},
    {"frmJobConditionsSHK", "PipeLength", "PipeLength", 50, 400},
    {"frmJobConditionsSHK", "FlowRate", "FlowRate", 20, 60},
    {"frmJobConditionsSHK", "FlowPressure", "FlowPressure", 20, 40},
    {"frmJobConditionsSHK", "StaticPressure", "StaticPressure", 55, 100},
    {"frmJobConditionsSHK", "ShockPressure", "ShockPressure", 110, 179},
};

const QMap<QString, QString> conditionsOf = {{"Expansion Tank", "frmJobConditions"},
                                             {"Thermal Expansion Tank", "frmJobConditions"},
                                             {"Hydropneumatic Tank", "frmJobConditions"},
                                             {"Shock Arrestor Tank", "frmJobConditionsSHK"},
                                             {"Glycol Make-up Package", "frmPKGSelect"}};
const QMap<QString, QString> applicationsByCode = {{"EXP", "Expansion Tank"},
                                                   {"THM", "Thermal Expansion Tank"},
                                                   {"HYD", "Hydropneumatic Tank"},
                                                   {"SHK", "Shock Arrestor Tank"},
                                                   {"PKG", "Glycol Make-up Package"}};

QStringList rowsOf(const QString& window, int column = 0) {
    QStringList rows;
    const auto* list = Driver::control<QTreeWidget>(window, "lvOptions");
    for (int row = 0; list && row < list->topLevelItemCount(); ++row)
        rows.append(list->topLevelItem(row)->text(column));
    return rows;
}

QString editScreen(const QString& job) {
    return job == "CONVERT" ? "frmTankIDSearch" : "frmJobHeader";
}

// ---- Commands of the menu

void newJob(Walk& walk, const QString&) {
    Notes& notes = walk.notes;
    const Work work = notes.begin();
    notes.close("frmjobsearchdialog");
    if (notes.close("frmJobHeader")) {
        notes.set(work, {}, &Values::mode, "New");
        notes.set(work, {}, &Values::job, "");
        notes.set(work, {}, &Values::tank, "");
        notes.open("frmJobHeader", work);
    }
    walk.command("mnuNewJob", work, "NewJob");
}

void searchFor(Walk& walk, const QString& mode, const QString& menu, const QString& tool) {
    const Work work = walk.notes.begin();
    walk.notes.set(work, {}, &Values::mode, mode);
    walk.notes.open("frmjobsearchdialog", work);
    walk.command(menu, work, tool);
}

void editJob(Walk& walk, const QString&) {
    searchFor(walk, "Edit", "mnuEditJob", "EditJob");
}

void deleteJob(Walk& walk, const QString&) {
    searchFor(walk, "Delete", "mnuDeleteJob", "DeleteJob");
}

void convertSteel(Walk& walk, const QString&) {
    const Work work = walk.notes.begin();
    for (const auto& [name, text] :
         {std::pair(&Values::mode, "New"), {&Values::job, ""}, {&Values::tank, ""}})
        walk.notes.set(work, {}, name, text);
    walk.notes.remove("frmConvertSteel");
    walk.notes.open("frmConvertSteel", work);
    walk.command("mnuConvert", work, "ConvertSteel");
}

void maintainNames(Walk& walk, const QString&) {
    const Work work = walk.notes.begin();
    const QString list = walk.oneOf({"Contractors", "Engineers"});
    walk.notes.set(work, {}, &Values::mode, list);
    walk.notes.open("frmEngContMaster", work);
    walk.command("mnu" + list, work, list);
}

/// A report shows what it is about, whatever the viewer was opened for.
void showReport(Notes& notes, const Work& work, About about) {
    notes.open("frmReportViewer", work);
    notes.windows["frmReportViewer"].shows = about;
}

void listModels(Walk& walk, const QString&) {
    static const QMap<QString, QString> lists = {{"mnuRptEXP", "Expansion Tank"},
                                                 {"mnuTHM", "Thermal Expansion Tank"},
                                                 {"mnuRptHYD", "Hydropneumatic Tank"},
                                                 {"mnuRptSHK", "Shock Arrestor Tank"},
                                                 {"mnuRptPKG", "Glycol Make-up Package"}};
    const QString menu = walk.oneOf(lists.keys());
    const Work work = walk.notes.begin();
    walk.notes.set(work, {}, &Values::application, lists[menu]);
    showReport(walk.notes, work, About::Nothing);
    walk.command(menu, work);
}

/// A tank without a model stops the schedule with an error, which the user closes.
bool scheduleStops(const Walk& walk, const QString& job) {
    const QStringList tanks = walk.notes.tanksOf(job);
    return std::ranges::any_of(
        tanks, [&](const QString& tank) { return walk.notes.lines[tank]["ModelNo"].isEmpty(); });
}

void closeError(Walk& walk) {
    walk.say("expect-screen frmError");
    walk.say("close frmError");
}

void reportSchedule(Walk& walk, const QString&) {
    if (!Commands::action("mnuSchedule")->isVisible())
        return;
    const Work work = walk.notes.begin();
    showReport(walk.notes, work, About::Job);
    walk.command("mnuSchedule", work);
    if (scheduleStops(walk, work->job.value_or("")))
        closeError(walk);
}

void closeByMenu(Walk& walk, const QString&) {
    const QString front = walk.inFront();
    const Work begun = walk.notes.begin();
    if (!front.isEmpty())
        walk.notes.close(front);
    walk.command("mnuClose", begun, "Close");
}

void startPage(Walk& walk, const QString&) {
    const auto* list = BrennovalMain::instance()->findChild<QTreeWidget*>("lvJobs");
    if (!list->isVisible())
        return;
    const int row = walk.below(list->topLevelItemCount());
    const QString job = list->topLevelItem(row)->text(0);
    const Work work = walk.notes.begin();
    walk.notes.set(work, {}, &Values::mode, "Edit");
    walk.notes.set(work, {}, &Values::job, job);
    walk.notes.set(work, {}, &Values::tank, "");
    walk.notes.open("frmJobOverview", work);
    walk.notes.work = work;
    walk.say(QString("row BrennovalMain.lvJobs %1").arg(row + 1));
}

/// A button of the overview begins work of its own on the job.
void fromOverview(Walk& walk, const QString& window, const char* button, const char* mode,
                  const QString& opened) {
    walk.reach(window, button);
    const QString job = Driver::control<QLabel>(window, "lblJobID")->text();
    const Work work = walk.notes.begin();
    walk.notes.set(work, {}, &Values::mode, mode);
    walk.notes.set(work, {}, &Values::job, job);
    walk.notes.set(work, {}, &Values::tank, "");
    walk.notes.open(opened, work);
    walk.press(window, button);
}

void overviewHeader(Walk& walk, const QString& window) {
    fromOverview(walk, window, "cmdHeader", "Edit", "frmJobHeader");
}

void overviewAdd(Walk& walk, const QString& window) {
    fromOverview(walk, window, "cmdAdd", "New", "frmClassSelect");
}

// ---- Windows

QString anyWindow(Walk& walk) {
    return walk.notes.windows.isEmpty() ? QString() : walk.oneOf(walk.notes.windows.keys());
}

void activate(Walk& walk, const QString&) {
    if (const QString window = anyWindow(walk); !window.isEmpty())
        walk.front(window);
}

void turnWindows(Walk& walk, const QString&) {
    if (!walk.notes.windows.isEmpty())
        walk.say("key Ctrl+Tab");
}

void minimise(Walk& walk, const QString&) {
    const QString window = anyWindow(walk);
    if (window.isEmpty())
        return;
    walk.front(window);
    walk.say("minimise " + window);
}

void closeWindow(Walk& walk, const QString&) {
    const QString window = anyWindow(walk);
    if (window.isEmpty())
        return;
    walk.notes.work = walk.notes.windows[window].work;
    walk.notes.close(window);
    walk.say("close " + window);
}

/// Presses Cancel, which does the same as closing by the title bar.
void cancel(Walk& walk, const QString& window) {
    walk.reach(window, "cmdCancel");
    walk.notes.close(window);
    walk.press(window, "cmdCancel");
}

// ---- Jobs

void find(Walk& walk, const QString& window) {
    walk.reach(window, "bttnFind");
    walk.press(window, "bttnFind");
    QStringList found = rowsOf(window);
    found.sort();
    if (found != walk.notes.headers.keys())
        throw Failure{"found are " + found.join(", ")};
}

void takeJob(Walk& walk, const QString& window) {
    walk.front(window);
    Notes& notes = walk.notes;
    const QStringList jobs = rowsOf(window);
    if (jobs.isEmpty())
        return;
    const int row = walk.below(int(jobs.size()));
    if (!notes.headers.contains(jobs[row]))
        return;
    const Work work = notes.windows[window].work;
    walk.say(QString("row frmjobsearchdialog.lvOptions %1").arg(row + 1));
    notes.set(work, window, &Values::job, jobs[row]);
    if (work->mode == "Edit" || work->mode == "Delete")
        notes.leave(window, work->mode == "Edit" ? editScreen(jobs[row]) : "frmDelete");
    else
        notes.remove(window);
    walk.press(window, "bttnOK");
}

void typeHeader(Walk& walk, const QString& window) {
    walk.front(window);
    const Notes& notes = walk.notes;
    const QString job = notes.windows[window].openedFor.job.value_or("");
    const bool stored = notes.headers.contains(job);
    const QStringList names = {"P", "P.1", "O'K"};
    const QString name = walk.oneOf(names);
    if (!stored)
        walk.type(window, "txtJobID", name);
    if (stored || !notes.headers.contains(name))
        walk.type(window, "txtJobDscrptn", "Pumps " + walk.number(1, 1000, ""));
}

void headerNext(Walk& walk, const QString& window) {
    walk.reach(window, "cmdNext");
    Notes& notes = walk.notes;
    const Work work = notes.windows[window].work;
    if (notes.windows[window].boxes["txtJobID"].isEmpty()) {
        walk.answer("OK", "Please enter a Job ID!");
    } else if (notes.saveHeader()) {
        notes.remove(window);
        notes.open(!work->mode || work->mode == "New" ? "frmClassSelect" : "frmTankIDSearch", work);
    }
    walk.press(window, "cmdNext");
}

void chooseApplication(Walk& walk, const QString& window) {
    static const QMap<QString, QString> buttons = {
        {"cmdEXP", "EXP"}, {"cmdTHM", "THM"}, {"cmdHYD", "HYD"}, {"cmdSHK", "SHK"}, {"cmdPKG", "PKG"}};
    const QString button = walk.oneOf(buttons.keys());
    walk.reach(window, button);
    const QString application = applicationsByCode[buttons[button]];
    walk.notes.set(walk.notes.windows[window].work, window, &Values::application, application);
    walk.notes.leave(window, conditionsOf[application]);
    walk.press(window, button);
}

void chooseTank(Walk& walk, const QString& window) {
    walk.front(window);
    Notes& notes = walk.notes;
    Window& picker = notes.windows[window];
    const Work work = picker.work;
    picker.chosen = walk.below(int(picker.list.size()));
    const QString tank = picker.list[picker.chosen];
    walk.say(QString("row frmTankIDSearch.lvOptions %1").arg(picker.chosen + 1));
    if (tank == "Add New...") {
        notes.set(work, window, &Values::mode, "New");
        notes.leave(window, "frmClassSelect");
    } else {
        notes.set(work, window, &Values::tank, tank);
        const QString application =
            applicationsByCode.value(Reckoning::applicationOf(notes.lines[tank]["ModelNo"]));
        if (!application.isEmpty())
            notes.set(work, window, &Values::application, application);
        notes.leave(window, work->job == "CONVERT"  ? "frmConvertSteel"
                            : application.isEmpty() ? "frmJobConditions"
                                                    : conditionsOf[application]);
    }
    walk.press(window, "cmdNext");
}

void chooseRow(Walk& walk, const QString& window) {
    walk.front(window);
    Window& noted = walk.notes.windows[window];
    if (noted.list.isEmpty())
        return;
    noted.chosen = walk.below(int(noted.list.size()));
    walk.say(QString("row %1.lvOptions %2").arg(window).arg(noted.chosen + 1));
}

void pickerPrevious(Walk& walk, const QString& window) {
    walk.reach(window, "cmdPrevious");
    walk.notes.leave(window, "frmJobHeader");
    walk.press(window, "cmdPrevious");
}

void deleteChosen(Walk& walk, const QString& window) {
    walk.front(window);
    Notes& notes = walk.notes;
    const QString job = notes.windows[window].openedFor.job.value_or("");
    const QStringList listed = rowsOf(window);
    const bool all = walk.chance(3);
    walk.say(QString("pick frmDelete.") + (all ? "optJob" : "OptTanks"));
    if (!all && !listed.isEmpty())
        walk.say(QString("check frmDelete.lvOptions %1").arg(1 + walk.below(int(listed.size()))));
    const QString question =
        "The selected item(s) will be deleted!\nDo you want to delete the selected item(s)?";
    if (notes.ask(question, {"Yes", "No"}) == "Yes") {
        const auto* list = Driver::control<QTreeWidget>(window, "lvOptions");
        for (int row = 0; !all && row < list->topLevelItemCount(); ++row)
            if (list->topLevelItem(row)->checkState(0) == Qt::Checked)
                notes.deleteTank(list->topLevelItem(row)->text(0));
        if (all)
            notes.deleteJob(job, window);
    }
    walk.press(window, "bttnDelete");
}

void searchAgain(Walk& walk, const QString& window) {
    walk.reach(window, "bttnSearch");
    walk.notes.leave(window, "frmjobsearchdialog");
    walk.press(window, "bttnSearch");
}

// ---- Sizing

bool isHydro(const Walk& walk, const QString& window) {
    return walk.notes.windows[window].work->application == "Hydropneumatic Tank";
}

/// Types into all boxes of a conditions screen, or into only one.
void typeConditions(Walk& walk, const QString& window) {
    walk.front(window);
    const Notes& notes = walk.notes;
    QList<const Entry*> shown;
    bool filled = true;
    for (const Entry& entry : entries)
        if (window == entry.window && !(QString(entry.box).startsWith("txtSOT") && isHydro(walk, window))) {
            shown.append(&entry);
            filled = filled && !notes.windows[window].boxes[entry.box].isEmpty();
        }
    if (window == "frmJobConditionsSHK" && notes.windows[window].boxes["PipeIndex"].isEmpty())
        walk.type(window, "PipeIndex", walk.oneOf({"2 in Sch 40", "3 in Sch 40", "4 in Sch 40"}));
    if (filled && walk.chance(2))
        shown = {shown[walk.below(int(shown.size()))]};
    for (const Entry* entry : shown)
        walk.type(window, entry->box,
                  walk.number(entry->low, entry->high, notes.windows[window].boxes[entry->box]));
}

void chooseFluid(Walk& walk, const QString& window) {
    if (walk.notes.windows[window].work->application != "Expansion Tank")
        return;
    walk.front(window);
    const QString fluid = walk.oneOf({"Water", "30% Ethylene Glycol", "10% Propylene Glycol"});
    walk.say("pick frmJobConditions.cmboFluidType \"" + fluid + "\"");
    Window& noted = walk.notes.windows[window];
    noted.typed = noted.typed || noted.boxes["cmboFluidType"] != fluid;
    noted.boxes["cmboFluidType"] = fluid;
}

/// The columns that a conditions screen stores; nothing if it refuses its entries.
std::optional<Row> conditionColumns(const Walk& walk, const QString& window) {
    const Row& boxes = walk.notes.windows[window].boxes;
    Row row;
    for (const Entry& entry : entries)
        if (window == entry.window) {
            if (boxes[entry.box].isEmpty())
                return std::nullopt;
            row[entry.column] = shownNumber(toNumber(boxes[entry.box]));
        }
    if (window == "frmJobConditionsSHK") {
        row["PipeIndex"] = boxes["PipeIndex"];
        return Reckoning::shockSizes(row);
    }
    if (window == "frmConvertSteel")
        return row;
    const auto within = [&](const char* column, double low, double high) {
        const double value = row[column].toDouble();
        return value == 0 || (value >= low && value <= high);
    };
    if (row["SOTMin"].toDouble() >= row["SOTMax"].toDouble() ||
        row["SOPMin"].toDouble() >= row["SOPMax"].toDouble() ||
        (!isHydro(walk, window) && (!within("SOTMin", 40, 100) || !within("SOTMax", 90, 240))))
        return std::nullopt;
    row["SysFluidType"] = boxes["cmboFluidType"];
    return row;
}

void conditionsNext(Walk& walk, const QString& window) {
    if (!conditionColumns(walk, window))
        return;
    walk.reach(window, "cmdNext");
    const auto columns = conditionColumns(walk, window);
    if (!columns)
        return;
    if (walk.notes.saveLine(window, *columns))
        walk.notes.leave(window, window == "frmJobConditions" ? "frmTankSeries" : "frmtankselection");
    walk.press(window, "cmdNext");
}

void conditionsPrevious(Walk& walk, const QString& window) {
    walk.reach(window, "cmdPrevious");
    const Work work = walk.notes.windows[window].work;
    if (work->mode)
        walk.notes.open(work->mode == "New" ? "frmClassSelect" : "frmTankIDSearch", work);
    walk.notes.remove(window);
    walk.press(window, "cmdPrevious");
}

void convertNext(Walk& walk, const QString& window) {
    const auto columns = conditionColumns(walk, window);
    if (!columns)
        return;
    walk.reach(window, "cmdNext");
    Notes& notes = walk.notes;
    const Work work = notes.windows[window].work;
    notes.set(work, window, &Values::job, "CONVERT");
    notes.set(work, window, &Values::application, "Expansion Tank");
    if (!notes.headers.contains("CONVERT"))
        notes.headers["CONVERT"] = {{"JobID", "CONVERT"},
                                    {"JobDscrptn", "Convert Plain Steel to Bladder Tank"}};
    Row row = *conditionColumns(walk, window);
    if (work->mode == "New")
        row["SysFluidType"] = "Water";
    if (notes.saveLine(window, row)) {
        notes.set(work, window, &Values::mode, "Convert");
        notes.leave(window, "frmTankSeries");
    }
    walk.press(window, "cmdNext");
}

void convertCancel(Walk& walk, const QString& window) {
    walk.reach(window, "cmdCancel");
    walk.notes.remove(window);
    walk.press(window, "cmdCancel");
}

void chooseSeries(Walk& walk, const QString& window) {
    static const QMap<QString, QMap<QString, QString>> series = {
        {"Expansion Tank",
         {{"OptRF", "R"},
          {"OptRCBD", "RCBD"},
          {"OptRC", "RC"},
          {"OptRB", "RB"},
          {"OptRGB", "RGB"},
          {"OptRCB", "RCB"},
          {"OptRHB", "RHB"}}},
        {"Thermal Expansion Tank", {{"OptGWB", "GWB"}, {"OptGGB", "GGB"}, {"OptGW", "GW"}, {"OptGD", "G"}}},
        {"Hydropneumatic Tank", {{"OptJW", "JW"}, {"OptJWB", "JWB"}, {"OptJWG", "JWG"}}}};
    const auto offered = series[walk.notes.windows[window].openedFor.application.value_or("")];
    if (offered.isEmpty())
        return;
    const QString option = walk.oneOf(offered.keys());
    walk.reach(window, option);
    walk.press(window, option);
    walk.notes.windows[window].boxes["txtTankType"] = offered[option];
    walk.notes.windows[window].typed = true;
}

void seriesNext(Walk& walk, const QString& window) {
    Notes& notes = walk.notes;
    const QString series = notes.windows[window].boxes["txtTankType"];
    if (series.isEmpty())
        return;
    walk.reach(window, "cmdNext");
    const Row columns = Reckoning::sizes(notes.lineOf(window), series, *notes.windows[window].work);
    if (notes.saveLine(window, columns))
        notes.leave(window, "frmtankselection");
    walk.press(window, "cmdNext");
}

void seriesPrevious(Walk& walk, const QString& window) {
    walk.reach(window, "cmdPrevious");
    const Work work = walk.notes.windows[window].work;
    walk.notes.remove(window);
    walk.notes.open(work->mode == "Convert" ? "frmConvertSteel" : "frmJobConditions", work);
    walk.press(window, "cmdPrevious");
}

/// The columns of the chosen option; nothing if there is none.
std::optional<Row> chosenOption(const Walk& walk, const QString& window) {
    const Window& noted = walk.notes.windows[window];
    const QList<Row> options = Reckoning::options(walk.notes.lineOf(window), *noted.work);
    return noted.chosen < options.size() ? std::optional(options[noted.chosen]) : std::nullopt;
}

void optionsNext(Walk& walk, const QString& window) {
    walk.reach(window, "cmdNext");
    Notes& notes = walk.notes;
    const auto option = chosenOption(walk, window);
    if (option && notes.saveLine(window, *option)) {
        const Work work = notes.windows[window].work;
        notes.remove(window);
        notes.open(work->mode == "Convert"                      ? "frmResultsConvert"
                   : work->application == "Shock Arrestor Tank" ? "frmResultSHK"
                                                                : "frmResults",
                   work);
    }
    if (option)
        walk.press(window, "cmdNext");
}

void optionsPrevious(Walk& walk, const QString& window) {
    walk.reach(window, "cmdPrevious");
    Notes& notes = walk.notes;
    const auto option = chosenOption(walk, window);
    if (!option || notes.saveLine(window, *option)) {
        const Work work = notes.windows[window].work;
        notes.remove(window);
        notes.open(work->application == "Shock Arrestor Tank" ? "frmJobConditionsSHK" : "frmTankSeries",
                   work);
    }
    walk.press(window, "cmdPrevious");
}

void optionsCancel(Walk& walk, const QString& window) {
    walk.reach(window, "cmdCancel");
    walk.notes.remove(window);
    walk.press(window, "cmdCancel");
}

// ---- Estimators and pads

void openBeside(Walk& walk, const QString& window, const QString& button, const QString& screen) {
    walk.reach(window, button);
    walk.notes.open(screen, walk.notes.windows[window].work);
    walk.press(window, button);
}

void estimateOf(Walk& walk, const QString& window) {
    static const QMap<QString, QString> estimators = {{"Expansion Tank", "frmCalcExpTSF"},
                                                      {"Thermal Expansion Tank", "frmcalcThmTSF"},
                                                      {"Hydropneumatic Tank", "frmCalcHydTSF"}};
    const QString estimator = estimators[walk.notes.windows[window].work->application.value_or("")];
    if (estimator.isEmpty())
        return;
    openBeside(walk, window, "cmdCalcTSF", estimator);
    walk.notes.windows[estimator].handsBack = true;
}

void estimateFreely(Walk& walk, const QString&) {
    static const QMap<QString, QString> estimators = {
        {"mnuEstEXP", "frmCalcExpTSF"}, {"mnuEstTHM", "frmcalcThmTSF"}, {"mnuEstHYD", "frmCalcHydTSF"}};
    const QString menu = walk.oneOf(estimators.keys());
    const Work work = walk.notes.begin();
    if (!walk.notes.isOpen(estimators[menu])) {
        walk.notes.set(work, {}, &Values::job, "");
        walk.notes.set(work, {}, &Values::tank, "");
        walk.notes.open(estimators[menu], work);
    }
    walk.command(menu, work);
}

void calculate(Walk& walk, const QString& window) {
    static const QMap<QString, QStringList> boxes = {{"frmCalcExpTSF", {"ChillerTons"}},
                                                     {"frmcalcThmTSF", {"WtrHtrVolume", "Pipeft"}},
                                                     {"frmCalcHydTSF", {"PumpCapacity", "PumpRunTime"}}};
    walk.front(window);
    if (window == "frmCalcExpTSF")
        walk.press(window, "bttnChiller");
    if (window == "frmcalcThmTSF")
        walk.type(window, "PipeIndex", "2 in Sch 40");
    for (const QString& box : boxes[window])
        walk.type(window, box, walk.number(5, 90, walk.notes.windows[window].boxes[box]));
    walk.press(window, "bttnCalc");
    walk.notes.windows[window].boxes["TotSysFluidCalc"] =
        Fields::fieldText(Driver::control(window, "TotSysFluidCalc"));
}

void takeEstimate(Walk& walk, const QString& window) {
    const QString result = walk.notes.windows[window].boxes["TotSysFluidCalc"];
    if (result.isEmpty() || !walk.notes.serves(window, "frmJobConditions"))
        return;
    walk.reach(window, "bttnOK");
    Window& conditions = walk.notes.windows["frmJobConditions"];
    conditions.boxes["txtTotSysFluid"] = result;
    conditions.typed = true;
    walk.notes.remove(window);
    walk.press(window, "bttnOK");
}

void cancelEstimate(Walk& walk, const QString& window) {
    walk.reach(window, "bttnCancel");
    walk.notes.remove(window);
    walk.press(window, "bttnCancel");
}

void openPad(Walk& walk, const QString& window) {
    openBeside(walk, window, "cmdMetric", window == "frmJobConditions" ? "frmMetric" : "frmMetricSHK");
}

void openPadByMenu(Walk& walk, const QString&) {
    static const QMap<QString, QString> pads = {{"frmJobConditions", "frmMetric"},
                                                {"frmConvertSteel", "frmMetric"},
                                                {"frmJobConditionsSHK", "frmMetricSHK"}};
    const QString front = walk.inFront();
    if (!pads.contains(front))
        return;
    walk.notes.open(pads[front], walk.notes.windows[front].work);
    walk.command("mnuMetric", walk.notes.begin());
}

/// A box of a pad, and the box it fills.
struct Conversion {
    const char* pad;
    const char* box;
    const char* target;
    double low; // in metric units
    double high;
    double (*convert)(double);
};

constexpr Conversion conversions[] = {
    {"frmMetric", "txtTotSysFluid", "txtTotSysFluid", 500, 9000, MetricConversions::LitersToGallons},
    {"frmMetric", "txtSOPMin", "txtSOPMin", 40, 200, MetricConversions::kPaToPSI},
    {"frmMetric", "txtSOPMax", "txtSOPMax", 300, 900, MetricConversions::kPaToPSI},
    {"frmMetricSHK", "txtPipeLength", "PipeLength", 20, 100, MetricConversions::MetersToFeet},
    {"frmMetricSHK", "txtFlowRate", "FlowRate", 80, 200, MetricConversions::LitersToGallons},
};

void typeMetric(Walk& walk, const QString& window) {
    walk.front(window);
    for (const Conversion& conversion : conversions)
        if (window == conversion.pad && walk.chance(2))
            walk.type(window, conversion.box, walk.number(conversion.low, conversion.high, ""));
}

void takeMetric(Walk& walk, const QString& window) {
    const QString target = faceOf(window).serves;
    if (!walk.notes.serves(window, target))
        return;
    walk.reach(window, "cmdOK");
    Window& conditions = walk.notes.windows[target];
    const Row boxes = walk.notes.windows[window].boxes;
    for (const Conversion& conversion : conversions)
        if (window == conversion.pad && !boxes[conversion.box].isEmpty()) {
            conditions.boxes[conversion.target] =
                shownNumber(conversion.convert(boxes[conversion.box].toDouble()));
            conditions.typed = true;
        }
    walk.notes.remove(window);
    walk.press(window, "cmdOK");
}

// ---- Results

void addMore(Walk& walk, const QString& window) {
    walk.reach(window, "bttnAddMore");
    const Work work = walk.notes.windows[window].work;
    walk.notes.set(work, window, &Values::tank, "");
    if (window != "frmPKGSelect")
        walk.notes.set(work, window, &Values::mode, "New");
    walk.notes.leave(window, window == "frmResultsConvert" ? "frmConvertSteel" : "frmClassSelect");
    walk.press(window, "bttnAddMore");
}

void recalculate(Walk& walk, const QString& window) {
    walk.reach(window, "bttnRecalc");
    walk.notes.leave(window, window == "frmResults"     ? "frmJobConditions"
                             : window == "frmResultSHK" ? "frmJobConditionsSHK"
                                                        : "frmConvertSteel");
    walk.press(window, "bttnRecalc");
}

void openTags(Walk& walk, const QString& window) {
    openBeside(walk, window, "bttnUnitTagID", "frmUnitTagData");
}

void openSpecification(Walk& walk, const QString& window) {
    openBeside(walk, window, "bttnSpecs", "frmResultSpecs");
}

void openSchedule(Walk& walk, const QString& window) {
    openBeside(walk, window, "bttnSchedule", "frmSchedule");
    if (scheduleStops(walk, walk.notes.windows["frmSchedule"].work->job.value_or("")))
        closeError(walk);
}

void enlargeDrawing(Walk& walk, const QString& window) {
    openBeside(walk, window, "imgDrawing", "frmDrawing");
    walk.notes.windows["frmDrawing"].shows = About::Line;
}

void preview(Walk& walk, const QString& window) {
    const QString model = walk.notes.lineOf(window)["ModelNo"];
    if (model.isEmpty() || walk.notes.windows[window].typed)
        return;
    const QString job = walk.notes.windows[window].work->job.value_or("");
    openBeside(walk, window, "bttnPreview", "frmReportViewer");
    walk.notes.windows["frmReportViewer"].shows = About::Line;
    walk.say("expect-page 1 \"" + job + "\"");
    walk.say("expect-page 1 \"" + model + "\"");
}

void typeTags(Walk& walk, const QString& window) {
    walk.front(window);
    const int units = int(walk.notes.windows[window].boxes.size()) / 2;
    if (units == 0)
        return;
    const int unit = walk.below(units);
    walk.type(window, QString("txtPrefix1_%1").arg(unit), QString("T%1").arg(walk.below(10000)));
    walk.type(window, QString("txtSuffix1_%1").arg(unit), QString::number(walk.below(10000)));
}

void saveTags(Walk& walk, const QString& window) {
    walk.reach(window, "cmdOK");
    const Row& boxes = walk.notes.windows[window].boxes;
    Row tags;
    for (int unit = 0; unit < 10; ++unit)
        tags[QString("TagID%1").arg(unit + 1, 2, 10, QChar('0'))] =
            boxes[QString("txtPrefix1_%1").arg(unit)] + "-" + boxes[QString("txtSuffix1_%1").arg(unit)];
    if (walk.notes.lineOf(window).isEmpty() || walk.notes.saveLine(window, tags))
        walk.notes.remove(window);
    walk.press(window, "cmdOK");
}

void deleteUnit(Walk& walk, const QString& window) {
    walk.front(window);
    const QStringList tanks = rowsOf(window, 10);
    if (tanks.isEmpty())
        return;
    const int row = walk.below(int(tanks.size()));
    walk.say(QString("row frmSchedule.lvOptions %1").arg(row + 1));
    if (walk.notes.ask("Selected item will be permantently deleted!\n\rDo you wish to continue?",
                       {"Yes", "No"}) == "Yes")
        walk.notes.deleteTank(tanks[row]);
    walk.press(window, "bttnDelete");
}

// ---- Packages

void choosePackage(Walk& walk, const QString& window) {
    walk.front(window);
    walk.press(window, walk.oneOf({"optPKG", "optPKGD", "OptPKGT", "optFDM"}));
    const QStringList models = rowsOf(window);
    const int row = walk.below(int(models.size()));
    walk.say(QString("row frmPKGSelect.lvOptions %1").arg(row + 1));
    Row& boxes = walk.notes.windows[window].boxes;
    boxes["txtModelNo"] = models[row];
    if (boxes["txtQty"].isEmpty())
        boxes["txtQty"] = "1";
    walk.type(window, "txtQty", QString::number(1 + (boxes["txtQty"].toInt() + walk.below(3)) % 4));
    walk.type(window, "txtSysPressure", walk.number(10, 70, boxes["txtSysPressure"]));
}

void savePackage(Walk& walk, const QString& window) {
    if (walk.notes.windows[window].boxes["txtModelNo"].isEmpty())
        return;
    walk.reach(window, "bttnSave");
    Notes& notes = walk.notes;
    const Row boxes = notes.windows[window].boxes;
    if (notes.windows[window].typed &&
        notes.saveLine(window, {{"ModelNo", boxes["txtModelNo"]},
                                {"Qty", boxes["txtQty"]},
                                {"SOPMax", boxes["txtSysPressure"]},
                                {"TankClass", Reckoning::seriesOf(boxes["txtModelNo"])}}))
        notes.windows[window].typed = false;
    walk.press(window, "bttnSave");
}

const QStringList conditionScreens = {"frmJobConditions", "frmJobConditionsSHK"};
const QStringList resultScreens = {"frmResults", "frmResultSHK", "frmResultsConvert"};

} // namespace

const QList<Step>& allSteps() {
    static const QList<Step> all = {
        {"new job", 4, "", newJob},
        {"edit job", 5, "", editJob},
        {"delete job", 2, "", deleteJob},
        {"convert steel tank", 2, "", convertSteel},
        {"maintain names", 1, "", maintainNames},
        {"list models", 1, "", listModels},
        {"report schedule", 2, "", reportSchedule},
        {"close by the menu", 1, "", closeByMenu},
        {"choose on the start page", 4, "", startPage},
        {"activate", 8, "", activate},
        {"turn windows", 4, "", turnWindows},
        {"minimise", 1, "", minimise},
        {"close", 3, "", closeWindow},
        {"find", 8, "frmjobsearchdialog", find},
        {"take a job", 12, "frmjobsearchdialog", takeJob},
        {"type a header", 6, "frmJobHeader", typeHeader},
        {"header, Next", 8, "frmJobHeader", headerNext},
        {"cancel", 1, "frmJobHeader", cancel},
        {"overview, header", 6, "frmJobOverview", overviewHeader},
        {"overview, add a tank", 6, "frmJobOverview", overviewAdd},
        {"choose an application", 10, "frmClassSelect", chooseApplication},
        {"cancel", 1, "frmClassSelect", cancel},
        {"choose a tank", 8, "frmTankIDSearch", chooseTank},
        {"choose a row", 2, "frmTankIDSearch", chooseRow},
        {"picker, Previous", 1, "frmTankIDSearch", pickerPrevious},
        {"cancel", 1, "frmTankIDSearch", cancel},
        {"delete", 4, "frmDelete", deleteChosen},
        {"search again", 1, "frmDelete", searchAgain},
        {"type conditions", 8, "frmJobConditions", typeConditions},
        {"choose a fluid", 2, "frmJobConditions", chooseFluid},
        {"conditions, Next", 10, "frmJobConditions", conditionsNext},
        {"conditions, Previous", 2, "frmJobConditions", conditionsPrevious},
        {"cancel", 1, "frmJobConditions", cancel},
        {"type conditions", 8, "frmJobConditionsSHK", typeConditions},
        {"conditions, Next", 10, "frmJobConditionsSHK", conditionsNext},
        {"conditions, Previous", 2, "frmJobConditionsSHK", conditionsPrevious},
        {"cancel", 1, "frmJobConditionsSHK", cancel},
        {"type conditions", 6, "frmConvertSteel", typeConditions},
        {"conversion, Next", 8, "frmConvertSteel", convertNext},
        {"cancel", 1, "frmConvertSteel", convertCancel},
        {"choose a series", 8, "frmTankSeries", chooseSeries},
        {"series, Next", 10, "frmTankSeries", seriesNext},
        {"series, Previous", 2, "frmTankSeries", seriesPrevious},
        {"cancel", 1, "frmTankSeries", cancel},
        {"choose a row", 4, "frmtankselection", chooseRow},
        {"options, Next", 8, "frmtankselection", optionsNext},
        {"options, Previous", 2, "frmtankselection", optionsPrevious},
        {"cancel", 1, "frmtankselection", optionsCancel},
        {"estimate", 3, "frmJobConditions", estimateOf},
        {"estimate freely", 2, "", estimateFreely},
        {"calculate", 4, "frmCalcExpTSF", calculate},
        {"calculate", 4, "frmcalcThmTSF", calculate},
        {"calculate", 4, "frmCalcHydTSF", calculate},
        {"take the estimate", 3, "frmCalcExpTSF", takeEstimate},
        {"take the estimate", 3, "frmcalcThmTSF", takeEstimate},
        {"take the estimate", 3, "frmCalcHydTSF", takeEstimate},
        {"cancel", 1, "frmCalcExpTSF", cancelEstimate},
        {"cancel", 1, "frmcalcThmTSF", cancelEstimate},
        {"cancel", 1, "frmCalcHydTSF", cancelEstimate},
        {"open a pad", 2, "frmJobConditions", openPad},
        {"open a pad", 2, "frmJobConditionsSHK", openPad},
        {"open a pad by the menu", 2, "", openPadByMenu},
        {"type metric values", 4, "frmMetric", typeMetric},
        {"type metric values", 4, "frmMetricSHK", typeMetric},
        {"take metric values", 3, "frmMetric", takeMetric},
        {"take metric values", 3, "frmMetricSHK", takeMetric},
        {"type tags", 6, "frmUnitTagData", typeTags},
        {"save tags", 4, "frmUnitTagData", saveTags},
        {"delete a unit", 2, "frmSchedule", deleteUnit},
        {"choose a package", 6, "frmPKGSelect", choosePackage},
        {"save the package", 6, "frmPKGSelect", savePackage},
        {"add more", 2, "frmPKGSelect", addMore},
        {"add more", 2, "frmResults", addMore},
        {"add more", 2, "frmResultSHK", addMore},
        {"add more", 2, "frmResultsConvert", addMore},
        {"recalculate", 2, "frmResults", recalculate},
        {"recalculate", 2, "frmResultSHK", recalculate},
        {"recalculate", 2, "frmResultsConvert", recalculate},
        {"open tags", 3, "frmResults", openTags},
        {"open tags", 3, "frmResultSHK", openTags},
        {"open tags", 3, "frmPKGSelect", openTags},
        {"open specification", 1, "frmResults", openSpecification},
        {"open specification", 1, "frmResultsConvert", openSpecification},
        {"open schedule", 2, "frmResults", openSchedule},
        {"open schedule", 2, "frmPKGSelect", openSchedule},
        {"enlarge the drawing", 1, "frmResults", enlargeDrawing},
        {"preview", 1, "frmResults", preview},
        {"preview", 1, "frmResultSHK", preview},
        {"preview", 1, "frmPKGSelect", preview},
    };
    return all;
}
