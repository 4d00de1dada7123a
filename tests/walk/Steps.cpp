#include "tests/walk/Steps.h"

#include "tests/support/Driver.h"

#include <QTreeWidget>

namespace Steps {

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

QStringList rowsOf(const QString& window, int column) {
    QStringList rows;
    const auto* list = Driver::control<QTreeWidget>(window, "lvOptions");
    for (int row = 0; list && row < list->topLevelItemCount(); ++row)
        rows.append(list->topLevelItem(row)->text(column));
    return rows;
}

void cancel(Walk& walk, const QString& window) {
    walk.reach(window, "cmdCancel");
    walk.notes.close(window);
    walk.press(window, "cmdCancel");
}

void chooseRow(Walk& walk, const QString& window) {
    walk.front(window);
    Window& noted = walk.notes.windows[window];
    if (noted.list.isEmpty())
        return;
    noted.chosen = walk.below(int(noted.list.size()));
    walk.say(QString("row %1.lvOptions %2").arg(window).arg(noted.chosen + 1));
}

void openBeside(Walk& walk, const QString& window, const QString& button, const QString& screen) {
    walk.reach(window, button);
    walk.notes.open(screen, walk.notes.windows[window].work);
    walk.press(window, button);
}

void showReport(Notes& notes, const Work& work, About about) {
    notes.open("frmReportViewer", work);
    notes.windows["frmReportViewer"].shows = about;
}

bool scheduleStops(const Walk& walk, const QString& job) {
    const QStringList tanks = walk.notes.tanksOf(job);
    return std::ranges::any_of(
        tanks, [&](const QString& tank) { return walk.notes.lines[tank]["ModelNo"].isEmpty(); });
}

void closeError(Walk& walk) {
    walk.say("expect-screen frmError");
    walk.say("close frmError");
}

} // namespace Steps

const QList<Step>& allSteps() {
    static const QList<Step> all = Steps::menuSteps() + Steps::jobSteps() + Steps::sizingSteps() +
                                   Steps::estimateSteps() + Steps::resultSteps();
    return all;
}
