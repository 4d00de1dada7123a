#include "tests/runner/Player.h"
#include "tests/runner/OfficeData.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/base/Program.h"
#include "core/base/Text.h"
#include "core/base/Words.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Commands.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqliteLetters.h"
#include "documents/viewer/frmReportViewer.h"
#include "setup/InstallerFiles.h"
#include "setup/pages/PageView.h"
#include "tests/support/Driver.h"

#include <QtTest/QTest>
#include <QtWidgets>

#include <sqlite3.h>

#include <algorithm>

namespace {

using Words = const QStringList&;

[[noreturn]] void fail(const QString& what) {
    throw Failure{what};
}

void require(bool holds, const QString& otherwise) {
    if (!holds)
        fail(otherwise);
}

void expectEqual(const QString& what, const QString& expected, const QString& found) {
    if (expected != found)
        fail(QString("%1: expected \"%2\", found \"%3\"").arg(what, expected, found));
}

QStringList wordsOf(const QString& line) {
    QStringList found;
    for (const std::string& word : splitWords(line.toStdString()))
        found.append(QString::fromStdString(word));
    return found;
}

using Driver::settle;

Screen* screen(const QString& name) {
    Screen* found = Screens::find(name);
    if (!found)
        fail("the screen " + name + " is not open; open are: " + Screens::loaded().join(", "));
    return found;
}

template<typename Control = QWidget>
Control* control(const QString& path) {
    const QString window = path.section('.', 0, 0);
    const QWidget* owner =
        window == "BrennovalMain" ? static_cast<QWidget*>(BrennovalMain::instance()) : screen(window);
    auto* found = owner->findChild<Control*>(path.section('.', 1));
    if (!found)
        fail("there is no control " + path);
    return found;
}

QAction* command(const QString& name) {
    QAction* action = Commands::action(name);
    if (!action)
        fail("there is no command " + name);
    return action;
}

/// The window of a screen: its frame in the main window, or the screen itself.
QWidget* windowOf(const QString& name) {
    if (name == "BrennovalMain")
        return BrennovalMain::instance();
    QWidget* frame = screen(name)->parentWidget();
    return frame ? frame : screen(name);
}

void press(QWidget* target, const QPoint& point, bool twice = false) {
    if (const QString why = Driver::pressAt(target, point, twice); !why.isEmpty())
        fail(why);
}

bool buttonIsDown() {
    return std::ranges::any_of(QApplication::allWidgets(), [](QWidget* widget) {
        auto* button = dynamic_cast<QAbstractButton*>(widget);
        return button && button->isDown();
    });
}

/// A row of a list, counted from 1.
QModelIndex rowOf(const QAbstractItemView* list, const QString& number, int column = 0) {
    const QModelIndex found = list->model()->index(number.toInt() - 1, column);
    require(found.isValid(), QString("the list has %1 rows").arg(list->model()->rowCount()));
    return found;
}

/// Scrolls to a row and returns its place in the list.
QRect placeOf(QAbstractItemView* list, const QString& number) {
    const QModelIndex row = rowOf(list, number);
    list->scrollTo(row);
    return list->visualRect(row);
}

/// The column of a heading. A list box has one column without a heading.
int columnOf(const QAbstractItemView* list, const QString& heading) {
    for (int column = 0; column < list->model()->columnCount(); ++column)
        if (dynamic_cast<const QListView*>(list) ||
            list->model()->headerData(column, Qt::Horizontal).toString() == heading)
            return column;
    fail("the list has no column " + heading);
}

/// A caption as displayed, without mnemonic markers.
QString shown(QString caption) {
    return caption.replace("&&", QString(QChar(1))).remove('&').replace(QChar(1), '&');
}

QString textOf(QWidget* widget) {
    if (auto* label = dynamic_cast<QLabel*>(widget))
        return label->buddy() ? shown(label->text()) : label->text();
    if (auto* check = dynamic_cast<QCheckBox*>(widget))
        return check->isChecked() ? "checked" : "clear";
    if (auto* button = dynamic_cast<QAbstractButton*>(widget))
        return shown(button->text());
    if (auto* group = dynamic_cast<QGroupBox*>(widget))
        return shown(group->title());
    if (auto* spin = dynamic_cast<QAbstractSpinBox*>(widget))
        return spin->text();
    if (auto* pages = dynamic_cast<PageView*>(widget))
        return pages->plainText();
    return Fields::fieldText(widget);
}

/// The single value that a query in the engine's own dialect returns, as the engine and as the program write
/// it.
QStringList queried(const QString& database, const QString& sql) {
    const Connection data = Gateway::dbConnection(database);
    if (data.isOffice())
        return OfficeData::queried(data.dataSource(), sql);
    const QByteArray file = data.dataSource().toUtf8();
    sqlite3* handle = nullptr;
    sqlite3_stmt* statement = nullptr;
    QStringList texts;
    QString problem;
    const int opened = sqlite3_open_v2(file.constData(), &handle, SQLITE_OPEN_READONLY, nullptr);
    SqliteLetters::add(handle);
    if (opened != SQLITE_OK ||
        sqlite3_prepare_v2(handle, sql.toUtf8().constData(), -1, &statement, nullptr) != SQLITE_OK) {
        problem = QString::fromUtf8(sqlite3_errmsg(handle));
    } else if (sqlite3_step(statement) == SQLITE_ROW) {
        const bool number = sqlite3_column_type(statement, 0) == SQLITE_FLOAT;
        if (number)
            texts.append(QString::fromStdString(NumberText(sqlite3_column_double(statement, 0))));
        texts.append(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0))));
    } else {
        texts.append(QString());
    }
    sqlite3_finalize(statement);
    sqlite3_close(handle);
    require(problem.isEmpty(), problem);
    return texts;
}

QString fileText(const QString& path) {
    if (path.endsWith(".pdf", Qt::CaseInsensitive)) {
        QProcess reader;
        reader.start("pdftotext", {"-layout", path, "-"});
        require(reader.waitForFinished() && reader.exitCode() == 0, "pdftotext cannot read " + path);
        return QString::fromUtf8(reader.readAllStandardOutput());
    }
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), path + " cannot be read");
    return QString::fromUtf8(file.readAll());
}

/// Runs the splash until the main window is open or another screen comes up instead.
void start(Stage& stage) {
    stage.started = true;
    Screens::open("frmSplash");
    const auto arrived = [] {
        return BrennovalMain::instance() || Screens::find("frmDatabasePath") || Screens::find("frmError");
    };
    require(QTest::qWaitFor(arrived, 10000), "the main window did not come");
    if (BrennovalMain* window = BrennovalMain::instance()) {
        window->resize(stage.window);
        window->activateWindow();
    }
    settle();
}

void end(Stage& stage) {
    const QStringList open = Screens::loaded();
    for (auto name = open.crbegin(); name != open.crend(); ++name)
        Screens::unload(*name);
    delete BrennovalMain::instance();
    settle();
    stage.started = false;
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

/// Expects the next web address or program that was requested.
void expectOpened(Stage& stage, Words w) {
    expectEqual("opened", w[0],
                stage.dialogs.opened.isEmpty() ? QString() : stage.dialogs.opened.takeFirst());
}

void expectSuggested(Stage& stage, Words w) {
    expectEqual("suggested name", w[0], stage.dialogs.suggestedName);
}

/// Expects a text on a page, counted from 1, of the report in the viewer once all its pages are made.
void expectPage(Stage&, Words w) {
    const auto viewer = [] { return static_cast<frmReportViewer*>(screen("frmReportViewer")); };
    const QDeadlineTimer patience(20000);
    while (!viewer()->isWhole() && !patience.hasExpired())
        settle();
    require(viewer()->isWhole(), "the pages are not made");
    const Pages& pages = viewer()->document().pages;
    const int number = w[0].toInt();
    require(number >= 1 && number <= pages.size(), QString("the report has %1 pages").arg(pages.size()));
    QStringList found;
    for (const PageText& text : pages[number - 1].texts)
        found.append(text.plain());
    require(found.join('\n').contains(w[1]),
            "page " + w[0] + " does not hold \"" + w[1] + "\"; it holds: " + found.join(" | "));
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

/// The Windows menu lists an entry.
void expectListed(Stage&, Words w) {
    QMenu* menu = command("mnuWindows")->menu();
    emit menu->aboutToShow();
    QStringList entries;
    for (const QAction* entry : menu->actions())
        entries << shown(entry->text());
    require(entries.contains(w[0]), "the Windows menu lists " + entries.join(" | "));
}

/// Writes a text into a box as a screen reader or a voice does.
void dictate(Stage&, Words w) {
    QWidget* box = control(w[0]);
    QAccessible::queryAccessibleInterface(box)->setText(QAccessible::Value, w[1]);
}

void minimise(Stage&, Words w) {
    windowOf(w[0])->showMinimized();
}

void expect(Stage&, Words w) {
    expectEqual(w[0], w[1], textOf(control(w[0])));
}
void expectHolds(Stage&, Words w) {
    const QString text = textOf(control(w[0]));
    require(text.contains(w[1]), QString("%1 does not hold \"%2\"; it holds \"%3\"").arg(w[0], w[1], text));
}
void expectVisible(Stage&, Words w) {
    require(control(w[0])->isVisible(), w[0] + " is hidden");
}
void expectHidden(Stage&, Words w) {
    require(!control(w[0])->isVisible(), w[0] + " is visible");
}
void expectEnabled(Stage&, Words w) {
    require(control(w[0])->isEnabled(), w[0] + " is disabled");
}
void expectDisabled(Stage&, Words w) {
    require(!control(w[0])->isEnabled(), w[0] + " is enabled");
}
void expectError(Stage&, Words w) {
    require(Fields::isMarked(control(w[0])), w[0] + " is not marked");
}
void expectOk(Stage&, Words w) {
    require(!Fields::isMarked(control(w[0])), w[0] + " is marked");
}
void expectHint(Stage&, Words w) {
    expectEqual(w[0], w[1], control(w[0])->toolTip());
}
void expectFocus(Stage&, Words w) {
    const QWidget* wanted = control(w[0]);
    const QWidget* focus = QApplication::focusWidget();
    require(focus == wanted, "the focus is at " + (focus ? focus->objectName() : QString("nothing")));
    const auto* list = dynamic_cast<const QAbstractItemView*>(wanted);
    const QWidget* shown = list ? list->viewport() : wanted;
    const QRect row = list ? list->visualRect(list->currentIndex()) : wanted->rect();
    const QPoint part = list ? QPoint(2, row.isValid() ? row.center().y() : 2) : row.center();
    require(shown->visibleRegion().contains(part), w[0] + " has the focus out of sight");
}
void expectScreen(Stage&, Words w) {
    const auto visible = [&] {
        const QWidget* window =
            w[0] == "BrennovalMain" ? static_cast<QWidget*>(BrennovalMain::instance()) : Screens::find(w[0]);
        return window && window->isVisible();
    };
    // A screen opened by a timer may take a while.
    require(QTest::qWaitFor(visible, 2000), w[0] + " is not open; open are: " + Screens::loaded().join(", "));
}
void expectClosed(Stage&, Words w) {
    require(!Screens::find(w[0]), w[0] + " is open");
}
void expectTitle(Stage&, Words w) {
    expectEqual("title", w[1],
                w[0] == "BrennovalMain" ? BrennovalMain::instance()->windowTitle()
                                        : windowOf(w[0])->windowTitle());
}
void expectStatus(Stage&, Words w) {
    require(BrennovalMain::instance(), "the main window does not stand");
    // Results of a thread started at launch may take a while.
    static_cast<void>(QTest::qWaitFor([&] { return StatusBar::statusText() == w[0]; }, 2000));
    expectEqual("status", w[0], StatusBar::statusText());
}
void expectRows(Stage&, Words w) {
    const auto* combo = dynamic_cast<QComboBox*>(control(w[0]));
    const auto* rows = combo ? combo->model() : control<QAbstractItemView>(w[0])->model();
    expectEqual(w[0] + " rows", w[1], QString::number(rows->rowCount()));
}
void expectCell(Stage&, Words w) {
    auto* list = control<QAbstractItemView>(w[0]);
    expectEqual(w[0], w[3], rowOf(list, w[1], columnOf(list, w[2])).data().toString());
}
void expectMenu(Stage&, Words w) {
    const QAction* action = command(w[0]);
    const QHash<QString, bool> states = {{"enabled", action->isEnabled()},
                                         {"disabled", !action->isEnabled()},
                                         {"hidden", !action->isVisible()},
                                         {"visible", action->isVisible()}};
    require(states.value(w[1]), w[0] + " is not " + w[1]);
}
void expectBeep(Stage& stage, Words) {
    require(std::exchange(stage.dialogs.beeps, 0) > 0, "there was no beep");
}
void expectClipboard(Stage&, Words w) {
    expectEqual("clipboard", w[0], QApplication::clipboard()->text());
}
void expectClipboardHolds(Stage&, Words w) {
    require(QApplication::clipboard()->text().contains(w[0]), "the clipboard does not hold " + w[0]);
}
/// What another program has copied.
void clipboard(Stage&, Words w) {
    QApplication::clipboard()->setText(w[0]);
}
void expectSession(Stage&, Words w) {
    QString text;
    Registry::GetRegValue(Registry::HKeyCurrentUser(), Registry::AppRegistryKey(), w[0], text);
    expectEqual(w[0], w[1], text);
}
void expectSql(Stage&, Words w) {
    const QStringList found = queried(w[0], w[1]);
    require(found.contains(w[2]),
            QString("%1: expected \"%2\", found \"%3\"").arg(w[1], w[2], found.first()));
}
void expectFile(Stage& stage, Words w) {
    const QString path = QDir(stage.homeFolder).filePath(w[0]);
    require(QFile::exists(path), "there is no file " + w[0]);
    if (w.size() > 1)
        require(fileText(path).contains(w[1]), w[0] + " does not hold \"" + w[1] + "\"");
}

/// Compares a text with the one kept in the folder golden, apart from today's date and the version. With
/// BRENNOVAL_WRITE_GOLDEN the kept one is written anew, to be read before it is committed.
void expectGolden(Stage& stage, Words w) {
    QString text = fileText(QDir(stage.homeFolder).filePath(w[0]));
    text.replace(shownDate(QDate::currentDate()), "{date}");
    text.replace(Program::fullProgramVersion(), "{version}");
    QFile golden(QDir(stage.scenarioFolder).filePath("golden/" + w[1]));
    if (qEnvironmentVariableIsSet("BRENNOVAL_WRITE_GOLDEN")) {
        require(golden.open(QIODevice::WriteOnly), golden.fileName() + " cannot be written");
        golden.write(text.toUtf8());
        return;
    }
    require(golden.open(QIODevice::ReadOnly), "there is no golden text " + w[1]);
    const QStringList expected = QString::fromUtf8(golden.readAll()).split('\n');
    const QStringList lines = text.split('\n');
    for (qsizetype i = 0; i < std::max(expected.size(), lines.size()); ++i)
        require(expected.value(i) == lines.value(i), QString("%1, line %2: \"%3\" instead of \"%4\"")
                                                         .arg(w[1])
                                                         .arg(i + 1)
                                                         .arg(lines.value(i), expected.value(i)));
}

void expectNoFile(Stage& stage, Words w) {
    require(!QFile::exists(QDir(stage.homeFolder).filePath(w[0])), "there is a file " + w[0]);
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

struct Command {
    void (*run)(Stage&, Words);
    int leastWords;
    bool acts = false; // prepared answers must have been asked for by its end
};

const QHash<QString, Command>& commands() {
    static const QHash<QString, Command> all = {
        {"start", {[](Stage&, Words) {}, 0}},
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
        {"expect", {expect, 2}},
        {"expect-holds", {expectHolds, 2}},
        {"expect-visible", {expectVisible, 1}},
        {"expect-hidden", {expectHidden, 1}},
        {"expect-enabled", {expectEnabled, 1}},
        {"expect-disabled", {expectDisabled, 1}},
        {"expect-error", {expectError, 1}},
        {"expect-ok", {expectOk, 1}},
        {"expect-hint", {expectHint, 2}},
        {"expect-focus", {expectFocus, 1}},
        {"expect-screen", {expectScreen, 1}},
        {"expect-closed", {expectClosed, 1}},
        {"expect-title", {expectTitle, 2}},
        {"expect-status", {expectStatus, 1}},
        {"expect-rows", {expectRows, 2}},
        {"expect-cell", {expectCell, 4}},
        {"expect-menu", {expectMenu, 2}},
        {"expect-listed", {expectListed, 1}},
        {"expect-beep", {expectBeep, 0}},
        {"clipboard", {clipboard, 1}},
        {"expect-clipboard", {expectClipboard, 1}},
        {"expect-clipboard-holds", {expectClipboardHolds, 1}},
        {"expect-suggested", {expectSuggested, 1}},
        {"expect-opened", {expectOpened, 1}},
        {"no-browser", {noBrowser, 0}},
        {"expect-session", {expectSession, 2}},
        {"expect-sql", {expectSql, 3}},
        {"expect-page", {expectPage, 2}},
        {"expect-file", {expectFile, 1}},
        {"expect-golden", {expectGolden, 2}},
        {"expect-no-file", {expectNoFile, 1}},
        {"print", {print, 1}},
        {"stop", {stop, 0}},
        {"sql", {sql, 2}},
        {"session", {session, 1}},
        {"shot", {shot, 1}},
    };
    return all;
}

} // namespace

void Player::finish() {
    end(stage);
}

void Player::play(const QString& line) {
    QStringList words = wordsOf(line);
    if (words.isEmpty())
        return;
    words.replaceInStrings("{data}", stage.homeFolder); // the scenario's own data folder
    words.replaceInStrings("{program}", Program::programFolder());
    words.replaceInStrings("{installer}", InstallerFiles::installerFolderPath());
    words.replaceInStrings("{shots}", // where its pictures go
                           stage.shotFolder.isEmpty() ? stage.homeFolder
                                                      : QDir(stage.shotFolder).absolutePath());
    const QString name = words.takeFirst();
    const auto command = commands().constFind(name);
    if (command == commands().cend())
        fail("the command " + name + " is not known");
    require(words.size() >= command->leastWords,
            QString("%1 takes %2 words").arg(name).arg(command->leastWords));
    static const QStringList preparations = {"sql",   "session", "answer", "input",          "file",
                                             "write", "cancel",  "print",  "installer-file", "no-browser",
                                             "stop"};
    if (name == "start" && stage.started) // again, on the same data
        end(stage);
    if (!stage.started && !preparations.contains(name))
        start(stage);
    command->run(stage, words);
    settle();
    if (!stage.dialogs.problem.isEmpty())
        fail(std::exchange(stage.dialogs.problem, {}));
    if (command->acts && !stage.dialogs.answers.isEmpty())
        fail("the message box did not come: " + stage.dialogs.answers.first().text);
    if (command->acts && !stage.dialogs.inputs.isEmpty())
        fail("the input box did not come");
    if (command->acts && !stage.dialogs.files.isEmpty())
        fail("the dialog did not come");
    if (command->acts && !stage.dialogs.prints.isEmpty())
        fail("the printer dialog did not come");
    if (command->acts && !stage.dialogs.stops.isEmpty())
        fail("no work told its progress to be stopped");
}
