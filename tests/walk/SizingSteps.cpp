#include "core/base/Text.h"
#include "tests/walk/Steps.h"

namespace {

using namespace Steps;

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

} // namespace

QList<Step> Steps::sizingSteps() {
    return {
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
    };
}
