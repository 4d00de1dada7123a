#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

/// Prints a line per subject: the program's processor time, the bare baseline's, and their ratio; the
/// median of the repetitions. Benchmarks are named
/// "subject/program" or "subject/bare".
class Table : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

  private:
    struct Line {
        double program = 0; // microseconds
        double bare = 0;
    };
    std::map<std::string, Line> lines;
};
