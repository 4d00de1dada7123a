#pragma once

#include <cstdint>
#include <optional>

/// Estimates of what a system holds, in whole U.S. gallons, halves rounded to even. Lengths are in feet,
/// bores in inches; a pipe's transverse area is the catalogue's TransArea, in its own unit. All throw Fault 6
/// if the result overflows a double.

/// Estimates a building's system from the length of its supply main: four times the sum of the two longest
/// dimensions.
double buildingFluid(double height, double width, double depth, double transverseArea);

/// The classes of radiation and piping that select a boiler's factor. The estimator asks for both but sets
/// neither, so the first row's factor applies to all systems.
struct BoilerClasses {
    int radiation = 0; // 0 to 5, in the order of the list of radiation types
    int piping = 0;    // 0 one pipe, 1 series loop
};

/// Estimates a system from its boiler's net output in thousands of Btu/hr. Throws Fault 11 for an output of
/// 0.
double boilerFluid(std::int16_t output, const BoilerClasses& classes);

/// Estimates a system from its chiller's tons.
double chillerFluid(double tons);

/// Estimates a system from its parts: boiler and other components in gallons, and the supply main.
double componentFluid(double boiler, double further, double mainLength, double transverseArea);

/// The sum of an itemized list, added in the order of its rows.
class ItemizedFluid {
  public:
    /// Adds a run of pipe. A run whose bore the catalogue does not know takes the bore of the run before.
    void addRun(std::optional<double> runBore, double length);
    /// Adds a piece of equipment.
    void addEquipment(double gallons) { sum += gallons; }
    /// The sum so far in whole U.S. gallons. Throws Fault 6 if it overflows.
    double total() const;

  private:
    double bore = 0; // inches, of the last run
    double sum = 0;  // gallons
};

/// Estimates a hot water system: the heater in gallons, and its recirculation line.
double hotWaterFluid(double heater, double bore, double length);

/// What a pump (gallons per minute) delivers in a run of runTime minutes.
double Drawdown(double pumpCapacity, double runTime);
