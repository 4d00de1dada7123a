#pragma once

#include "data/Database.h"

#include <string>
#include <vector>

/// The excess of a tank's volume over the required volume, as their ratio.
struct Excess {
    double ratio = 0;
    std::string model;
};

/// What ordinary shock jobs on one pipe get as the smallest single tank.
struct PipeFigures {
    std::string pipe;
    int jobs = 0;
    int without = 0; // jobs that need more than the largest tank
    Excess worst;
    Excess larger; // the worst of the tanks above half a gallon; a narrow main may need still less
    double median = 0;
};

/// For each pipe, mains of 300 ft at 5, 6 and 7 ft/s with flow pressures of 30 to 80 psig, static pressures
/// of 10 to 25 psi above them and shock pressures from 40 psi above those up to 250 psig. Throws
/// std::runtime_error.
std::vector<PipeFigures> shockJobFigures(Database& catalogue);

/// Where the table of pressure factors does not lead into the formula at 200 psig, or where a higher shock
/// pressure would ask for a larger tank.
std::vector<std::string> pressureFactorFaults(Database& catalogue);
