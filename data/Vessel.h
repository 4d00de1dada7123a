#pragma once

/// A pressure vessel of the catalogue: a cylinder with 2:1 elliptical heads.
struct Vessel {
    double diameter = 0;   // outside, in
    double headToHead = 0; // outside, without base and nozzles, in
    double pressure = 0;   // working pressure, psig
    double connection = 0; // nominal size of the system connection, in
    double volume = 0;     // of the catalogue, gal
    bool code = false;     // built and stamped to the pressure vessel code
};

/// The next standard plate above `t = P R / (S E - 0.6 P)` (code formula for a cylinder, with 20,000 psi
/// for the stress S and 0.70 for the joint efficiency E); never thinner than 16 gauge, for a code vessel
/// than 12 gauge. In inches. Throws std::runtime_error above the thickest plate.
double PlateThickness(const Vessel& vessel);

/// What a shell of this diameter and length holds, in gallons.
double ShellVolume(const Vessel& vessel);

/// Shell and heads of a shell that holds the vessel's volume, 6 % for welds and base, fittings by the
/// connection, the bladder by the volume; in pounds.
double PlateWeight(const Vessel& vessel);

/// What a pump and its motor make of their power: flow in gpm, pressure in psi, motor in hp.
double PumpEfficiency(double flow, double pressure, double horsepower);

/// A glycol package without solution, in pounds: container and frame by the gallon; each pump with its
/// pipes and switch, and its motor by the horsepower.
double PackageWeight(double gallons, int pumps, double horsepower, bool feeder);
