#pragma once

/// A pressure vessel of the catalogue: a cylinder with 2:1 elliptical heads.
struct Vessel {
    double diameter = 0;   // outside, in
    double headToHead = 0; // outside, without base and nozzles, in
    double pressure = 0;   // working pressure, psig
    double connection = 0; // nominal size of the system connection, in
    double volume = 0;     // as in the catalogue, gal
    bool code = false;     // built and stamped to the pressure vessel code
};

/// The next standard plate thickness above `t = P R / (S E - 0.6 P)`, in inches: the code formula for a
/// cylinder, with 20,000 psi for the stress S and 0.70 for the joint efficiency E. Never thinner than 16
/// gauge, or 12 gauge for a code vessel. Throws std::runtime_error above the thickest plate.
double plateThickness(const Vessel& vessel);

/// The volume of a shell with this diameter and length, in gallons.
double shellVolume(const Vessel& vessel);

/// The weight of shell and heads for the vessel's volume, plus 6 % for welds and base, fittings according to
/// the connection, and the bladder according to the volume; in pounds.
double plateWeight(const Vessel& vessel);

/// The efficiency of a pump with its motor: flow in gpm, pressure in psi, motor in hp.
double pumpEfficiency(double flow, double pressure, double horsepower);

/// The weight of a glycol package without solution, in pounds: container and frame per gallon, each pump with
/// pipes and switch, and its motor per horsepower.
double packageWeight(double gallons, int pumps, double horsepower, bool feeder);
