// A random walk over the whole program. Usage: brennoval-walk [--seed N] [--steps N]
// The walk runs in its own process. A failing walk is reduced to the shortest one that still fails and
// reported as a scenario that brennoval-scenario can play.

#include "core/shell/DesktopApplication.h"
#include "tests/support/Driver.h"
#include "tests/support/Rounds.h"
#include "tests/walk/Walk.h"

#include <QCommandLineParser>
#include <QProcess>

#include <iostream>
#include <random>

namespace {

using Steps = QList<Taken>;

Steps readSteps(const QString& path) {
    QFile file(path);
    Steps steps;
    if (file.open(QIODevice::ReadOnly))
        for (const QByteArray& line : file.readAll().split('\n'))
            if (const auto words = line.split(' '); words.size() == 2)
                steps.append({words[0].toInt(), words[1].toUInt()});
    return steps;
}

void note(QFile& trace, const Taken& step) {
    trace.write(QByteArray::number(step.step) + ' ' + QByteArray::number(step.seed) + '\n');
    trace.flush(); // the step may end the process
}

/// Picks a random step among those that the open windows allow, in proportion to their weights.
Taken draw(const Walk& walk, std::mt19937& random) {
    QList<double> weights;
    for (const Step& step : allSteps())
        weights.append(!*step.window || walk.notes.isOpen(step.window) ? step.weight : 0);
    const int step = std::discrete_distribution<int>(weights.begin(), weights.end())(random);
    return {step, unsigned(random())};
}

/// Runs a walk in this process and reports what was played and why it ended; false if it failed.
bool run(const std::function<void(Walk&)>& steps) {
    const TemporaryHome home;
    home.installData();
    ScriptedDialogs& dialogs = Driver::start();
    dialogs.rule = nullptr; // every message box must be expected
    Walk walk(Stage{.dialogs = dialogs,
                    .shotFolder = {},
                    .homeFolder = home.dataFolder(),
                    .scenarioFolder = {},
                    .started = true});
    QString failure;
    try {
        steps(walk);
    } catch (const Failure& found) {
        failure = found.what;
    } catch (const std::runtime_error& found) {
        failure = QString("an exception: ") + found.what();
    }
    std::cout << walk.story.join('\n').toStdString() << '\n';
    if (!failure.isEmpty())
        std::cout << "# failed: " << failure.toStdString() << std::endl;
    return failure.isEmpty();
}

/// Takes a number of random steps, each recorded in a file before it is taken.
void wander(Walk& walk, unsigned seed, int count, const QString& path) {
    std::mt19937 random(seed);
    QFile trace(path);
    if (!trace.open(QIODevice::WriteOnly))
        throw Failure{"cannot write " + path};
    for (int taken = 0; taken < count;) {
        const Taken step = draw(walk, random);
        note(trace, step);
        taken += walk.take(step) ? 1 : 0;
    }
}

/// Runs a walk in a separate process, which a fault may end; told is its report.
bool passes(const QStringList& arguments, QString& told) {
    QProcess walker;
    walker.start(QCoreApplication::applicationFilePath(), arguments);
    walker.waitForFinished(-1);
    told = QString::fromUtf8(walker.readAllStandardOutput());
    if (walker.exitStatus() != QProcess::NormalExit)
        told += "# failed: the program crashed\n" + QString::fromUtf8(walker.readAllStandardError());
    return walker.exitStatus() == QProcess::NormalExit && walker.exitCode() == 0;
}

bool fails(const Steps& steps, const QString& path, QString& told) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    for (const Taken& step : steps)
        note(file, step);
    file.close();
    return !passes({"--play", path}, told);
}

/// The shortest walk that still fails, as far as dropping runs of steps can find it; told is its report.
QString shortest(Steps steps, const QString& path) {
    QString told;
    QString last;
    for (qsizetype length = 4; length < steps.size(); length *= 2)
        if (const Steps end = steps.last(length); fails(end, path, told)) {
            steps = end;
            last = told;
            break;
        }
    qsizetype run = std::max<qsizetype>(1, steps.size() / 2);
    for (bool shorter = true; run > 1 || shorter; run = std::max<qsizetype>(1, run / 2)) {
        shorter = run > 1;
        for (qsizetype at = 0; at < steps.size();) {
            Steps fewer = steps;
            fewer.remove(at, std::min(run, steps.size() - at));
            if (fails(fewer, path, told)) {
                steps = fewer;
                last = told;
                shorter = true;
            } else {
                at += run;
            }
        }
    }
    return last;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    DesktopApplication application(argc, argv);
    DesktopApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.addOptions({{"seed", "What the steps are drawn from.", "N"},
                       {"steps", "How many steps are taken.", "N"},
                       {"wander", "Only the walk, whose steps are noted in a file.", "FILE"},
                       {"play", "Only the steps of a file.", "FILE"}});
    parser.addHelpOption();
    parser.process(application);
    const QTemporaryDir folder;
    const QString trace = folder.filePath("steps");
    const bool endurance = roundCount(0, 1) == 1;
    const unsigned seed = parser.isSet("seed") ? parser.value("seed").toUInt()
                          : endurance          ? std::random_device()()
                                               : 1;
    const int count = parser.isSet("steps") ? parser.value("steps").toInt() : roundCount(2000, 10000);
    if (parser.isSet("wander"))
        return run([&](Walk& walk) { wander(walk, seed, count, parser.value("wander")); }) ? 0 : 1;
    if (parser.isSet("play"))
        return run([&](Walk& walk) {
            for (const Taken& step : readSteps(parser.value("play")))
                walk.take(step);
        })
                   ? 0
                   : 1;
    std::cout << count << " steps from seed " << seed << std::endl;
    QString told;
    if (passes({"--seed", QString::number(seed), "--steps", QString::number(count), "--wander", trace}, told))
        return 0;
    std::cout << "failed; shortening " << readSteps(trace).size() << " steps" << std::endl;
    const QString story = shortest(readSteps(trace), folder.filePath("fewer"));
    std::cout << (story.isEmpty() ? told : story).toStdString();
    return 1;
}
