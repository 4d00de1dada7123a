#include "bench/ImportBench.h"

#include "bench/BenchData.h"
#include "core/shell/Screens.h"
#include "core/store/NewTankLines.h"
#include "extras/import/frmImport.h"
#include "tests/support/Driver.h"

#include <benchmark/benchmark.h>

namespace {

/// 500 lines of all applications, from the text to the rows with their models, among 10,000 models.
void importLines(benchmark::State& state) {
    const Data data(10000, 100);
    const QList<QByteArray> sample = ImportText::sample().trimmed().split('\n');
    QByteArray text = sample.first();
    for (int line = 0; line < 500; ++line)
        text += '\n' + sample[1 + line % (sample.size() - 1)];
    Driver::start();
    Screens::open("frmImport");
    auto* screen = static_cast<frmImport*>(Screens::find("frmImport"));
    auto* rows = Driver::control<QTreeWidget>("frmImport", "lvLines");
    for (auto _ : state) {
        const ProcessorClock clock;
        screen->take({}, {});
        screen->take(ImportText::decoded(text), "bench");
        while (rows->topLevelItemCount() < 500)
            Driver::settle();
        screen->repaint();
        state.SetIterationTime(clock.seconds());
    }
    Driver::stop();
}

/// Storing them, as a new job among 100,000 tank lines.
void storeLines(benchmark::State& state) {
    const Data data(10000, 100000);
    Driver::start();
    TankLine line;
    line.tankClass = "RCB";
    line.totSysVolume = 500;
    const std::vector<TankLine> lines(500, line);
    for (auto _ : state)
        Records::addTankLines("J7", lines);
    Driver::stop();
}

} // namespace

void registerImportBenchmarks() {
    using benchmark::RegisterBenchmark;
    RegisterBenchmark("import of 500 lines among 10000 models/program", importLines)
        ->UseManualTime()
        ->Iterations(10);
    RegisterBenchmark("store 500 imported lines/program", storeLines)->Iterations(10);
}
