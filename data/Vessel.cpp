#include "data/Vessel.h"

#include <numbers>
#include <stdexcept>

namespace {

constexpr double gallonInCubicInches = 231;
constexpr double steelDensity = .2836; // lb/in3
constexpr double plates[] = {.0598, .0747, .1046, .1345, .1875, .25, .3125,
                             .375,  .4375, .5,    .5625, .625,  .75}; // 16 to 10 gauge, then in sixteenths

} // namespace

double plateThickness(const Vessel& vessel) {
    const double needed = vessel.pressure * vessel.diameter / 2 / (20000 * .70 - .6 * vessel.pressure);
    const double least = vessel.code ? .1046 : .0598;
    for (const double plate : plates)
        if (plate >= needed && plate >= least)
            return plate;
    throw std::runtime_error("no standard plate is thick enough");
}

double shellVolume(const Vessel& vessel) {
    const double plate = plateThickness(vessel);
    const double bore = vessel.diameter - 2 * plate;
    const double straight = vessel.headToHead - 2 * plate - bore / 2; // a 2:1 head is a quarter bore deep
    const double heads = std::numbers::pi / 12 * bore * bore * bore;
    return (std::numbers::pi / 4 * bore * bore * straight + heads) / gallonInCubicInches;
}

double plateWeight(const Vessel& vessel) {
    const double plate = plateThickness(vessel);
    const double bore = vessel.diameter - 2 * plate;
    const double heads = std::numbers::pi / 12 * bore * bore * bore;
    const double straight =
        (vessel.volume * gallonInCubicInches - heads) / (std::numbers::pi / 4 * bore * bore);
    const double area = std::numbers::pi * (vessel.diameter - plate) * straight +
                        2 * 1.084 * vessel.diameter * vessel.diameter; // surface of two 2:1 heads
    const double fittings = 5.9 + 3.4 * vessel.connection * vessel.connection;
    return 1.06 * area * plate * steelDensity + fittings + .01 * vessel.volume;
}

double pumpEfficiency(double flow, double pressure, double horsepower) {
    return flow * pressure / 1714 / horsepower; // one horsepower is 1714 gpm psi
}

double packageWeight(double gallons, int pumps, double horsepower, bool feeder) {
    return 1.6 * gallons + pumps * ((feeder ? 18 : 30) + 90 * horsepower);
}
