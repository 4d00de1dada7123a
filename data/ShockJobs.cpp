#include "data/ShockJobs.h"

#include "core/base/Numbers.h"
#include "shock/ShockSizes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

namespace {

constexpr double length = 300;      // ft
constexpr double atmosphere = 14.7; // psia
constexpr int highestShock = 250;   // psig
constexpr int tableEnd = 200;       // psig; the formula applies above it
constexpr double leastBore = .47;   // bores of the main, in a connection
constexpr double smallest = .5;     // gal, of a tank: the pages print whole gallons

double number(const std::string& text) {
    return parseNumber(text).value_or(0);
}

class PressureFactors {
  public:
    explicit PressureFactors(Database& catalogue) {
        for (const auto& row :
             catalogue.rows(R"(SELECT SOPMax, "20", "30", "40", "50", "60", "70", "80", "90",
                                                 "100", "110" FROM tblPressureFactor)"))
            for (std::size_t column = 1; column < row.size(); ++column)
                cells[{number(row[0]), 10 + 10 * static_cast<double>(column)}] = number(row[column]);
    }

    /// Nothing where the table has no row: above 180 and up to 190 psig.
    std::optional<double> at(double shockPressure, double staticPressure) const {
        const double shock = shockPressureBand(shockPressure);
        const double still = staticPressureBand(staticPressure);
        if (!tableHasPressureFactor(shock, still))
            return highPressureFactor(shock, still);
        const auto cell = cells.find({shock, still});
        return cell == cells.end() ? std::nullopt : std::optional(cell->second);
    }

  private:
    std::map<std::pair<double, double>, double> cells; // by shock and static pressure
};

struct Tank {
    std::string model;
    double volume;
    double connection;
};

/// In the order of their volumes.
std::vector<Tank> shockTanks(Database& catalogue) {
    std::vector<Tank> tanks;
    for (const auto& row : catalogue.rows("SELECT ModelDscrptn, TankVolume, TankSysConn FROM tblModelMaster "
                                          "WHERE Class = 'SHK' ORDER BY TankVolume"))
        tanks.push_back({row[0], number(row[1]), number(row[2])});
    return tanks;
}

/// All ordinary jobs on a pipe of this bore (inches), as required volumes in gallons.
std::vector<double> requiredVolumes(double bore, const PressureFactors& factors) {
    std::vector<double> volumes;
    const auto add = [&](double velocity, double flow, double still, double shock) {
        const auto factor = factors.at(shock, still);
        if (!factor)
            return;
        const ShockConditions conditions{.bore = bore,
                                         .length = length,
                                         .flowRate = velocity * bore * bore / .409,
                                         .flowPressure = flow,
                                         .staticPressure = still,
                                         .shockPressure = shock,
                                         .atmosphericPressure = atmosphere};
        volumes.push_back(computeShockSizes(conditions, *factor).requiredVolume);
    };
    for (const double velocity : {5, 6, 7})
        for (int flow = 30; flow <= 80; flow += 10)
            for (int still = flow + 10; still <= flow + 25; still += 5)
                for (int shock = still + 40; shock <= highestShock; shock += 10)
                    add(velocity, flow, still, shock);
    return volumes;
}

double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

PipeFigures figuresOf(const std::string& pipe, double bore, const std::vector<Tank>& tanks,
                      const PressureFactors& factors) {
    PipeFigures figures;
    figures.pipe = pipe;
    std::vector<double> excesses;
    for (const double volume : requiredVolumes(bore, factors)) {
        ++figures.jobs;
        const auto first = std::ranges::find_if(tanks, [&](const Tank& tank) {
            return tank.volume >= volume && tank.connection >= leastBore * bore;
        });
        if (first == tanks.end()) {
            ++figures.without;
            continue;
        }
        excesses.push_back(first->volume / volume);
        const Excess excess{excesses.back(), first->model};
        if (excess.ratio > figures.worst.ratio)
            figures.worst = excess;
        if (excess.ratio > figures.larger.ratio && first->volume > smallest)
            figures.larger = excess;
    }
    figures.median = median(std::move(excesses));
    return figures;
}

} // namespace

std::vector<PipeFigures> shockJobFigures(Database& catalogue) {
    const PressureFactors factors(catalogue);
    const std::vector<Tank> tanks = shockTanks(catalogue);
    std::vector<PipeFigures> pipes;
    for (const auto& row : catalogue.rows("SELECT PipeIndex, ID FROM tblPipeMaster"))
        pipes.push_back(figuresOf(row[0], number(row[1]), tanks, factors));
    return pipes;
}

std::vector<std::string> pressureFactorFaults(Database& catalogue) {
    constexpr double rounding = .006;
    const PressureFactors factors(catalogue);
    std::vector<std::string> faults;
    for (int still = 20; still <= 110; still += 10) {
        const std::string column = "static " + std::to_string(still) + ": ";
        const double formula = highPressureFactor(tableEnd, still);
        if (std::abs(factors.at(tableEnd, still).value_or(0) - formula) > rounding)
            faults.push_back(column + "the table does not lead into the formula, " +
                             NumberText(Round(formula, 2)));
        double last = 0;
        for (int shock = 100; shock <= highestShock; ++shock) {
            const auto factor = factors.at(shock, still);
            if (factor && *factor < last - rounding)
                faults.push_back(column + "the factors do not rise at a shock pressure of " +
                                 std::to_string(shock));
            last = factor.value_or(last);
        }
    }
    return faults;
}
