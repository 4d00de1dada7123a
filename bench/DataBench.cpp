#include "bench/DataBench.h"

#include "bench/BenchData.h"
#include "core/store/Database.h"
#include "core/store/Gateway.h"
#include "core/store/JetSql.h"
#include "core/store/SqliteEngine.h"
#include "jobs/JobSearch.h"
#include "sizing/CatalogueSearch.h"

#include <benchmark/benchmark.h>

#include <array>

using namespace Gateway;

namespace {

void searchProgram(benchmark::State& state, int models) {
    const Data data(models, 1);
    double volume = 20;
    for (auto _ : state) {
        volume = volume > 2000 ? 20 : volume * 1.3;
        benchmark::DoNotOptimize(findModels("RCB", volume, volume * .4));
    }
}

/// A bore of 4 inches has its models; for one of 100 every model is too small.
void searchShock(benchmark::State& state, int models, double bore) {
    const Data data(models, 1);
    Bare(data.file("Sys")).run("UPDATE tblModelMaster SET Class = 'SHK' WHERE ModelDscrptn LIKE 'M %'");
    double volume = 1;
    for (auto _ : state) {
        volume = volume > 200 ? 1 : volume * 1.3;
        benchmark::DoNotOptimize(findShockModels("SHK", volume, bore));
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
    for (auto _ : state)
        saveNewLine(++number);
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

} // namespace

void registerDataBenchmarks() {
    using benchmark::RegisterBenchmark;
    for (const auto& [name, bore] :
         {std::pair("shock search", 4.026), {"shock search without a result", 100.}})
        RegisterBenchmark((name + std::string(" among 100000 models/program")).c_str(),
                          [bore = bore](benchmark::State& s) { searchShock(s, 100000, bore); });
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
}
