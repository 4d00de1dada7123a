#include "tests/support/Driver.h"
#include "tests/walk/Steps.h"

#include <QTreeWidget>

namespace {

using namespace Steps;

QString editScreen(const QString& job) {
    return job == "CONVERT" ? "frmTankIDSearch" : "frmJobHeader";
}

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

} // namespace

QList<Step> Steps::jobSteps() {
    return {
        {"find", 8, "frmjobsearchdialog", find},
        {"take a job", 12, "frmjobsearchdialog", takeJob},
        {"type a header", 6, "frmJobHeader", typeHeader},
        {"header, Next", 8, "frmJobHeader", headerNext},
        {"cancel", 1, "frmJobHeader", cancel},
        {"choose an application", 10, "frmClassSelect", chooseApplication},
        {"cancel", 1, "frmClassSelect", cancel},
        {"choose a tank", 8, "frmTankIDSearch", chooseTank},
        {"choose a row", 2, "frmTankIDSearch", chooseRow},
        {"picker, Previous", 1, "frmTankIDSearch", pickerPrevious},
        {"cancel", 1, "frmTankIDSearch", cancel},
        {"delete", 4, "frmDelete", deleteChosen},
        {"search again", 1, "frmDelete", searchAgain},
    };
}
