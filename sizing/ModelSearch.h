#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// A catalogue model offered in a quantity; the volume in gallons, the dimensions in inches.
struct TankOption {
    int quantity = 0;
    std::string model;
    double tankVolume = 0;
    double diameter = 0;
    double length = 0;
};

/// The two questions that the search asks of the catalogue.
struct ModelSource {
    /// The smallest size (gal a tank) that meets the requirements with so many tanks, if any model does.
    std::function<std::optional<double>(int quantity)> smallest;
    /// The models of exactly that size, in the catalogue's order.
    std::function<std::vector<TankOption>(double size)> models;
};

/// Offers the smallest fitting size for up to three quantities. A quantity that only finds the size of the
/// one before is left out. A size whose rows cannot be found again makes the search try the next quantity,
/// up to six, without using up one of the three.
std::vector<TankOption> SearchModels(const ModelSource& source);

/// The same for shock arrestor tanks: goes through the quantities up to six and offers each new size; the
/// third quantity that finds the size of the one before ends the search.
std::vector<TankOption> SearchShockModels(const ModelSource& source);
