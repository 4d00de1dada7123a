#include "core/base/Text.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Screens.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqliteLetters.h"
#include "setup/InstallerFiles.h"
#include "tests/runner/Commands.h"
#include "tests/runner/Controls.h"
#include "tests/runner/OfficeData.h"
#include "tests/support/Driver.h"

#include <QtTest/QTest>
#include <QtWidgets>

#include <sqlite3.h>

namespace {

using Words = const QStringList&;
using namespace Controls;
using Driver::settle;

bool buttonIsDown() {
    return std::ranges::any_of(QApplication::allWidgets(), [](QWidget* widget) {
        auto* button = dynamic_cast<QAbstractButton*>(widget);
        return button && button->isDown();
    });
}

void click(Stage&, Words w) {
    QWidget* target = control(w[0]);
    require(target->isEnabled(), w[0] + " is disabled");
    press(target, Driver::pressPoint(target));
}

void doubleClick(Stage&, Words w) {
    press(control(w[0]), Driver::pressPoint(control(w[0])), true);
}

void menu(Stage&, Words w) {
    QAction* action = command(w[0]);
    require(action->isEnabled() && action->isVisible(), "the command " + w[0] + " is not to be had");
    action->trigger();
}

void tool(Stage& stage, Words w) {
    if (w[0] != "BrennovalMain")
        return click(stage, {w[0] + "." + w[1]});
    QAction* action = BrennovalMain::instance()->toolCommand(w[1]);
    require(action && action->isEnabled(), "the tool " + w[1] + " is not to be had");
    action->trigger();
}

void type(Stage& stage, Words w) {
    QWidget* box = control(w[0]);
    press(box, box->rect().center());
    require(stage.dialogs.problem.isEmpty() && QApplication::focusWidget() == box,
            "the focus did not come to " + w[0]);
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_Delete);
    for (const QChar c : w.value(1))
        QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString(c), Qt::NoModifier);
}

void key(Stage&, Words w) {
    for (const QString& keys : w) {
        const QKeySequence sequence(keys);
        require(!sequence.isEmpty(), "no such key: " + keys);
        const QKeyCombination stroke = sequence[0];
        QWidget* focus = QApplication::focusWidget();
        QWidget* window = focus ? focus->window() : BrennovalMain::instance();
        if (!window && !Screens::loaded().isEmpty()) // before the main window comes
            window = Screens::find(Screens::loaded().first());
        require(window, "there is no window");
        QTest::keyClick(window->windowHandle(), stroke.key(), stroke.keyboardModifiers());
        if (stroke.key() == Qt::Key_Tab && stroke.keyboardModifiers() == Qt::ControlModifier)
            QTest::keyRelease(window->windowHandle(), Qt::Key_Control); // goes to the window that has focus
        // A mnemonic shows its button pressed for a moment before clicking it.
        require(QTest::qWaitFor([] { return !buttonIsDown(); }, 5000), "a button stays pressed");
        settle();
    }
}

void pick(Stage& stage, Words w) {
    auto* combo = dynamic_cast<QComboBox*>(control(w[0]));
    if (!combo)
        return click(stage, w);
    const int index = combo->findText(w.value(1));
    require(index >= 0 && combo->isEnabled(), w[0] + " does not offer " + w.value(1));
    combo->setCurrentIndex(index);
    emit combo->activated(index); // a list sends this even when the clicked row is already current
    emit combo->textActivated(w.value(1));
}

void row(Stage&, Words w) {
    auto* list = control<QAbstractItemView>(w[0]);
    const QPoint place = placeOf(list, w[1]).center();
    press(list->viewport(), place);
    if (w.value(2) == "open")
        press(list->viewport(), place, true);
}

void check(Stage&, Words w) {
    auto* list = control<QAbstractItemView>(w[0]);
    const QRect place = placeOf(list, w[1]);
    press(list->viewport(), {place.left() + 10, place.center().y()});
}

/// Presses a heading of a list.
void sort(Stage&, Words w) {
    auto* list = control<QTreeView>(w[0]);
    const QHeaderView* header = list->header();
    const int column = columnOf(list, w[1]);
    press(header->viewport(), {header->sectionViewportPosition(column) + 20, header->height() / 2});
}

/// Turns a calendar to the month of a date and presses the day.
void date(Stage&, Words w) {
    auto* calendar = control<QCalendarWidget>(w[0]);
    const QDate day = QDate::fromString(w[1], Qt::ISODate);
    require(day.isValid(), w[1] + " is no day");
    calendar->setCurrentPage(day.year(), day.month());
    auto* days = calendar->findChild<QTableView*>();
    int past = 0; // days of the month so far; days of the month before come first
    for (int cell = 0; cell < days->model()->rowCount() * days->model()->columnCount(); ++cell) {
        const QModelIndex place =
            days->model()->index(cell / days->model()->columnCount(), cell % days->model()->columnCount());
        if (past > 0 || place.data().toString() == "1")
            ++past;
        if (past == day.day())
            return press(days->viewport(), days->visualRect(place).center());
    }
    fail("the calendar does not show " + w[1]);
}

void answer(Stage& stage, Words w) {
    stage.dialogs.answers.append({w[0], w.value(1), w.size() < 2});
}

/// Prepares the text for the next input box, whose prompt must be the second word if there is one.
void input(Stage& stage, Words w) {
    stage.dialogs.inputs.append({w[0], w.value(1), w.size() < 2});
}

/// Puts a file into the installer's folder of the scenario.
void installerFile(Stage&, Words w) {
    const QDir folder(InstallerFiles::installerFolderPath());
    QFile target(folder.filePath(w[0]));
    const QByteArray text = w.value(1).toLocal8Bit();
    require(folder.mkpath(".") && target.open(QIODevice::WriteOnly) && target.write(text) == text.size(),
            "cannot write " + target.fileName());
}

void file(Stage& stage, Words w) {
    stage.dialogs.files.append(QDir(stage.homeFolder).filePath(w[0]));
}

void writeFile(Stage& stage, Words w) {
    QFile target(QDir(stage.homeFolder).filePath(w[0]));
    require(target.open(QIODevice::WriteOnly) && target.write(w[1].toUtf8()) > 0,
            "cannot write " + target.fileName());
}

void cancel(Stage& stage, Words) {
    stage.dialogs.files.append(QString());
}

void print(Stage& stage, Words w) {
    stage.dialogs.prints.append(
        {QDir(stage.homeFolder).filePath(w[0]), w.value(1).toInt(), w.value(2).toInt()});
}

/// Presses Stop in the progress of the next work once so many of its parts are done.
void stop(Stage& stage, Words w) {
    stage.dialogs.stops.append(w.value(0).toInt());
}

void noBrowser(Stage& stage, Words) {
    stage.dialogs.hasBrowser = false;
}

/// Drags a screen's frame to a size.
void size(Stage&, Words w) {
    windowOf(w[0])->resize(w[1].toInt(), w[2].toInt());
}

void close(Stage&, Words w) {
    windowOf(w[0])->close();
}

/// Presses a screen's title bar.
void title(Stage&, Words w) {
    QWidget* frame = windowOf(w[0]);
    press(frame, {frame->width() / 3, 8});
}

/// Brings a screen to the front through the Windows menu. Several may have the same title there.
void front(Stage&, Words w) {
    QMenu* menu = command("mnuWindows")->menu();
    emit menu->aboutToShow();
    const auto frames = BrennovalMain::instance()->area()->subWindowList();
    const auto place = frames.indexOf(static_cast<QMdiSubWindow*>(windowOf(w[0])));
    QList<QAction*> entries = menu->actions();
    entries.removeIf([](const QAction* entry) { return !entry->isCheckable(); });
    require(place >= 0 && entries.size() == frames.size(), "the Windows menu does not list " + w[0]);
    entries[place]->trigger();
}

/// Writes a text into a box as a screen reader or a voice does.
void dictate(Stage&, Words w) {
    QWidget* box = control(w[0]);
    QAccessible::queryAccessibleInterface(box)->setText(QAccessible::Value, w[1]);
}

void minimise(Stage&, Words w) {
    windowOf(w[0])->showMinimized();
}

/// What another program has copied.
void clipboard(Stage&, Words w) {
    QApplication::clipboard()->setText(w[0]);
}
/// Arranges data in the engine's own dialect.
void sql(Stage&, Words w) {
    const Connection data = Gateway::dbConnection(w[0]);
    if (data.isOffice())
        return OfficeData::arrange(data.dataSource(), w[1]);
    const QByteArray path = data.dataSource().toUtf8();
    sqlite3* handle = nullptr;
    const int opened = sqlite3_open_v2(path.constData(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    SqliteLetters::add(handle);
    const bool done = opened == SQLITE_OK &&
                      // The program may be making its daily copy.
                      sqlite3_busy_timeout(handle, 4000) == SQLITE_OK &&
                      sqlite3_exec(handle, w[1].toUtf8().constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
    const QString problem = done ? QString() : QString::fromUtf8(sqlite3_errmsg(handle));
    sqlite3_close(handle);
    require(done, problem);
}

/// Arranges a session value: writes a text, or removes the value if none is given.
void session(Stage&, Words w) {
    using namespace Registry;
    if (w.size() > 1)
        SetRegValue(AppRegistryKey(), w[0], w[1], RegistryType::Text);
    else
        removeRegValue(HKeyCurrentUser(), AppRegistryKey(), w[0]);
}

void shot(Stage& stage, Words w) {
    if (stage.shotFolder.isEmpty())
        return;
    QWidget* target = w.size() > 1 ? windowOf(w[0]) : static_cast<QWidget*>(BrennovalMain::instance());
    settle();
    require(QDir().mkpath(stage.shotFolder) && target->grab().save(QDir(stage.shotFolder).filePath(w.last())),
            "cannot write " + w.last());
}

} // namespace

const QHash<QString, Command>& actionCommands() {
    static const QHash<QString, Command> all = {
        {"menu", {menu, 1, true}},
        {"front", {front, 1, true}},
        {"tool", {tool, 2, true}},
        {"click", {click, 1, true}},
        {"dictate", {dictate, 2, true}},
        {"doubleclick", {doubleClick, 1, true}},
        {"type", {type, 2, true}},
        {"key", {key, 1, true}},
        {"pick", {pick, 1, true}},
        {"row", {row, 2, true}},
        {"check", {check, 2, true}},
        {"sort", {sort, 2, true}},
        {"date", {date, 2, true}},
        {"answer", {answer, 1}},
        {"input", {input, 1}},
        {"installer-file", {installerFile, 2}},
        {"file", {file, 1}},
        {"cancel", {cancel, 0}},
        {"write", {writeFile, 2}},
        {"close", {close, 1, true}},
        {"title", {title, 1}},
        {"minimise", {minimise, 1}},
        {"size", {size, 3}},
        {"clipboard", {clipboard, 1}},
        {"no-browser", {noBrowser, 0}},
        {"print", {print, 1}},
        {"stop", {stop, 0}},
        {"sql", {sql, 2}},
        {"session", {session, 1}},
        {"shot", {shot, 1}},
    };
    return all;
}
