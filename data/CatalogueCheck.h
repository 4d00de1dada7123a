#pragma once

#include "data/Database.h"
#include "data/ShockJobs.h"

#include <filesystem>
#include <string>
#include <vector>

/// The largest deviation of a series from the computed value, as a fraction (0.02 is 2 %), and its model.
struct Extreme {
    double deviation = 0;
    std::string model;
};

/// The check's results for one series. `lowestPower` and `highestPower` are efficiencies of its pumps, and 0
/// for a series without pumps.
struct SeriesFigures {
    std::string series;
    int models = 0;
    Extreme shape;
    Extreme weight;
    double lowestPower = 0;
    double highestPower = 0;
};

struct CheckResult {
    std::vector<std::string> faults;
    std::vector<SeriesFigures> series;
    std::vector<PipeFigures> pipes;
};

/// Checks every model of a catalogue against the physics, its specification text and its drawing, and the
/// tables against one another. Throws std::runtime_error if the file is not a catalogue.
CheckResult checkCatalogue(Database& catalogue, const std::filesystem::path& drawings);
