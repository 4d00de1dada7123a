// How long the program takes for what users do often, next to the bare engine doing the same.
// Usage: brennoval-bench [--benchmark_filter=REGEX]

#include "app/Register.h"
#include "bench/BackupBench.h"
#include "bench/BenchData.h"
#include "bench/DataBench.h"
#include "bench/DocumentBench.h"
#include "bench/Footprint.h"
#include "bench/ImportBench.h"
#include "bench/PackageBench.h"
#include "bench/ScreenBench.h"
#include "bench/Table.h"
#include "core/look/Appearance.h"
#include "core/look/SystemScheme.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/DesktopApplication.h"
#include "core/shell/Screens.h"
#include "core/store/Gateway.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include <sys/resource.h>

#include <array>
#include <cstdio>

using namespace Gateway;

namespace {

/// Processor time in seconds of all child processes that have ended.
double childrensTime() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Measures the processor time of a whole process, so waits such as the splash's timer do not count.
void startUp(benchmark::State& state, const QString& program, const QString& argument) {
    for (auto _ : state) {
        const double before = childrensTime();
        QProcess child;
        child.start(program, {argument});
        child.waitForFinished(-1);
        state.SetIterationTime(childrensTime() - before);
    }
}

/// The program, which exits as soon as its main window has painted.
int startChild(int argc, char** argv) {
    const DesktopApplication application(argc, argv);
    const TemporaryHome home;
    const SystemScheme scheme;
    home.installData();
    Bare(dbConnection("User").dataSource())
        .run("UPDATE tblFirstTime SET FirstTime = 1"); // not the first start
    registerAll();
    Screens::open("frmSplash");
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [] {
        if (BrennovalMain::instance())
            QApplication::exit(0);
    });
    watch.start(1);
    return DesktopApplication::exec();
}

QString emptyWindow() {
    return QCoreApplication::applicationDirPath() + "/brennoval-empty-window";
}

/// Compares the program, installed if possible, otherwise as built, with an empty window.
void printFootprints() {
    const QString installed = QStandardPaths::findExecutable("brennoval");
    const QString built = QCoreApplication::applicationDirPath() + "/brennoval";
    const Footprint program = footprintOf(installed.isEmpty() ? built : installed);
    const Footprint empty = footprintOf(emptyWindow());
    std::printf("Start of the %s program until it rests, without its install step: %.1f ms of processor "
                "time, %.0f MB; "
                "an empty window: %.1f ms, %.0f MB\n",
                installed.isEmpty() ? "built" : "installed", program.processorTime, program.memory,
                empty.processorTime, empty.memory);
}

/// The process's peak memory in megabytes.
double peakMemory() {
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

void registerBenchmarks() {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark(
        "start-up/program",
        [](benchmark::State& s) { startUp(s, QCoreApplication::applicationFilePath(), "--child"); })
        ->UseManualTime()
        ->Iterations(10);
    RegisterBenchmark("start-up/bare", [](benchmark::State& s) { startUp(s, emptyWindow(), "--once"); })
        ->UseManualTime()
        ->Iterations(10);
    registerAll();
    registerDataBenchmarks();
    registerScreenBenchmarks();
    registerImportBenchmarks();
    registerDocumentBenchmarks();
    registerPackageBenchmarks();
    registerBackupBenchmarks();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc > 1 && QLatin1String(argv[1]) == QLatin1String("--child"))
        return startChild(argc, argv);
    const DesktopApplication application(argc, argv);
    Appearance::apply(Appearance::Scheme::Light);
    std::vector<char*> arguments(argv, argv + argc);
    std::string repetitions = "--benchmark_repetitions=3"; // of which the table shows the median
    arguments.insert(arguments.begin() + 1, repetitions.data());
    int count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    registerBenchmarks();
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    std::printf("Pages of the longest list: %.0f MB\n", longestListMemory());
    printFootprints();
    std::printf("Peak memory of this run: %.0f MB\n", peakMemory());
    return 0;
}
