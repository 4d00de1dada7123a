#include "bench/BackupBench.h"

#include "bench/BenchData.h"
#include "core/store/Backup.h"
#include "core/store/Deletion.h"
#include "core/store/JobCopies.h"

#include <benchmark/benchmark.h>

using namespace Deletion;
using namespace Gateway;

namespace {

constexpr int lines = 100000;

void backupProgram(benchmark::State& state) {
    const Data data(200, lines);
    for (auto _ : state)
        Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
}

/// The engine's copy alone, to a new file, unchecked.
void backupBare(benchmark::State& state) {
    const Data data(200, lines);
    const QString target = data.file("User") + ".copy";
    for (auto _ : state) {
        QFile::remove(target);
        openDatabase("User").engine().copyTo(target);
    }
}

/// Restores one of 20,000 jobs over the existing one, opening the copy included.
void restoreJob(benchmark::State& state) {
    const Data data(200, lines);
    const QString copy = Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
    for (auto _ : state)
        JobCopies::Restore(JobCopies::Source(copy, JobCopies::Origin::Own), openDatabase("User"), {"J7"},
                           {"J7"});
}

/// What the backups screen reads when a copy is selected.
void lookInside(benchmark::State& state) {
    const Data data(200, lines);
    const QString copy = Backup::Make(openDatabase("User"), Backup::Reason::ByHand);
    execute("User", "DELETE FROM tblJobHeader WHERE JobID = 'J7'");
    for (auto _ : state)
        benchmark::DoNotOptimize(
            JobCopies::changedJobs(JobCopies::Source(copy, JobCopies::Origin::Own), openDatabase("User")));
}

/// A deletion, with the backup made before it, and its undo.
void deleteAndUndo(benchmark::State& state) {
    const Data data(200, lines);
    for (auto _ : state) {
        deleteJob("J7");
        if (!undoDeletion().isEmpty())
            state.SkipWithError("the job did not come back");
    }
}

} // namespace

void registerBackupBenchmarks() {
    const std::pair<const char*, void (*)(benchmark::State&)> all[] = {
        {"backup of 100000 tank lines, checked/program", backupProgram},
        {"backup of 100000 tank lines, checked/bare", backupBare},
        {"restore of a job of 100000 tank lines/program", restoreJob},
        {"look into a backup of 100000 tank lines/program", lookInside},
        {"deletion with its backup, and undo, beside 100000/program", deleteAndUndo}};
    for (const auto& [name, body] : all)
        benchmark::RegisterBenchmark(name, body)->Unit(benchmark::kMillisecond);
}
