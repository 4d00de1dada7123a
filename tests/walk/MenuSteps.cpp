#include "core/shell/BrennovalMain.h"
#include "core/shell/Commands.h"
#include "tests/support/Driver.h"
#include "tests/walk/Steps.h"

#include <QAction>
#include <QLabel>
#include <QTreeWidget>

namespace {

using namespace Steps;

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

} // namespace

QList<Step> Steps::menuSteps() {
    return {
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
        {"overview, header", 6, "frmJobOverview", overviewHeader},
        {"overview, add a tank", 6, "frmJobOverview", overviewAdd},
    };
}
