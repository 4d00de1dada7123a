#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// A catalogue model offered in a quantity; volume in gallons, dimensions in inches.
struct TankOption {
    int quantity = 0;
    std::string model;
    double tankVolume = 0;
    double diameter = 0;
    double length = 0;
};

/// The two queries that the search makes to the catalogue.
struct ModelSource {
    /// The smallest size (gallons per tank) that meets the requirements with this many tanks, if there is
    /// one.
    std::function<std::optional<double>(int quantity)> smallest;
    /// The models of exactly that size, in the catalogue's order.
    std::function<std::vector<TankOption>(double size)> models;
};

/// What a search asked for a number of tanks, and what the catalogue answered.
struct SearchStep {
    int quantity = 0;
    std::optional<double> smallest; // gallons per tank
    std::vector<TankOption> models; // of that size, if the search asked for them
};

/// A source that notes what a search asks. Both the source and the notes must outlive it.
ModelSource noting(const ModelSource& source, std::vector<SearchStep>& steps);

/// Offers the smallest fitting size for up to three quantities. A quantity that yields the same size as the
/// one before is skipped. If the rows of a size cannot be found again, the search tries the next quantity, up
/// to six, without using up one of the three.
std::vector<TankOption> searchModels(const ModelSource& source);

/// The same for shock arrestor tanks: tries all quantities up to six and offers each new size. The third
/// quantity that yields the same size as the one before ends the search.
std::vector<TankOption> searchShockModels(const ModelSource& source);
