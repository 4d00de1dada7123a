#include "tests/walk/Steps.h"

namespace {

using namespace Steps;

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

} // namespace

QList<Step> Steps::resultSteps() {
    return {
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
}
