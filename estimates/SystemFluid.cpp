#include "estimates/SystemFluid.h"

#include "core/base/Numbers.h"
#include "estimates/Finite.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Gallons per foot of pipe of TransArea 1. This is 1/231, the gallons in a cubic inch, cut to two digits; the
// catalogue's areas are computed to match (docs/catalogue.md).
constexpr double gallonsInFootOfArea = .0043;

// Rule of thumb for a building: supply and return along both of its long sides.
constexpr double runsOfMain = 4;

// Gallons per 1,000 Btu/hr of boiler output, by type of radiation: fins and panels hold little water, cast
// iron holds much. One pipe and series loop differ only for cast iron. Rules of thumb of the trade.
constexpr double finsAndPanels = .336;
constexpr double convectorsAndUnitHeaters = .414;
constexpr double castIronOnePipe = .566;
constexpr double castIronSeriesLoop = .673;

// The output is counted in blocks of 2,000,000 Btu/hr.
constexpr double blockOfOutput = 2000;

// A rule of thumb of the trade for chilled water systems.
constexpr double gallonsInTonOfChiller = 8;

constexpr double gallonsInCubicFoot = 7.48; // the trade's figure; 1728/231 is 7.4805
constexpr double squareInchesInSquareFoot = 144;

// 22/7 rather than pi, to two precisions: itemized runs use full double precision, as the shock arrestors do,
// and the recirculation line uses five decimals. Each estimate keeps its own value so that its figures do not
// change.
constexpr double piOfItemizedRuns = 22. / 7;
constexpr double piOfRecirculation = 3.14286;

double wholeGallons(double gallons) {
    return Round(requireFinite(gallons), 0);
}

double factorOf(const BoilerClasses& classes) {
    switch (classes.radiation) {
    case 0: // finned tube base board
    case 1: // radiant panel
        return finsAndPanels;
    case 2: // convectors
    case 3: // unit heaters
        return convectorsAndUnitHeaters;
    default: // cast iron radiators and baseboard
        return classes.piping == 0 ? castIronOnePipe : castIronSeriesLoop;
    }
}

} // namespace

double buildingFluid(double height, double width, double depth, double transverseArea) {
    std::array sides = {height, width, depth};
    std::ranges::sort(sides);
    const double runLength = (sides[1] + sides[2]) * runsOfMain;
    return wholeGallons(runLength * transverseArea * gallonsInFootOfArea);
}

double boilerFluid(std::int16_t output, const BoilerClasses& classes) {
    const double blocks = output / blockOfOutput;
    const double perBlock = ToInt16(Divide(output, blocks)); // output of one block, for any output but 0
    return wholeGallons(perBlock * factorOf(classes) * blocks);
}

double chillerFluid(double tons) {
    return wholeGallons(tons * gallonsInTonOfChiller);
}

double componentFluid(double boiler, double further, double mainLength, double transverseArea) {
    return wholeGallons(transverseArea * mainLength * gallonsInFootOfArea + (boiler + further));
}

void ItemizedFluid::addRun(std::optional<double> runBore, double length) {
    bore = runBore.value_or(bore);
    sum +=
        (std::pow(bore / 2, 2) * piOfItemizedRuns / squareInchesInSquareFoot) * length * gallonsInCubicFoot;
}

double ItemizedFluid::total() const {
    return wholeGallons(sum);
}

double hotWaterFluid(double heater, double bore, double length) {
    return wholeGallons((std::pow(bore / 2, 2) * piOfRecirculation / squareInchesInSquareFoot) * length *
                            gallonsInCubicFoot +
                        heater);
}

double Drawdown(double pumpCapacity, double runTime) {
    return wholeGallons(pumpCapacity * runTime);
}
