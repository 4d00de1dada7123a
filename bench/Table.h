#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

/// Prints one line for each subject: what the program takes, what the bare baseline takes, and their ratio.
/// A benchmark is named "subject/program" or "subject/bare".
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
