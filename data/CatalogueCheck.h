#pragma once

#include "data/Database.h"

#include <filesystem>
#include <string>
#include <vector>

/// The farthest that a series strays from what was computed, as a share (0.02 is 2 %), and the model.
struct Extreme {
    double deviation = 0;
    std::string model;
};

/// What the check saw of one series. `lowestPower` and `highestPower` are efficiencies of its pumps and
/// stay 0 for a series without pumps.
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
};

/// Holds every model of a catalogue against the physics, its specification text and its drawing, and
/// the tables against one another. Throws std::runtime_error when the file is no catalogue.
CheckResult CheckCatalogue(Database& catalogue, const std::filesystem::path& drawings);
