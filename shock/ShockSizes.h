#pragma once

#include <optional>
#include <string_view>

/// What a shock arrestor tank has to stand. Gauge pressures in psig, the atmosphere in psia.
struct ShockConditions {
    double bore = 0;           // inches
    double length = 0;         // feet
    double flowRate = 0;       // U.S. gallons a minute
    double flowPressure = 0;   // while flowing
    double staticPressure = 0; // at rest
    double shockPressure = 0;  // the highest allowed at shock
    double atmosphericPressure = 0;
};

struct ShockSizes {
    double waterVelocity = 0;      // feet a second
    double kineticEnergy = 0;      // foot pounds a foot of pipe
    double totalKineticEnergy = 0; // foot pounds
    double requiredAcceptance = 0; // gallons
    double requiredVolume = 0;     // gallons
};

/// Share of a tank that fills between nine tenths of the flow pressure and the static pressure (Boyle's law).
/// Throws Fault 11 when the absolute static pressure is 0.
double ShockAcceptanceFactor(double flowPressure, double staticPressure, double atmosphericPressure);

/// The shock pressure (psig) under which the pressure factor is looked up: the top of its band.
double ShockPressureBand(double shockPressure);

/// The static pressure (psig) of the pressure factor: the top of its band, 20 to 110 by 10.
double StaticPressureBand(double staticPressure);

/// Whether the table of pressure factors covers two band values in psig.
bool TableHasPressureFactor(double shockBand, double staticBand);

/// The pressure factor above the table, in foot pounds a cubic foot of tank: a fitted polynomial of the rise
/// from the static to the shock pressure (psig).
double HighPressureFactor(double shockBand, double staticBand);

/// Velocity, energies and sizes. Throws Fault 11 when the pressure factor or the acceptance factor is 0.
ShockSizes ComputeShockSizes(const ShockConditions& conditions, double pressureFactor);

/// Why the figures cannot be right, in the words that the user sees; nothing when they are plausible.
std::optional<std::string_view> ShockObjection(double waterVelocity, double acceptanceFactor,
                                               double shockBand);

/// Area of the bore of a pipe in square inches, from its bore in inches.
double PipeArea(double bore);

/// Water that the tanks give back, as a share of what the pipe holds. Volumes in gallons a tank, the length
/// in feet, the area in square inches. Throws Fault 11 when the pipe has no volume.
double LeakLoad(double acceptanceFactor, double tankVolume, int quantity, double length, double area);

/// Seconds for which the tanks feed the flow (gallons a minute) before the pump must start.
/// Throws Fault 11 for a flow of 0.
double PumpStartupDelay(double acceptanceFactor, double tankVolume, int quantity, double flowRate);
