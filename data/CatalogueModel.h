#pragma once

#include "core/base/Applications.h"
#include "data/Database.h"

#include <string>
#include <vector>

/// The parts of a model and its specification that the check needs; gal, in, psi, lb, gpm, hp.
struct CatalogueModel {
    std::string name;
    std::string application;
    std::string series;
    std::string bladder;
    bool code = false;
    bool drinkingWater = false;
    double volume = 0;
    double acceptance = 0;
    double diameter = 0;
    double overall = 0;
    std::string connectionText;
    double connection = 0;
    std::string connectionType;
    double pressure = 0;
    double weight = 0;
    double flow = 0;       // per pump
    double horsepower = 0; // per pump
    std::string drawing;
    std::string specification; // lines joined
    std::string lastLine;
    std::string description; // lines joined

    bool isPackage() const { return application == infoOf(Application::Package).code; }
    bool isShock() const { return application == infoOf(Application::Shock).code; }
    bool hasBladder() const { return !isPackage() && bladder != "Plain Steel"; }
    int pumps() const { return !isPackage() ? 0 : series == "PKGD" || series == "PKGT" ? 2 : 1; }
};

/// All models in catalogue order. Throws std::runtime_error.
std::vector<CatalogueModel> readModels(Database& catalogue);
