// How long the program takes for what users do often, next to the bare engine doing the same.
// Usage: brennoval-bench [--benchmark_filter=REGEX]

#include "app/Register.h"
#include "bench/BackupBench.h"
#include "bench/BenchData.h"
#include "bench/DocumentBench.h"
#include "bench/Footprint.h"
#include "bench/ImportBench.h"
#include "bench/PackageBench.h"
#include "bench/Table.h"
#include "core/look/Appearance.h"
#include "core/look/SystemScheme.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/DesktopApplication.h"
#include "core/shell/Screens.h"
#include "core/store/Database.h"
#include "core/store/Gateway.h"
#include "core/store/JetSql.h"
#include "core/store/SessionStore.h"
#include "core/store/SqliteEngine.h"
#include "documents/report/Reports.h"
#include "jobs/JobSearch.h"
#include "sizing/CatalogueSearch.h"
#include "tests/support/Driver.h"

#include <QFile>
#include <QLineEdit>
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

void searchProgram(benchmark::State& state, int models) {
    const Data data(models, 1);
    double volume = 20;
    for (auto _ : state) {
        volume = volume > 2000 ? 20 : volume * 1.3;
        benchmark::DoNotOptimize(findModels("RCB", volume, volume * .4));
    }
}

void searchShock(benchmark::State& state, int models) {
    const Data data(models, 1);
    Bare(data.file("Sys")).run("UPDATE tblModelMaster SET Class = 'SHK' WHERE ModelDscrptn LIKE 'M %'");
    double volume = 1;
    for (auto _ : state) {
        volume = volume > 200 ? 1 : volume * 1.3;
        benchmark::DoNotOptimize(findShockModels("SHK", volume, 4.026));
    }
}

/// The search with the minimum of each group as it is asked for, which makes the engine walk the whole
/// series.
void searchBare(benchmark::State& state, int models) {
    const Data data(models, 1);
    const QString file = data.file("Sys");
    double volume = 20;
    for (auto _ : state) {
        volume = volume > 2000 ? 20 : volume * 1.3;
        Bare catalogue(file);
        const auto smallest = [&](int quantity) -> std::optional<double> {
            const double found = catalogue.query(
                QString("SELECT Min(AcceptanceVolume) AS MinAccVol FROM tblModelMaster WHERE CLASS='RCB' AND "
                        "(AcceptanceVolume * %1 >= %2 AND TankVolume * %1 >= %3) GROUP BY Class")
                    .arg(quantity)
                    .arg(volume * .4)
                    .arg(volume)
                    .toUtf8());
            return found < 0 ? std::nullopt : std::optional(found);
        };
        const auto rows = [&](double size) {
            catalogue.query(
                QString("SELECT rowid, * FROM tblModelMaster WHERE AcceptanceVolume = %1 AND Class = 'RCB'")
                    .arg(size, 0, 'g', 17)
                    .toUtf8());
            return std::vector<TankOption>(1);
        };
        benchmark::DoNotOptimize(searchModels({smallest, rows}));
    }
}

void saveProgram(benchmark::State& state, int tankLines) {
    const Data data(200, tankLines);
    int number = 0;
    for (auto _ : state) {
        Connection connection = openDatabase("User");
        Recordset tank;
        tank.Open("tblJobData", connection, CursorType::Keyset, CommandType::Table);
        tank.AddNew();
        tank["TankID"] = "N." + QString::number(++number);
        tank["TankNo"] = number;
        tank["JobID"] = "N";
        tank["TotSysVolume"] = "1,234.5";
        tank.Update();
    }
}

void saveBare(benchmark::State& state, int tankLines) {
    const Data data(200, tankLines);
    const QString file = data.file("User");
    int number = 0;
    for (auto _ : state) {
        Bare user(file);
        user.run(
            QString("INSERT INTO tblJobData (TankID, TankNo, JobID, TotSysVolume) VALUES ('N.%1', %1, 'N', "
                    "1234.5)")
                .arg(++number));
    }
}

/// Adds jobs with contractors, engineers and dates.
void addJobs(const Data& data, int jobs) {
    Bare user(data.file("User"));
    user.run(
        QString("BEGIN; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                "INSERT INTO tblJobHeader (JobID, Contractor, Engineer, DateCreated) SELECT 'Job ' || i, "
                "'Contractor ' || (i % 97), 'Engineer ' || (i % 41), "
                "datetime('2020-01-01', (i % 2000) || ' days') FROM n; COMMIT; ANALYZE;")
            .arg(jobs));
}

/// Two criteria: every job has to be read, and one in twenty matches.
const JobSearch::Criteria twoCriteria = {.contractor = {"7", "Contains"},
                                         .created = {"2024-06-01", "Later than"}};

void jobSearchProgram(benchmark::State& state, const JobSearch::Criteria& criteria, int jobs) {
    const Data data(200, 1);
    addJobs(data, jobs);
    for (auto _ : state)
        benchmark::DoNotOptimize(JobSearch::Find(*JobSearch::Query(criteria)));
}

void jobSearchBare(benchmark::State& state, const JobSearch::Criteria& criteria, int jobs) {
    const Data data(200, 1);
    addJobs(data, jobs);
    constexpr std::array listedColumns = {0, 3, 2, 5}; // ID, contractor, engineer and date
    const QByteArray sql = rewriteJetSql(*JobSearch::Query(criteria), sqliteDialect()).sql.toUtf8();
    const QString file = data.file("User");
    for (auto _ : state) {
        Bare user(file);
        benchmark::DoNotOptimize(user.texts(sql, listedColumns));
    }
}

/// From the click on Find to the painted list.
void listJobs(benchmark::State& state, int jobs) {
    const Data data(200, 1);
    addJobs(data, jobs);
    Driver::start();
    Driver::command("mnuEditJob");
    for (auto _ : state) {
        const ProcessorClock clock;
        Driver::press("frmjobsearchdialog", "bttnFind");
        Screens::find("frmjobsearchdialog")->repaint();
        state.SetIterationTime(clock.seconds());
    }
    Driver::stop();
}

/// A key in the search of the start page that no job answers, from the key to the painted list.
void findOnStartPage(benchmark::State& state, int jobs) {
    const Data data(200, 1);
    addJobs(data, jobs);
    Driver::start();
    auto* box = BrennovalMain::instance()->findChild<QLineEdit*>("txtFind");
    QString text = "contractor 9";
    for (auto _ : state) {
        const ProcessorClock clock;
        box->setText(text += u'x');
        box->parentWidget()->repaint();
        state.SetIterationTime(clock.seconds());
    }
    Driver::stop();
}

/// Statements that give the job J7 some tank lines.
constexpr const char* hundredLines = "UPDATE tblJobData SET JobID = 'J7' WHERE rowid <= 100";
constexpr const char* thousandSized =
    "UPDATE tblJobData SET JobID = 'J7', ModelNo = 'M ' || rowid, Qty = 1, SortNo = rowid WHERE rowid <= "
    "1000";

/// Opens a screen for a job and waits until it has painted.
void openScreen(benchmark::State& state, const QString& screen, const char* lines = hundredLines) {
    const Data data(10000, 100000);
    Bare(data.file("User")).run(lines);
    Driver::start();
    Session::Mode.write("Edit");
    Session::JobID.write("J7");
    Session::TankID.write("J7.1");
    Session::TankClass.write("Expansion Tank");
    if (!Screens::open(screen)) {
        state.SkipWithError("the screen has nothing to show");
        Driver::stop();
        return;
    }
    Screens::unload(screen);
    Driver::settle();
    for (auto _ : state) {
        const ProcessorClock clock;
        Screens::open(screen);
        Screens::find(screen)->repaint();
        state.SetIterationTime(clock.seconds());
        Screens::unload(screen);
        Driver::settle();
    }
    Driver::stop();
}

/// Moves a tank line among a thousand, until the list has painted.
void moveLine(benchmark::State& state) {
    const Data data(10000, 100000);
    Bare(data.file("User")).run(thousandSized);
    Driver::start();
    Session::JobID.write("J7");
    Screens::open("frmJobOverview");
    for (auto _ : state) {
        const ProcessorClock clock;
        Driver::press("frmJobOverview", "cmdDown");
        Screens::find("frmJobOverview")->repaint();
        state.SetIterationTime(clock.seconds());
    }
    Driver::stop();
}

/// One more digit in the comparison among 10,000 models, until the table has painted.
void typeInComparison(benchmark::State& state) {
    const Data data(10000, 100);
    Driver::start();
    Screens::open("frmCompare");
    for (const auto& [box, text] : {std::pair("txtSOTMax", "200"), {"txtSOPMin", "12"}, {"txtSOPMax", "30"}})
        Driver::enter("frmCompare", box, text);
    auto* volume = Driver::control<QLineEdit>("frmCompare", "txtTotSysFluid");
    int digits = 0;
    for (auto _ : state) {
        const QString text = QString::number(1000 + ++digits);
        const ProcessorClock clock;
        volume->setText(text);
        Screens::find("frmCompare")->repaint();
        state.SetIterationTime(clock.seconds());
        Driver::settle();
    }
    Driver::stop();
}

/// The steps from a new job to the results, with 10,000 models and 100,000 tank lines.
struct Step {
    const char* name;
    const char* screen;
    const char* button;
    void (*fill)(int job);
};

const Step workflow[] = {
    {"1 new job", nullptr, "mnuNewJob", [](int) {}},
    {"2 header, Next", "frmJobHeader", "cmdNext",
     [](int job) { Driver::enter("frmJobHeader", "txtJobID", "B" + QString::number(job)); }},
    {"3 application", "frmClassSelect", "cmdEXP", [](int) {}},
    {"4 conditions, Next", "frmJobConditions", "cmdNext", [](int) { Driver::enterConditions(); }},
    {"5 series, Next", "frmTankSeries", "cmdNext", [](int) { Driver::press("frmTankSeries", "OptRCB"); }},
    {"6 options, Next", "frmtankselection", "cmdNext", [](int) {}},
};

void workflowStep(benchmark::State& state, std::size_t timed) {
    const Data data(10000, 100000);
    Driver::start();
    int job = 0;
    for (auto _ : state) {
        ++job;
        for (std::size_t i = 0; i < std::size(workflow); ++i) {
            workflow[i].fill(job);
            const ProcessorClock clock;
            if (workflow[i].screen)
                Driver::press(workflow[i].screen, workflow[i].button);
            else
                Driver::command(workflow[i].button);
            if (i == timed)
                state.SetIterationTime(clock.seconds());
        }
        if (!Driver::isOpen("frmResults"))
            state.SkipWithError("the workflow did not end at the results");
        Screens::unload("frmResults");
    }
    Driver::stop();
}

/// The pages of a calculation sheet.
void calculationSheet(benchmark::State& state) {
    const Data data(200, 100);
    Driver::start();
    for (const Step& step : workflow) {
        step.fill(1);
        step.screen ? Driver::press(step.screen, step.button) : Driver::command(step.button);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(Report(*findReport("rptCalculation")).Run());
    Driver::stop();
}

/// Switches between the windows of two jobs, as a click on a frame does.
void switchWindows(benchmark::State& state) {
    const Data data(10000, 100000);
    Driver::start();
    for (const auto& [job, screen] : {std::pair("J7", "frmJobHeader"), {"J8", "frmTankIDSearch"}})
        Screens::beginTask([job = job, screen = screen] {
            Session::Mode.write("Edit");
            Session::JobID.write(job);
            Screens::open(screen);
        });
    Driver::settle();
    bool first = true;
    for (auto _ : state) {
        QWidget* screen = Screens::find(first ? "frmJobHeader" : "frmTankIDSearch");
        first = !first;
        const ProcessorClock clock;
        BrennovalMain::instance()->area()->setActiveSubWindow(
            static_cast<QMdiSubWindow*>(screen->parentWidget()));
        state.SetIterationTime(clock.seconds());
        Driver::settle();
    }
    Driver::stop();
}

/// The same in a plain Qt area without the program.
void switchBareWindows(benchmark::State& state) {
    QMdiArea area;
    QList<QMdiSubWindow*> windows;
    for (int i = 0; i < 2; ++i) {
        auto* content = new QWidget;
        auto* boxes = new QVBoxLayout(content);
        for (int box = 0; box < 5; ++box)
            boxes->addWidget(new QLineEdit);
        windows.append(area.addSubWindow(content));
    }
    area.resize(1000, 700);
    area.show();
    Driver::settle();
    int next = 0;
    for (auto _ : state) {
        const ProcessorClock clock;
        area.setActiveSubWindow(windows[next]);
        state.SetIterationTime(clock.seconds());
        next = 1 - next;
        Driver::settle();
    }
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
    RegisterBenchmark("shock search among 100000 models/program",
                      [](benchmark::State& s) { searchShock(s, 100000); });
    for (const int models : {200, 10000, 100000, 1000000}) {
        const std::string name = "search among " + std::to_string(models) + " models";
        RegisterBenchmark((name + "/program").c_str(),
                          [models](benchmark::State& s) { searchProgram(s, models); });
        RegisterBenchmark((name + "/bare").c_str(), [models](benchmark::State& s) { searchBare(s, models); });
    }
    for (const int lines : {100, 100000}) {
        const std::string name = "save beside " + std::to_string(lines) + " tank lines";
        RegisterBenchmark((name + "/program").c_str(),
                          [lines](benchmark::State& s) { saveProgram(s, lines); });
        RegisterBenchmark((name + "/bare").c_str(), [lines](benchmark::State& s) { saveBare(s, lines); });
    }
    const auto registerJobSearch = [](const std::string& name, const JobSearch::Criteria& criteria,
                                      int jobs) {
        RegisterBenchmark((name + "/program").c_str(),
                          [=](benchmark::State& s) { jobSearchProgram(s, criteria, jobs); });
        RegisterBenchmark((name + "/bare").c_str(),
                          [=](benchmark::State& s) { jobSearchBare(s, criteria, jobs); });
    };
    for (const int jobs : {100, 10000, 100000}) {
        registerJobSearch("jobs, all of " + std::to_string(jobs), {}, jobs);
        registerJobSearch("jobs, by two criteria among " + std::to_string(jobs), twoCriteria, jobs);
    }
    RegisterBenchmark("list of 100000 jobs, Find to painted/program",
                      [](benchmark::State& s) { listJobs(s, 100000); })
        ->UseManualTime()
        ->Iterations(5);
    RegisterBenchmark("key in the search among 20000 jobs/program",
                      [](benchmark::State& s) { findOnStartPage(s, 20000); })
        ->UseManualTime()
        ->Iterations(20);
    registerAll();
    for (const QString& screen : Screens::names()) {
        if (screen == "frmSplash" || screen == "frmError" || screen == "frmDatabasePath")
            continue;
        RegisterBenchmark(("open " + screen.toStdString() + "/program").c_str(),
                          [screen](benchmark::State& s) { openScreen(s, screen); })
            ->UseManualTime()
            ->Iterations(20);
    }
    RegisterBenchmark("overview of 1000 tank lines/program",
                      [](benchmark::State& s) { openScreen(s, "frmJobOverview", thousandSized); })
        ->UseManualTime()
        ->Iterations(20);
    RegisterBenchmark("move among 1000 tank lines/program", moveLine)->UseManualTime()->Iterations(20);
    RegisterBenchmark("key in the comparison among 10000 models/program", typeInComparison)
        ->UseManualTime()
        ->Iterations(100);
    registerImportBenchmarks();
    RegisterBenchmark("calculation sheet/program", calculationSheet)->Unit(benchmark::kMillisecond);
    registerDocumentBenchmarks();
    registerPackageBenchmarks();
    registerBackupBenchmarks();
    RegisterBenchmark("switch windows/program", switchWindows)->UseManualTime()->Iterations(200);
    RegisterBenchmark("switch windows/bare", switchBareWindows)->UseManualTime()->Iterations(200);
    for (std::size_t i = 0; i < std::size(workflow); ++i)
        RegisterBenchmark((std::string("step ") + workflow[i].name + "/program").c_str(),
                          [i](benchmark::State& s) { workflowStep(s, i); })
            ->UseManualTime()
            ->Iterations(20);
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
