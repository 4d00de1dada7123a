#include "tests/runner/Player.h"

#include "core/base/Program.h"
#include "core/base/Words.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Screens.h"
#include "setup/InstallerFiles.h"
#include "tests/runner/Commands.h"
#include "tests/runner/Controls.h"
#include "tests/support/Driver.h"

#include <QtTest/QTest>

namespace {

using Controls::fail;
using Controls::require;
using Driver::settle;

QStringList wordsOf(const QString& line) {
    QStringList found;
    for (const std::string& word : splitWords(line.toStdString()))
        found.append(QString::fromStdString(word));
    return found;
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

/// The command of this name.
const Command& commandNamed(const QString& name) {
    static const Command starting = {[](Stage&, const QStringList&) {}, 0};
    if (name == "start")
        return starting;
    for (const auto* commands : {&actionCommands(), &expectationCommands()})
        if (const auto found = commands->constFind(name); found != commands->cend())
            return *found;
    fail("the command " + name + " is not known");
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
    const Command& command = commandNamed(name);
    require(words.size() >= command.leastWords,
            QString("%1 takes %2 words").arg(name).arg(command.leastWords));
    static const QStringList preparations = {"sql",   "session", "answer", "input",          "file",
                                             "write", "cancel",  "print",  "installer-file", "no-browser",
                                             "stop"};
    if (name == "start" && stage.started) // again, on the same data
        end(stage);
    if (!stage.started && !preparations.contains(name))
        start(stage);
    command.run(stage, words);
    settle();
    if (!stage.dialogs.problem.isEmpty())
        fail(std::exchange(stage.dialogs.problem, {}));
    if (command.acts && !stage.dialogs.answers.isEmpty())
        fail("the message box did not come: " + stage.dialogs.answers.first().text);
    if (command.acts && !stage.dialogs.inputs.isEmpty())
        fail("the input box did not come");
    if (command.acts && !stage.dialogs.files.isEmpty())
        fail("the dialog did not come");
    if (command.acts && !stage.dialogs.prints.isEmpty())
        fail("the printer dialog did not come");
    if (command.acts && !stage.dialogs.stops.isEmpty())
        fail("no work told its progress to be stopped");
}
