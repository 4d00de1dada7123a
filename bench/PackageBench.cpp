#include "bench/PackageBench.h"

#include "bench/BenchData.h"
#include "core/store/SessionStore.h"
#include "documents/viewer/frmReportViewer.h"
#include "tests/support/Driver.h"

#include <benchmark/benchmark.h>

#include <QCheckBox>
#include <QPushButton>

namespace {

constexpr int tankLines = 100;

/// A job of finished tank lines of several applications and series.
class LongJob {
  public:
    LongJob() : data(200, 100) {
        Bare user(data.file("User"));
        user.run("INSERT INTO tblJobHeader (JobID, JobDscrptn) VALUES ('B', 'North wing')");
        user.run(
            QString(
                "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1), "
                "m(k, series, model, fluid) AS (VALUES (0, 'RCB', 'RCB 300', 'Water'), "
                "(1, 'RB', '12RB33', 'Water'), (2, 'JWB', 'JWB 100', 'Water'), (3, 'GGB', 'GGB 110', "
                "'Water'), "
                "(4, 'RCB', 'RCB 500', 'Ethylene Glycol')) INSERT INTO tblJobData (TankID, TankNo, JobID, "
                "TankClass, ModelNo, Qty, SysFluidType, TotSysVolume, SOTMin, SOTMax, SOPMin, SOPMax, "
                "AtmPressure, RequiredVolume, RequiredAcceptance, TagID01) SELECT 'B.' || i, i, 'B', series, "
                "model, 1 + i % 3, fluid, 500 + 7 * i, 45, 178, 12, 30, 14.7, 75.4631, 30.389, 'T-' || i "
                "FROM n JOIN m ON k = i % 5")
                .arg(tankLines));
        Session::JobID.write("B");
    }

  private:
    Data data;
};

/// From OK in the dialog until the first page has been painted, or until all are made.
void package(benchmark::State& state, bool allParts, bool whole) {
    const LongJob job;
    Driver::start();
    for (auto _ : state) {
        Screens::open("frmPackage");
        for (const char* part : {"chkCalculations", "chkSpecifications", "chkDrawings"})
            Driver::control<QCheckBox>("frmPackage", part)->setChecked(allParts);
        auto* ok = Driver::control<QPushButton>("frmPackage", "cmdOK");
        const ProcessorClock clock;
        ok->click();
        auto* viewer = static_cast<frmReportViewer*>(Screens::find("frmReportViewer"));
        viewer->repaint();
        while (whole && !viewer->isWhole())
            Driver::settle();
        state.SetIterationTime(clock.seconds());
        Screens::unload("frmReportViewer");
        Driver::settle();
    }
    Driver::stop();
}

} // namespace

void registerPackageBenchmarks() {
    for (const bool allParts : {false, true}) {
        const std::string name = std::string("package of 100 lines") + (allParts ? ", all parts" : "");
        for (const bool whole : {false, true})
            benchmark::RegisterBenchmark(
                (name + (whole ? ", whole/program" : ", first page/program")).c_str(),
                [=](benchmark::State& state) { package(state, allParts, whole); })
                ->UseManualTime()
                ->Iterations(5);
    }
}
