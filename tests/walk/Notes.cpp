#include "tests/walk/Notes.h"

#include <algorithm>
#include <utility>

namespace {

const QString addNew = QStringLiteral("Add New...");
const QString steelJob = QStringLiteral("CONVERT");

/// The tank of a task; a line still to come has none, even under the picker's name for it.
QString tankOf(const Values& values) {
    const QString tank = values.tank.value_or(QString());
    return tank == addNew ? QString() : tank;
}

QString jobOf(const Values& values) {
    return values.job.value_or(QString());
}

bool sameRecord(About about, const Values& one, const Values& other) {
    const bool sameJob = jobOf(one) == jobOf(other);
    return about == About::Nothing ||
           (sameJob &&
            (about == About::Job || (tankOf(one) == tankOf(other) &&
                                     one.application.value_or("") == other.application.value_or(""))));
}

bool leavesRecord(About about, const Values& before, const Values& now) {
    const bool leavesJob = !jobOf(before).isEmpty() && jobOf(before) != jobOf(now);
    const bool leavesTank = !tankOf(before).isEmpty() && tankOf(before) != tankOf(now);
    return about != About::Nothing && (leavesJob || (about == About::Line && leavesTank));
}

/// Each box of a screen with the column it shows.
using BoxColumns = QList<std::pair<QString, QString>>;

const QMap<QString, BoxColumns>& boxColumns() {
    static const QMap<QString, BoxColumns> all = {
        {"frmJobConditions",
         {{"txtAtmPressure", "AtmPressure"},
          {"txtSOTMin", "SOTMin"},
          {"txtSOTMax", "SOTMax"},
          {"txtSOPMin", "SOPMin"},
          {"txtSOPMax", "SOPMax"},
          {"txtTotSysFluid", "TotSysVolume"}}},
        {"frmConvertSteel",
         {{"txtAtmPressure", "AtmPressure"}, {"txtSOPMin", "SOPMin"}, {"txtTotSysFluid", "TotSysVolume"}}},
        {"frmJobConditionsSHK",
         {{"PipeIndex", "PipeIndex"},
          {"PipeLength", "PipeLength"},
          {"FlowRate", "FlowRate"},
          {"FlowPressure", "FlowPressure"},
          {"StaticPressure", "StaticPressure"},
          {"ShockPressure", "ShockPressure"}}},
        {"frmPKGSelect", {{"txtModelNo", "ModelNo"}, {"txtQty", "Qty"}, {"txtSysPressure", "SOPMax"}}},
        {"frmResults", {{"txtModelNo", "ModelNo"}, {"txtQty", "Qty"}, {"txtSysFluidType", "SysFluidType"}}},
        {"frmResultsConvert", {{"txtModelNo", "ModelNo"}, {"txtQty", "Qty"}}},
        {"frmResultSHK", {{"ModelNo", "ModelNo"}, {"Qty", "Qty"}, {"PipeIndex", "PipeIndex"}}},
    };
    return all;
}

Row conditionBoxes(const Row& line, const Values& values) {
    Row boxes{{"cmboFluidType", "Water"}, {"txtSOTMin", "40"}, {"txtAtmPressure", "14.7"}};
    for (const auto& [box, column] : boxColumns()["frmJobConditions"])
        if (!line.isEmpty())
            boxes[box] = line[column];
        else if (!boxes.contains(box))
            boxes[box] = "";
    if (!line["SysFluidType"].isEmpty())
        boxes["cmboFluidType"] = line["SysFluidType"];
    if (values.application == "Thermal Expansion Tank" && values.mode == "New")
        boxes["cmboFluidType"] = "Water";
    if (values.application == "Hydropneumatic Tank") {
        boxes["txtSOTMin"] = "0";
        boxes["txtSOTMax"] = "1";
    }
    return boxes;
}

/// The code that the stored series selects again; for RCBD it differs from the stored one.
QString preselected(const QString& stored) {
    static const QStringList codes = {"RCB", "R",   "RB", "RC",  "RGB", "RHB", "JW",
                                      "JWB", "JWG", "G",  "GGB", "GWB", "GW"};
    return codes.contains(stored) ? stored : QString();
}

Row tagBoxes(const Row& line) {
    Row boxes;
    for (int unit = 0; unit < std::min(line["Qty"].toInt(), 10); ++unit) {
        const QString tag = line[QString("TagID%1").arg(unit + 1, 2, 10, QChar('0'))];
        const bool given = !tag.isEmpty() && tag != "-";
        boxes[QString("txtPrefix1_%1").arg(unit)] = given ? tag.section('-', 0, 0) : QString();
        boxes[QString("txtSuffix1_%1").arg(unit)] = given ? tag.section('-', 1) : QString();
    }
    return boxes;
}

} // namespace

Face faceOf(const QString& window) {
    static const QMap<QString, Face> faces = {
        {"frmJobHeader", {About::Job}},
        {"frmClassSelect", {About::Job, false, "lblJobID"}},
        {"frmTankIDSearch", {About::Job, true, "lblJobID"}},
        {"frmJobOverview", {About::Job, true, "lblJobID"}},
        {"frmDelete", {About::Job, true, "lblJobID"}},
        {"frmSchedule", {About::Job, true, "lblJobID"}},
        {"frmJobConditions", {About::Line, false, "lblJobID"}},
        {"frmJobConditionsSHK", {About::Line, false, "lblJobID"}},
        {"frmConvertSteel", {About::Line}},
        {"frmTankSeries", {About::Line, false, "lblJobID", "lblTankID"}},
        {"frmtankselection", {About::Line, true, "lblJobID", "lblTankID"}},
        {"frmResults", {About::Line, true, nullptr, nullptr, "Results for Job: "}},
        {"frmResultSHK", {About::Line, true, nullptr, nullptr, "Results for Job: "}},
        {"frmResultsConvert", {About::Line, true}},
        {"frmPKGSelect",
         {About::Line, false, "lblJobID", nullptr, "Select Glycol Make-up Package for Job: "}},
        {"frmUnitTagData", {About::Line, true, nullptr, "lblTankID"}},
        {"frmResultSpecs", {About::Line, true, nullptr, "lblTankID"}},
        {"frmMetric", {About::Line, false, nullptr, nullptr, nullptr, "frmJobConditions"}},
        {"frmMetricSHK", {About::Line, false, nullptr, nullptr, nullptr, "frmJobConditionsSHK"}},
        {"frmCalcExpTSF", {About::Job, false, nullptr, nullptr, nullptr, "frmJobConditions"}},
        {"frmcalcThmTSF", {About::Job, false, nullptr, nullptr, nullptr, "frmJobConditions"}},
        {"frmCalcHydTSF", {About::Job, false, nullptr, nullptr, nullptr, "frmJobConditions"}},
    };
    return faces.value(window);
}

QStringList Notes::tanksOf(const QString& job) const {
    QStringList tanks;
    for (auto line = lines.cbegin(); line != lines.cend(); ++line)
        if (line.value()["JobID"] == job)
            tanks.append(line.key());
    std::ranges::sort(tanks, {}, [this](const QString& tank) { return lines[tank]["TankNo"].toInt(); });
    return tanks;
}

Row Notes::lineOf(const QString& window) const {
    return lines.value(tankOf(*windows[window].work));
}

void Notes::set(const Work& task, const QString& writer, std::optional<QString> Values::*name,
                const QString& text) {
    const Values before = *task;
    (*task).*name = text;
    const Work kept = std::make_shared<Values>(before);
    for (auto window = windows.begin(); window != windows.end(); ++window) {
        if (window->work != task)
            continue;
        if (window->line.isEmpty() && tankOf(before).isEmpty())
            window->line = tankOf(*task);
        if (window.key() != writer && leavesRecord(window->shows, before, *task))
            window->work = kept;
        else // opened for a line to come, which now has its number
            window->openedFor = *task;
    }
}

bool Notes::serves(const QString& pad, const QString& target) const {
    if (!isOpen(target) || (faceOf(pad).about == About::Job && !windows[pad].handsBack))
        return false;
    const Work own = windows[pad].work;
    const Work other = windows[target].work;
    const QString job = jobOf(*own);
    const QString line = windows[pad].line;
    return job == jobOf(*other) && line == tankOf(*other) && windows[pad].application == other->application &&
           ((!job.isEmpty() && !line.isEmpty()) || own == other);
}

bool Notes::open(const QString& window, const Work& task) {
    const Face face = faceOf(window);
    if (isOpen(window)) {
        Window& present = windows[window];
        // An estimate begun without a job joins the first job that takes it up.
        const bool goesAlong = face.serves && face.about == About::Job && jobOf(present.openedFor).isEmpty();
        const bool same = goesAlong || sameRecord(face.about, present.openedFor, *task);
        if (same && (!face.fresh || present.typed)) {
            present.work = task;
            present.openedFor = *task;
            present.line = tankOf(*task);
            present.application = task->application;
            return true;
        }
        if (!same && !closingCheck(window))
            return false;
    }
    windows[window] = {.work = task,
                       .openedFor = *task,
                       .shows = face.about,
                       .line = tankOf(*task),
                       .application = task->application};
    fill(window);
    return true;
}

bool Notes::leave(const QString& window, const QString& next) {
    if (!open(next, windows[window].work))
        return false;
    closingCheck(window);
    remove(window);
    return true;
}

/// What a screen does before it closes, for whatever reason.
bool Notes::closingCheck(const QString& window) {
    const Window& closing = windows[window];
    if (window == "frmTankIDSearch")
        set(closing.work, window, &Values::tank, closing.list.value(closing.chosen));
    if (window == "frmPKGSelect" && closing.typed)
        ask("Current record has not been saved!\nDo you want to save the record?", {"No"});
    if (window != "frmJobHeader" || !closing.typed || closing.boxes["txtJobID"].isEmpty())
        return true;
    const QString answer =
        ask("Record has not been saved!\nWould you like to save the record?", {"Yes", "No", "Cancel"});
    return answer == "No" || (answer == "Yes" && saveHeader());
}

bool Notes::close(const QString& window) {
    if (!isOpen(window))
        return true;
    if (!closingCheck(window))
        return false;
    if (QStringList{"frmClassSelect", "frmJobConditions", "frmJobConditionsSHK", "frmTankSeries"}.contains(
            window))
        cancelJob(window);
    remove(window);
    return true;
}

void Notes::cancelJob(const QString& window) {
    const QString job = jobOf(windows[window].openedFor);
    const QMap<QString, QStringList> companions = {
        {"frmJobConditions",
         {"frmCalcExpTSF", "frmCalcHydTSF", "frmcalcThmTSF", "frmMetric", "frmPipeSelect"}},
        {"frmJobConditionsSHK", {"frmMetricSHK", "frmPipeSelect"}}};
    for (const QString& companion : companions[window]) {
        const QString of = isOpen(companion) ? jobOf(valuesOf(companion)) : QString();
        if (of.isEmpty() || of == jobOf(valuesOf(window)))
            remove(companion);
    }
    remove(window);
    if (headers.contains(job) && tanksOf(job).isEmpty())
        deleteJob(job);
}

QStringList Notes::listFor(const QString& window) const {
    const Values& values = *windows[window].work;
    const QString job = jobOf(values);
    if (window == "frmTankIDSearch")
        return tanksOf(job) + QStringList{addNew};
    if (window == "frmDelete")
        return tanksOf(job);
    QStringList list;
    if (window == "frmtankselection")
        for (const Row& option : Reckoning::options(lineOf(window), values))
            list.append(option["Qty"] + " " + option["ModelNo"]);
    if (window == "frmSchedule")
        for (const QString& tank : tanksOf(job))
            for (int unit = 1; unit <= lines[tank]["Qty"].toInt(); ++unit) {
                const QString tag = lines[tank][QString("TagID%1").arg(unit, 2, 10, QChar('0'))];
                list.append(tag.isEmpty() || tag == "-" ? QString("%1.%2").arg(tank).arg(unit) : tag);
            }
    return list;
}

/// What a screen shows after reading its record.
void Notes::fill(const QString& window) {
    Window& filled = windows[window];
    const Values& values = *filled.work;
    const Row line = lineOf(window);
    filled.typed = false;
    filled.asRead = line;
    filled.boxes.clear();
    filled.list = listFor(window);
    if (window == "frmJobHeader") {
        const Row header = headers.value(jobOf(values));
        for (const auto& [box, column] : {std::pair("txtJobID", "JobID"), {"txtJobDscrptn", "JobDscrptn"}})
            filled.boxes[box] = header[column];
    } else if (window == "frmJobConditions") {
        filled.boxes = conditionBoxes(line, values);
    } else if (window == "frmTankSeries") {
        filled.boxes["txtTankType"] = preselected(line["TankClass"]);
        const QStringList sized = {"Expansion Tank", "Thermal Expansion Tank", "Hydropneumatic Tank"};
        if (!sized.contains(values.application.value_or("")))
            ask("Error loading data", {"OK"});
    } else if (window == "frmUnitTagData") {
        filled.boxes = tagBoxes(line);
    } else {
        for (const auto& [box, column] : boxColumns()[window])
            if (!line.isEmpty() || !window.startsWith("frmResult"))
                filled.boxes[box] = line[column];
        if (window == "frmConvertSteel" && line.isEmpty())
            filled.boxes["txtAtmPressure"] = "14.7";
    }
}

void Notes::refresh(const QString& window) {
    Window& front = windows[window];
    if (front.typed)
        return;
    const int chosen = front.chosen;
    const QString kept = front.list.value(chosen);
    // A screen for a line to come keeps what it has.
    if (faceOf(window).about == About::Line && lineOf(window).isEmpty())
        return;
    if (window == "frmTankSeries" || (window == "frmJobHeader" && !headers.contains(jobOf(*front.work))))
        return;
    fill(window);
    front.chosen = std::max(0, int(front.list.indexOf(kept)));
}

bool Notes::saveHeader() {
    const QString window = "frmJobHeader";
    Window& header = windows[window];
    const QString job = header.boxes["txtJobID"];
    if (header.typed && header.work->mode) {
        if (header.work->mode == "New" && headers.contains(job)) {
            ask("This job ID all ready exists!\nPlease change the entry", {"OK"});
            return false;
        }
        headers[job]["JobID"] = job;
        headers[job]["JobDscrptn"] = header.boxes["txtJobDscrptn"];
        header.typed = false;
    }
    set(header.work, window, &Values::job, job);
    return true;
}

bool Notes::saveLine(const QString& window, const Row& columns) {
    const Work task = windows[window].work;
    QString tank = tankOf(*task);
    const QStringList begin = {"frmJobConditions", "frmJobConditionsSHK", "frmConvertSteel", "frmPKGSelect"};
    const bool adds = (task->mode == "New" || task->tank == "") && begin.contains(window);
    if (adds) {
        const QString job = window == "frmConvertSteel" ? steelJob : jobOf(*task);
        if (!headers.contains(job)) {
            ask("This job has been deleted.", {"OK"});
            remove(window);
            return false;
        }
        const QStringList others = tanksOf(job);
        const int number = others.isEmpty() ? 1 : lines[others.last()]["TankNo"].toInt() + 1;
        tank = QString("%1.%2").arg(job).arg(number);
        lines[tank] = {{"TankID", tank}, {"JobID", job}, {"TankNo", QString::number(number)}};
        set(task, window, &Values::tank, tank);
    } else if (!lines.contains(tank)) {
        ask(headers.contains(jobOf(*task)) ? "This tank has been deleted." : "This job has been deleted.",
            {"OK"});
        remove(window);
        return false;
    }
    Row& line = lines[tank];
    const auto changed = [&](const QString& column) {
        return line[column] != windows[window].asRead[column];
    };
    const QStringList written = columns.keys();
    if (!adds && std::ranges::any_of(written, changed) &&
        ask("This tank has been changed since it was opened. Save anyway?", {"Yes", "No"}) == "No")
        return false;
    line.insert(columns);
    line.removeIf([](const auto& column) { return column.value().isNull(); });
    windows[window].asRead = line;
    return true;
}

void Notes::deleteTank(const QString& tank) {
    lines.remove(tank);
    windows.removeIf([&](const auto& window) {
        return window.value().shows == About::Line && tankOf(*window.value().work) == tank;
    });
}

void Notes::deleteJob(const QString& job, const QString& deleter) {
    for (const QString& tank : tanksOf(job))
        lines.remove(tank);
    headers.remove(job);
    windows.removeIf([&](const auto& window) {
        return window.value().shows != About::Nothing && window.key() != deleter &&
               jobOf(*window.value().work) == job;
    });
}
