#include "bench/Table.h"

#include <cstdio>

namespace {

/// Whether a run is one of several, or their aggregate.
bool repeats(const benchmark::BenchmarkReporter::Run& run) {
    return run.run_type == benchmark::BenchmarkReporter::Run::RT_Aggregate || run.repetitions > 1;
}

} // namespace

bool Table::ReportContext(const Context&) {
    return true;
}

void Table::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (repeats(run) && run.aggregate_name != "median")
            continue;
        std::string name = run.run_name.function_name;
        const auto slash = name.rfind('/');
        Line& line = lines[name.substr(0, slash)];
        const bool own = run.run_name.time_type == "manual_time"; // a ProcessorClock's, reported as real
        const double time = own ? run.real_accumulated_time : run.cpu_accumulated_time;
        const double microseconds = time / double(run.iterations) * 1e6;
        (name.substr(slash) == "/bare" ? line.bare : line.program) = microseconds;
    }
}

void Table::Finalize() {
    std::printf("| %-52s | %12s | %12s | %6s |\n", "what", "program, us", "bare, us", "ratio");
    std::printf("|%s|-------------:|-------------:|-------:|\n", std::string(54, '-').c_str());
    for (const auto& [name, line] : lines) {
        if (line.bare > 0)
            std::printf("| %-52s | %12.1f | %12.1f | %6.2f |\n", name.c_str(), line.program, line.bare,
                        line.program / line.bare);
        else
            std::printf("| %-52s | %12.1f | %12s | %6s |\n", name.c_str(), line.program, "", "");
    }
}
