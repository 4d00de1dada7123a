#pragma once

#include <cstdint>
#include <optional>

/// Estimates of what a system holds, in whole U.S. gallons, halves rounded to the even one. Lengths in feet,
/// bores in inches; a pipe's transverse area is the catalogue's TransArea, in its own unit. All throw Fault 6
/// for a result that no double holds.

/// A building's system by the length of its supply main: four times the sum of the two longest dimensions.
double BuildingFluid(double height, double width, double depth, double transverseArea);

/// The classes of radiation and piping that pick a boiler's factor. The estimator asks for both and sets
/// neither: the factor of the first row stands for all systems.
struct BoilerClasses {
    int radiation = 0; // 0 to 5, as the list of radiation types
    int piping = 0;    // 0 one pipe, 1 series loop
};

/// A system by its boiler's net output in thousands of Btu/hr. Throws Fault 11 for an output of 0.
double BoilerFluid(std::int16_t output, const BoilerClasses& classes);

/// A system by the tons of its chiller.
double ChillerFluid(double tons);

/// A system by its parts: boiler and further components in gallons, and the supply main.
double ComponentFluid(double boiler, double further, double mainLength, double transverseArea);

/// The sum of an itemized list, in the order of its rows.
class ItemizedFluid {
  public:
    /// A run of pipe. One whose bore the catalogue does not know takes that of the run before.
    void addRun(std::optional<double> runBore, double length);
    /// A piece of equipment.
    void addEquipment(double gallons) { sum += gallons; }
    double total() const;

  private:
    double bore = 0; // inches, of the last run
    double sum = 0;  // gallons
};

/// A hot water system: the heater in gallons and its recirculation line.
double HotWaterFluid(double heater, double bore, double length);

/// What a pump (gallons a minute) delivers in a run of so many minutes.
double Drawdown(double pumpCapacity, double runTime);
