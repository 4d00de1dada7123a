#include "tests/walk/Walk.h"

#include "core/base/Text.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "tests/support/Driver.h"

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTreeWidget>

namespace {

QString quoted(QString text) {
    return "\"" + text.replace("\n", "\\n").replace("\r", "\\r") + "\"";
}

[[noreturn]] void fail(const QString& what) {
    throw Failure{what};
}

/// Whether a press in the middle of a widget would reach it.
bool shows(const QWidget* widget) {
    if (!widget->isVisible() || widget->window()->isMinimized())
        return false;
    const QPoint place = widget->mapTo(widget->window(), Driver::pressPoint(widget));
    const QWidget* top = widget->window()->childAt(place);
    return top && (top == widget || widget->isAncestorOf(top));
}

Row withoutEmpty(Row row) {
    row.removeIf([](const auto& column) { return column.value().isEmpty(); });
    return row;
}

QString told(const Row& row) {
    QStringList columns;
    for (auto column = row.cbegin(); column != row.cend(); ++column)
        columns.append(column.key() + "=" + column.value());
    return columns.join(", ");
}

} // namespace

Walk::Walk(const Stage& stage) : player(stage) {
    notes.ask = [this](const QString& text, const QStringList& buttons) {
        QString button = oneOf(buttons);
        answer(button, text);
        return button;
    };
}

bool Walk::take(const Taken& taken) {
    const Step& step = allSteps()[taken.step];
    random.seed(taken.seed);
    if (*step.window && !notes.isOpen(step.window))
        return false;
    const qsizetype before = story.size();
    const Work workBefore = notes.work;
    if (*step.window)
        notes.work = notes.windows[step.window].work;
    step.act(*this, step.window);
    if (story.size() == before) {
        notes.work = workBefore;
        return false;
    }
    if (const QString front = inFront(); notes.isOpen(front)) {
        notes.work = notes.windows[front].work;
        notes.refresh(front);
    }
    compare();
    return true;
}

QString Walk::inFront() const {
    const QMdiSubWindow* front = BrennovalMain::instance()->area()->currentSubWindow();
    return front && front->widget() ? front->widget()->objectName() : QString();
}

QString Walk::number(double low, double high, const QString& present) {
    const int steps = int((high - low) * 100);
    QString text;
    do
        text = shownNumber(Round(low + (1 + below(steps)) / 100.0, 2));
    while (text == present);
    return text;
}

void Walk::say(const QString& line) {
    story.append(line);
    player.play(line);
}

void Walk::answer(const QString& button, const QString& text) {
    say("answer " + button + " " + quoted(text));
}

void Walk::front(const QString& window) {
    const QWidget* frame = Screens::find(window)->parentWidget();
    if (inFront() != window || frame->isMinimized()) {
        const QWidget* top =
            frame->window()->childAt(frame->mapTo(frame->window(), QPoint(frame->width() / 3, 8)));
        say((top == frame && !frame->isMinimized() && chance(2) ? "title " : "front ") + window);
    }
    notes.refresh(window);
    notes.work = notes.windows[window].work;
}

void Walk::reach(const QString& window, const QString& control) {
    const auto* target = Driver::control(window, control);
    if (!target)
        fail("there is no " + window + "." + control);
    if (shows(target) && chance(2)) {
        notes.refresh(window);
        notes.work = notes.windows[window].work;
    } else {
        front(window);
    }
}

void Walk::press(const QString& window, const QString& button) {
    say("click " + window + "." + button);
}

void Walk::type(const QString& window, const QString& box, const QString& text) {
    say("type " + window + "." + box + " " + quoted(text));
    notes.windows[window].boxes[box] = text;
    notes.windows[window].typed = true;
}

void Walk::command(const QString& menu, const Work& begun, const QString& tool) {
    notes.work = begun;
    say(tool.isEmpty() || chance(2) ? "menu " + menu : "tool BrennovalMain " + tool);
}

void Walk::compare() const {
    if (Driver::isOpen("frmError"))
        fail("an error report: " + Driver::report());
    QStringList open = Screens::loaded();
    open.sort();
    if (const QStringList noted = notes.windows.keys(); open != noted)
        fail("open are " + open.join(", ") + " instead of " + noted.join(", "));
    compareRows("tblJobHeader", "JobID", notes.headers);
    compareRows("tblJobData", "TankID", notes.lines);
    for (auto window = notes.windows.cbegin(); window != notes.windows.cend(); ++window)
        compareWindow(window.key());
    if (const QString front = inFront(); notes.isOpen(front))
        compareFront(front);
}

void Walk::compareRows(const QString& table, const QString& key, const QMap<QString, Row>& noted) const {
    QMap<QString, Row> stored;
    for (Row row : Reckoning::query("User", "SELECT * FROM " + table)) {
        row.remove("DateCreated");
        // The converter describes its own job, and the lists supply no names here.
        if (table == "tblJobHeader")
            row = {{"JobID", row["JobID"]}, {"JobDscrptn", row["JobDscrptn"]}};
        stored[row[key]] = withoutEmpty(row);
    }
    for (const QString& record : stored.keys() + noted.keys())
        if (stored.contains(record) != noted.contains(record))
            fail(record +
                 (stored.contains(record) ? " is stored and must not be" : " must be stored and is not"));
        else if (const Row row = withoutEmpty(noted[record]); stored[record] != row)
            fail(record + " is stored as " + told(stored[record]) + " instead of " + told(row));
}

/// Everything that a window says about its record must match the record it is for.
void Walk::compareWindow(const QString& window) const {
    const Face face = faceOf(window);
    const Values& record = notes.windows[window].openedFor;
    const auto compareLabel = [&](const char* label, const QString& expected) {
        if (const auto* shown = label ? Driver::control<QLabel>(window, label) : nullptr;
            shown && shown->text() != expected)
            fail(window + "." + label + " says " + shown->text() + " instead of " + expected);
    };
    compareLabel(face.job, record.job.value_or(""));
    const auto* tank = face.tank ? Driver::control<QLabel>(window, face.tank) : nullptr;
    const bool waits =
        tank && tank->text().isEmpty() && window != inFront(); // for the number of a line to come
    if (record.tank && *record.tank != "" &&
        *record.tank != "Add New..." && // a line to come may have its number by now
        !waits)
        compareLabel(face.tank, *record.tank);
    if (face.serves) {
        const auto* button = Driver::control(window, window.startsWith("frmMetric") ? "cmdOK" : "bttnOK");
        if (const bool serves = notes.serves(window, face.serves); button->isEnabled() != serves)
            fail("the OK of " + window + (serves ? " is disabled" : " is enabled"));
    }
    const QString title = Screens::find(window)->windowTitle();
    if (face.title && title != face.title + record.job.value_or(""))
        fail(window + " has the title " + title + " instead of " + face.title + record.job.value_or(""));
}

/// The front window shows what is stored and what the user typed.
void Walk::compareFront(const QString& window) const {
    const Window& noted = notes.windows[window];
    for (auto box = noted.boxes.cbegin(); box != noted.boxes.cend(); ++box) {
        const auto* field = Driver::control(window, box.key());
        const QString text = field ? Fields::fieldText(field) : "no box";
        if (text != box.value() &&
            !(text == "0" && box.value().isEmpty())) // an empty box becomes 0 when left
            fail(QString("%1.%2 shows \"%3\" instead of \"%4\"").arg(window, box.key(), text, box.value()));
    }
    const auto* list = Driver::control<QTreeWidget>(window, "lvOptions");
    if (!list || list->isHidden() || (faceOf(window).about == About::Nothing))
        return;
    QStringList rows;
    for (int row = 0; row < list->topLevelItemCount(); ++row)
        rows.append(window == "frmtankselection"
                        ? list->topLevelItem(row)->text(0) + " " + list->topLevelItem(row)->text(1)
                        : list->topLevelItem(row)->text(0));
    if (window != "frmPKGSelect" && rows != noted.list)
        fail(window + " lists " + rows.join(", ") + " instead of " + noted.list.join(", "));
}
