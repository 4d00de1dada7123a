#pragma once

#include <optional>
#include <string_view>

/// The requirements for a shock arrestor tank. Gauge pressures in psig, the atmosphere in psia.
struct ShockConditions {
    double bore = 0;           // inches
    double length = 0;         // feet
    double flowRate = 0;       // U.S. gallons per minute
    double flowPressure = 0;   // while flowing
    double staticPressure = 0; // at rest
    double shockPressure = 0;  // highest allowed during shock
    double atmosphericPressure = 0;
};

struct ShockSizes {
    double waterVelocity = 0;      // feet per second
    double kineticEnergy = 0;      // foot-pounds per foot of pipe
    double totalKineticEnergy = 0; // foot-pounds
    double requiredAcceptance = 0; // gallons
    double requiredVolume = 0;     // gallons
};

/// The precharge of a tank as a share of the flow pressure in psig.
inline constexpr double prechargeShare = .9;

/// The decimals to which results are stored, and half of the last one.
inline constexpr int storedDecimals = 8;
inline constexpr double halfStoredDecimal = .5e-8;

/// The fraction of a tank that fills between nine tenths of the flow pressure and the static pressure
/// (Boyle's law). Throws Fault 11 when the absolute static pressure is 0.
double shockAcceptanceFactor(double flowPressure, double staticPressure, double atmosphericPressure);

/// The shock pressure (psig) used to look up the pressure factor: the top of its band.
double shockPressureBand(double shockPressure);

/// The static pressure (psig) used to look up the pressure factor: the top of its band, 20 to 110 in steps of
/// 10.
double staticPressureBand(double staticPressure);

/// The static pressures in psig for which the table of pressure factors has columns.
inline constexpr double lowestStatic = 20;
inline constexpr double highestStatic = 110;

/// Whether the table of pressure factors covers two band values in psig.
bool tableHasPressureFactor(double shockBand, double staticBand);

/// The pressure factor beyond the table, in foot-pounds per cubic foot of tank: a polynomial fitted to the
/// rise from the static to the shock pressure (psig).
double highPressureFactor(double shockBand, double staticBand);

/// Computes velocity, energies and sizes. Throws Fault 11 when the pressure factor or the acceptance factor
/// is 0.
ShockSizes computeShockSizes(const ShockConditions& conditions, double pressureFactor);

/// Why the figures cannot be right, in the wording shown to the user; nothing when they are plausible.
std::optional<std::string_view> shockObjection(double waterVelocity, double acceptanceFactor,
                                               double shockBand);

/// The least connection of a tank in bores of its pipe; the catalogue's rule.
inline constexpr double connectionShare = .47;

/// The least connection in inches of each of several tanks side by side, on a pipe with a bore in inches.
double leastConnection(double bore, int quantity);

/// The area of a pipe's bore in square inches, from the bore in inches.
double pipeArea(double bore);

/// The water that the tanks give back, as a fraction of the pipe's contents. Volumes in gallons per tank, the
/// length in feet, the area in square inches. Throws Fault 11 when the pipe has no volume.
double LeakLoad(double acceptanceFactor, double tankVolume, int quantity, double length, double area);

/// The seconds for which the tanks can supply the flow (gallons per minute) before the pump must start.
/// Throws Fault 11 for a flow of 0.
double pumpStartupDelay(double acceptanceFactor, double tankVolume, int quantity, double flowRate);
