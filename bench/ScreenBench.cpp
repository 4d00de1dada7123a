#include "bench/ScreenBench.h"

#include "bench/BenchData.h"
#include "core/shell/BrennovalMain.h"
#include "core/shell/Screens.h"
#include "core/store/SessionStore.h"
#include "documents/report/Reports.h"
#include "tests/support/Driver.h"

#include <QLineEdit>

#include <benchmark/benchmark.h>

namespace {

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

} // namespace

void registerScreenBenchmarks() {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("list of 100000 jobs, Find to painted/program",
                      [](benchmark::State& s) { listJobs(s, 100000); })
        ->UseManualTime()
        ->Iterations(5);
    RegisterBenchmark("key in the search among 20000 jobs/program",
                      [](benchmark::State& s) { findOnStartPage(s, 20000); })
        ->UseManualTime()
        ->Iterations(20);
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
    RegisterBenchmark("calculation sheet/program", calculationSheet)->Unit(benchmark::kMillisecond);
    RegisterBenchmark("switch windows/program", switchWindows)->UseManualTime()->Iterations(200);
    RegisterBenchmark("switch windows/bare", switchBareWindows)->UseManualTime()->Iterations(200);
    for (std::size_t i = 0; i < std::size(workflow); ++i)
        RegisterBenchmark((std::string("step ") + workflow[i].name + "/program").c_str(),
                          [i](benchmark::State& s) { workflowStep(s, i); })
            ->UseManualTime()
            ->Iterations(20);
}
