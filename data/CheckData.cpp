// Checks a built catalogue: every model against the physics, its text and its drawing, and the tables against
// one another. Prints the faults and exits with 1, which stops the build.
// Usage: brennoval-check-data [--report] CATALOGUE DRAWINGS_FOLDER
// With --report it prints a line per series: the number of models and the worst deviations; and a line per
// pipe: by how much the first single shock tank exceeds the required volume in ordinary jobs.

#include "data/CatalogueCheck.h"

#include <cstdio>
#include <cstring>
#include <exception>

namespace {

void print(const SeriesFigures& series) {
    std::printf("%-6s %6d   %+5.1f %%  %-12s %+5.1f %%  %-12s", series.series.c_str(), series.models,
                series.shape.deviation * 100, series.shape.model.c_str(), series.weight.deviation * 100,
                series.weight.model.c_str());
    if (series.highestPower > 0)
        std::printf(" %4.1f to %4.1f %%", series.lowestPower * 100, series.highestPower * 100);
    std::printf("\n");
}

int check(const char* file, const char* drawings, bool report) {
    Database catalogue(file, Database::Use::Read);
    const CheckResult result = checkCatalogue(catalogue, drawings);
    if (report) {
        std::printf("Series Models   Worst shape            Worst weight           Pump efficiency\n");
        for (const SeriesFigures& series : result.series)
            print(series);
        std::printf("\nShock tanks for   Jobs   Worst               Median  Without\n");
        for (const PipeFigures& pipe : result.pipes)
            std::printf("%-16s %5d %7.2f  %-12s %6.2f %8d\n", pipe.pipe.c_str(), pipe.jobs, pipe.worst.ratio,
                        pipe.worst.model.c_str(), pipe.median, pipe.without);
    }
    for (const std::string& fault : result.faults)
        std::fprintf(stderr, "brennoval-check-data: %s\n", fault.c_str());
    return result.faults.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const bool report = argc > 1 && std::strcmp(argv[1], "--report") == 0;
    if (argc != (report ? 4 : 3)) {
        std::fprintf(stderr, "usage: brennoval-check-data [--report] CATALOGUE DRAWINGS_FOLDER\n");
        return 2;
    }
    try {
        return check(argv[argc - 2], argv[argc - 1], report);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "brennoval-check-data: %s\n", error.what());
        return 1;
    }
}
