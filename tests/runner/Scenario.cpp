// Plays user stories against the real screens with mouse and key events, without a display.
// Usage: brennoval-scenario [--shots DIR] [--dark] FILE...
// Each file runs in a process, a data folder and a session store of its own.

#include "app/Install.h"
#include "core/Appearance.h"
#include "core/Application.h"
#include "core/BrennovalMain.h"
#include "core/ErrorReport.h"
#include "core/Fault.h"
#include "core/FieldChecks.h"
#include "core/Gateway.h"
#include "core/Screens.h"
#include "core/SessionStore.h"
#include "tests/TemporaryHome.h"

#include <QtTest/QTest>
#include <QtWidgets>

#include <algorithm>
#include <iostream>

namespace {

struct Failure {
    QString what;
};

[[noreturn]] void fail(const QString& what) {
    throw Failure{what};
}

void expectEqual(const QString& what, const QString& expected, const QString& found) {
    if (expected != found)
        fail(QString("%1: expected \"%2\", found \"%3\"").arg(what, expected, found));
}

/// Gives the answers that the story has prepared.
class ScriptedDialogs : public Dialogs {
  public:
    struct Answer {
        QString button;
        QString text;
        bool anyText;
    };

    QMessageBox::StandardButton show(const Message& message) override {
        if (answers.isEmpty()) {
            problem = "a message box came that nobody answers: \"" + message.text + "\"";
            return message.buttons & QMessageBox::Cancel ? QMessageBox::Cancel : QMessageBox::Ok;
        }
        const Answer answer = answers.takeFirst();
        if (!answer.anyText && answer.text != message.text)
            problem = "the message box shows \"" + message.text + "\" instead of \"" + answer.text + "\"";
        const QHash<QString, QMessageBox::StandardButton> buttons = {{"OK", QMessageBox::Ok},
                                                                     {"Cancel", QMessageBox::Cancel},
                                                                     {"Yes", QMessageBox::Yes},
                                                                     {"No", QMessageBox::No}};
        const auto button = buttons.value(answer.button, QMessageBox::NoButton);
        if (!(message.buttons & button))
            problem = "the message box has no button " + answer.button;
        return button;
    }

    QString openFile(const QString&, const QString&) override {
        return files.isEmpty() ? QString() : files.takeFirst();
    }
    void beep() override { ++beeps; }

    QList<Answer> answers;
    QStringList files;
    QString problem;
    int beeps = 0;
};

/// The words of a line; words with blanks stand in double quotes with C escapes.
QStringList words(const QString& line) {
    QStringList found;
    QString word;
    bool inWord = false;
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (quoted && c == '\\' && i + 1 < line.size()) {
            const QChar next = line[++i];
            word += next == 'n' ? QChar('\n') : next == 't' ? QChar('\t') : next;
        } else if (c == '"') {
            quoted = !quoted;
            inWord = true;
        } else if (!quoted && c.isSpace()) {
            if (inWord)
                found.append(word);
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (quoted)
        fail("a quoted text does not end");
    if (inWord)
        found.append(word);
    return found;
}

class Player {
  public:
    Player(ScriptedDialogs* scripted, QString shotFolder) : dialogs(scripted), shots(std::move(shotFolder)) {}

    void play(const QString& line) {
        QStringList parts = words(line);
        const QString name = parts.takeFirst();
        const auto command = commands().constFind(name);
        if (command == commands().cend())
            fail("the command " + name + " is not known");
        if (!started && name != "sql")
            start();
        (this->*command->run)(parts);
        settle();
        if (!dialogs->problem.isEmpty())
            fail(std::exchange(dialogs->problem, {}));
        if (command->acts && !dialogs->answers.isEmpty())
            fail("the message box did not come: " + dialogs->answers.first().text);
    }

  private:
    using Words = const QStringList&;
    struct Command {
        void (Player::*run)(Words);
        bool acts; // an answered message box must have come by its end
    };

    static const QHash<QString, Command>& commands() {
        static const QHash<QString, Command> all = {
            {"start", {&Player::nothing, false}},
            {"menu", {&Player::menu, true}},
            {"tool", {&Player::tool, true}},
            {"click", {&Player::click, true}},
            {"doubleclick", {&Player::doubleClick, true}},
            {"type", {&Player::type, true}},
            {"key", {&Player::key, true}},
            {"pick", {&Player::pick, true}},
            {"row", {&Player::row, true}},
            {"answer", {&Player::answer, false}},
            {"file", {&Player::file, false}},
            {"close", {&Player::close, true}},
            {"expect", {&Player::expect, false}},
            {"expect-visible", {&Player::expectVisible, false}},
            {"expect-hidden", {&Player::expectHidden, false}},
            {"expect-enabled", {&Player::expectEnabled, false}},
            {"expect-disabled", {&Player::expectDisabled, false}},
            {"expect-error", {&Player::expectError, false}},
            {"expect-ok", {&Player::expectOk, false}},
            {"expect-hint", {&Player::expectHint, false}},
            {"expect-focus", {&Player::expectFocus, false}},
            {"expect-screen", {&Player::expectScreen, false}},
            {"expect-closed", {&Player::expectClosed, false}},
            {"expect-title", {&Player::expectTitle, false}},
            {"expect-status", {&Player::expectStatus, false}},
            {"expect-rows", {&Player::expectRows, false}},
            {"expect-cell", {&Player::expectCell, false}},
            {"expect-menu", {&Player::expectMenu, false}},
            {"expect-beep", {&Player::expectBeep, false}},
            {"expect-session", {&Player::expectSession, false}},
            {"expect-sql", {&Player::expectSql, false}},
            {"sql", {&Player::sql, false}},
            {"shot", {&Player::shot, false}},
        };
        return all;
    }

    static void settle() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void start() {
        started = true;
        Screens::open("frmSplash");
        if (!QTest::qWaitFor([] { return BrennovalMain::instance() != nullptr; }, 10000))
            fail("the main window did not come");
        BrennovalMain::instance()->activateWindow();
        settle();
    }

    void nothing(Words) {}

    static Screen* screen(const QString& name) {
        Screen* found = Screens::find(name);
        if (!found)
            fail("the screen " + name + " is not open; open are: " + Screens::loaded().join(", "));
        return found;
    }

    template<typename Control = QWidget>
    static Control* control(const QString& path) {
        auto* found = screen(path.section('.', 0, 0))->control<Control>(path.section('.', 1));
        if (!found)
            fail("there is no control " + path);
        return found;
    }

    /// Presses at a point of a widget as the window system would: whatever stands on top gets it.
    static void press(QWidget* target, const QPoint& point, bool twice = false) {
        if (!target->isVisible())
            fail(target->objectName() + " is not visible");
        QWidget* window = target->window();
        const QPoint place = target->mapTo(window, point);
        QWidget* top = window->childAt(place);
        if (top != target && !target->isAncestorOf(top) && top && top->isEnabled())
            fail(target->objectName() + " is covered by " + top->objectName());
        if (twice)
            QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, place);
        else
            QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, place);
    }

    static QPoint center(const QWidget* widget) {
        if (dynamic_cast<const QRadioButton*>(widget)) // only indicator and text take the click
            return {12, widget->height() / 2};
        return widget->rect().center();
    }

    void click(Words w) {
        QWidget* target = control(w[0]);
        if (!target->isEnabled())
            fail(w[0] + " is disabled");
        press(target, center(target));
    }

    void doubleClick(Words w) { press(control(w[0]), center(control(w[0])), true); }

    void menu(Words w) {
        QAction* action = BrennovalMain::instance()->command(w[0]);
        if (!action || !action->isEnabled() || !action->isVisible())
            fail("the command " + w[0] + " is not to be had");
        action->trigger();
    }

    void tool(Words w) {
        if (w[0] != "BrennovalMain")
            return click({w[0] + "." + w[1]});
        QAction* action = BrennovalMain::instance()->toolCommand(w[1]);
        if (!action || !action->isEnabled())
            fail("the tool " + w[1] + " is not to be had");
        action->trigger();
    }

    void type(Words w) {
        QWidget* box = control(w[0]);
        press(box, box->rect().center());
        if (!dialogs->problem.isEmpty() || QApplication::focusWidget() != box)
            fail("the focus did not come to " + w[0]);
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(box, Qt::Key_Delete);
        for (const QChar c : w.value(1))
            QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }

    void key(Words w) {
        for (const QString& keys : w) {
            const QKeySequence sequence(keys);
            if (sequence.isEmpty())
                fail("no such key: " + keys);
            const QKeyCombination stroke = sequence[0];
            QWidget* focus = QApplication::focusWidget();
            QWidget* window = focus ? focus->window() : BrennovalMain::instance();
            QTest::keyClick(window->windowHandle(), stroke.key(), stroke.keyboardModifiers());
            // A mnemonic shows its button pressed for a moment before it clicks it.
            if (!QTest::qWaitFor([] { return !buttonIsDown(); }, 5000))
                fail("a button stays pressed");
            settle();
        }
    }

    static bool buttonIsDown() {
        return std::ranges::any_of(QApplication::allWidgets(), [](QWidget* widget) {
            auto* button = dynamic_cast<QAbstractButton*>(widget);
            return button && button->isDown();
        });
    }

    void pick(Words w) {
        QWidget* widget = control(w[0]);
        auto* combo = dynamic_cast<QComboBox*>(widget);
        if (!combo)
            return click(w);
        const int index = combo->findText(w[1]);
        if (index < 0 || !combo->isEnabled())
            fail(w[0] + " does not offer " + w[1]);
        combo->setCurrentIndex(index);
    }

    static QTreeWidgetItem* item(QTreeWidget* list, const QString& number) {
        QTreeWidgetItem* found = list->topLevelItem(number.toInt() - 1);
        if (!found)
            fail(QString("the list has %1 rows").arg(list->topLevelItemCount()));
        return found;
    }

    void row(Words w) {
        auto* list = control<QTreeWidget>(w[0]);
        const QPoint place = list->visualItemRect(item(list, w[1])).center();
        press(list->viewport(), place);
        if (w.value(2) == "open")
            press(list->viewport(), place, true);
    }

    void answer(Words w) { dialogs->answers.append({w[0], w.value(1), w.size() < 2}); }
    void file(Words w) { dialogs->files.append(w[0]); }

    void close(Words w) {
        QWidget* window = screen(w[0])->parentWidget();
        (window ? window : screen(w[0]))->close();
    }

    static QString textOf(QWidget* widget) {
        if (auto* label = dynamic_cast<QLabel*>(widget))
            return label->text();
        if (auto* box = dynamic_cast<QAbstractButton*>(widget))
            return dynamic_cast<QCheckBox*>(box) ? (box->isChecked() ? "checked" : "clear") : box->text();
        return UtilityFunctions::FieldText(widget);
    }

    void expect(Words w) { expectEqual(w[0], w[1], textOf(control(w[0]))); }
    void expectVisible(Words w) { require(control(w[0])->isVisible(), w[0] + " is hidden"); }
    void expectHidden(Words w) { require(!control(w[0])->isVisible(), w[0] + " is visible"); }
    void expectEnabled(Words w) { require(control(w[0])->isEnabled(), w[0] + " is disabled"); }
    void expectDisabled(Words w) { require(!control(w[0])->isEnabled(), w[0] + " is enabled"); }
    void expectError(Words w) { require(UtilityFunctions::IsMarked(control(w[0])), w[0] + " is not marked"); }
    void expectOk(Words w) { require(!UtilityFunctions::IsMarked(control(w[0])), w[0] + " is marked"); }
    void expectHint(Words w) { expectEqual(w[0], w[1], control(w[0])->toolTip()); }
    void expectFocus(Words w) {
        QWidget* focus = QApplication::focusWidget();
        require(focus == control(w[0]),
                "the focus is at " + (focus ? focus->objectName() : QString("nothing")));
    }
    void expectScreen(Words w) { require(screen(w[0])->isVisible(), w[0] + " is not visible"); }
    void expectClosed(Words w) { require(!Screens::find(w[0]), w[0] + " is open"); }
    void expectTitle(Words w) {
        QWidget* window = screen(w[0])->parentWidget();
        expectEqual("title", w[1], (window ? window : screen(w[0]))->windowTitle());
    }
    void expectStatus(Words w) { expectEqual("status", w[0], BrennovalMain::instance()->statusText()); }
    void expectRows(Words w) {
        expectEqual(w[0] + " rows", w[1], QString::number(control<QTreeWidget>(w[0])->topLevelItemCount()));
    }
    void expectCell(Words w) {
        auto* list = control<QTreeWidget>(w[0]);
        for (int column = 0; column < list->columnCount(); ++column)
            if (list->headerItem()->text(column) == w[2])
                return expectEqual(w[0], w[3], item(list, w[1])->text(column));
        fail("the list has no column " + w[2]);
    }
    void expectMenu(Words w) {
        const QAction* action = BrennovalMain::instance()->command(w[0]);
        if (!action)
            fail("there is no command " + w[0]);
        const QHash<QString, bool> states = {{"enabled", action->isEnabled()},
                                             {"disabled", !action->isEnabled()},
                                             {"hidden", !action->isVisible()},
                                             {"visible", action->isVisible()}};
        require(states.value(w[1]), w[0] + " is not " + w[1]);
    }
    void expectBeep(Words) { require(std::exchange(dialogs->beeps, 0) > 0, "there was no beep"); }
    void expectSession(Words w) {
        QString text;
        UtilityFunctions::GetRegValue(UtilityFunctions::HKeyCurrentUser(), UtilityFunctions::AppRegistryKey(),
                                      w[0], text);
        expectEqual(w[0], w[1], text);
    }
    void expectSql(Words w) {
        Connection connection = UtilityFunctions::openDatabase(w[0]);
        Recordset rows;
        rows.Open("SELECT (" + w[1] + ") AS V", connection);
        expectEqual(w[1], w[2], rows["V"].text());
    }
    void sql(Words w) {
        Connection connection = UtilityFunctions::openDatabase(w[0]);
        Recordset().Open(w[1], connection);
    }
    void shot(Words w) {
        if (shots.isEmpty())
            return;
        QWidget* target = w.size() > 1 ? screen(w[0]) : static_cast<QWidget*>(BrennovalMain::instance());
        settle();
        if (!target->grab().save(QDir(shots).filePath(w.last())))
            fail("cannot write " + w.last());
    }

    static void require(bool holds, const QString& otherwise) {
        if (!holds)
            fail(otherwise);
    }

    ScriptedDialogs* dialogs;
    QString shots;
    bool started = false;
};

bool playFile(const QString& path, const QString& shots) {
    const TemporaryHome home;
    InstallForUser(QCoreApplication::applicationDirPath() + "/Data", home.dataFolder());
    auto scripted = std::make_unique<ScriptedDialogs>();
    Player player(scripted.get(), shots);
    Dialogs::install(std::move(scripted));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::cerr << path.toStdString() << ": cannot be read\n";
        return false;
    }
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    int number = 0;
    try {
        if (!lines.contains("firstrun"))
            player.play("sql User \"UPDATE tblFirstTime SET FirstTime = 1\"");
        for (const QString& line : lines) {
            ++number;
            const QString trimmed = line.trimmed();
            if (!trimmed.isEmpty() && !trimmed.startsWith('#') && trimmed != "firstrun")
                player.play(trimmed);
        }
        return true;
    } catch (const Failure& failure) {
        std::cerr << path.toStdString() << ':' << number << ": " << failure.what.toStdString() << '\n';
    } catch (const Fault& fault) {
        std::cerr << path.toStdString() << ':' << number << ": " << fault.what() << '\n';
    }
    return false;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    Application::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.addOptions({{"shots", "Folder for the pictures.", "DIR"}, {"dark", "The dark look."}});
    parser.process(application);
    Appearance::apply(parser.isSet("dark") ? Appearance::Scheme::Dark : Appearance::Scheme::Light);
    const QStringList files = parser.positionalArguments();
    if (files.size() == 1) {
        registerAll();
        const bool passed = playFile(files[0], parser.value("shots"));
        std::cout << (passed ? "1 passed, 0 failed" : "0 passed, 1 failed") << std::endl;
        std::_Exit(passed ? 0 : 1); // open screens of a failed story need no orderly end
    }
    int passed = 0;
    for (const QString& file : files) {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QStringList arguments = application.arguments().mid(1);
        for (const QString& other : files)
            if (other != file)
                arguments.removeAll(other);
        child.start(QCoreApplication::applicationFilePath(), arguments);
        child.waitForFinished(-1);
        passed += child.exitStatus() == QProcess::NormalExit && child.exitCode() == 0 ? 1 : 0;
    }
    std::cout << passed << " passed, " << files.size() - passed << " failed" << std::endl;
    return passed == files.size() ? 0 : 1;
}
