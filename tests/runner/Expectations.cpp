#include "core/base/Numbers.h"
#include "core/base/Program.h"
#include "core/base/Text.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Gateway.h"
#include "core/store/SessionStore.h"
#include "core/store/SqliteLetters.h"
#include "documents/viewer/frmReportViewer.h"
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

void expectEqual(const QString& what, const QString& expected, const QString& found) {
    if (expected != found)
        fail(QString("%1: expected \"%2\", found \"%3\"").arg(what, expected, found));
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

/// The Windows menu lists an entry.
void expectListed(Stage&, Words w) {
    QMenu* menu = command("mnuWindows")->menu();
    emit menu->aboutToShow();
    QStringList entries;
    for (const QAction* entry : menu->actions())
        entries << shown(entry->text());
    require(entries.contains(w[0]), "the Windows menu lists " + entries.join(" | "));
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
/// A box of several lines has its whole text selected.
void expectSelected(Stage&, Words w) {
    const auto* box = dynamic_cast<QPlainTextEdit*>(control(w[0]));
    require(box && box->textCursor().selection().toPlainText() == box->toPlainText(),
            w[0] + " is not selected");
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

} // namespace

const QHash<QString, Command>& expectationCommands() {
    static const QHash<QString, Command> all = {
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
        {"expect-selected", {expectSelected, 1}},
        {"expect-screen", {expectScreen, 1}},
        {"expect-closed", {expectClosed, 1}},
        {"expect-title", {expectTitle, 2}},
        {"expect-status", {expectStatus, 1}},
        {"expect-rows", {expectRows, 2}},
        {"expect-cell", {expectCell, 4}},
        {"expect-menu", {expectMenu, 2}},
        {"expect-listed", {expectListed, 1}},
        {"expect-beep", {expectBeep, 0}},
        {"expect-clipboard", {expectClipboard, 1}},
        {"expect-clipboard-holds", {expectClipboardHolds, 1}},
        {"expect-suggested", {expectSuggested, 1}},
        {"expect-opened", {expectOpened, 1}},
        {"expect-session", {expectSession, 2}},
        {"expect-sql", {expectSql, 3}},
        {"expect-page", {expectPage, 2}},
        {"expect-file", {expectFile, 1}},
        {"expect-golden", {expectGolden, 2}},
        {"expect-no-file", {expectNoFile, 1}},
    };
    return all;
}
