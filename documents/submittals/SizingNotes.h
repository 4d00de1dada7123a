#pragma once

#include <optional>
#include <string>
#include <vector>

/// Remarks on a sized tank line that the sizing itself does not make: what an engineer should look at again.
/// None refuses anything.
namespace SizingNotes {

/// What the remarks are about. A member is empty if it is not stored or does not apply.
struct Facts {
    std::optional<double> minimumPressure{};    // psig
    std::optional<double> maximumPressure{};    // psig
    std::optional<double> atmosphere{};         // psia
    std::optional<double> maximumTemperature{}; // °F
    std::optional<double> volume{};             // gal: system fluid, drawdown or steel tank
    std::optional<double> requiredVolume{};     // gal
    std::optional<double> requiredAcceptance{}; // gal; nothing where only the volume has to be met
    std::optional<double> requiredConnection{}; // in
    std::optional<double> computedVolume{};     // gal, which the stored conditions give now
    std::optional<double> computedAcceptance{}; // gal
    std::optional<double> flowPressure{};       // psig, of shock arrestors
    std::optional<double> staticPressure{};     // psig, of shock arrestors
    std::string series{};
    bool plainSteel = false; // starts from atmospheric pressure
    bool conversion = false; // of a plain steel tank
    bool shock = false;

    std::string model{};     // as stored; empty before one is chosen
    bool modelKnown = false; // to the catalogue
    std::string modelSeries{};
    int quantity = 0;
    std::optional<double> workingPressure{};   // psig
    std::optional<double> leastPressure{};     // psig, of a package
    std::optional<double> temperatureRating{}; // °F
    std::optional<double> tankVolume{};        // gal a tank
    std::optional<double> tankAcceptance{};    // gal a tank
    std::optional<double> connection{};        // in
};

using Note = std::optional<std::string>;

/// Whether the highest pressure is within the model's, and above the least of a package.
Note pressureNote(const Facts& facts);
/// Whether the highest temperature is within the model's.
Note temperatureNote(const Facts& facts);
/// Whether the atmospheric pressure is one of this earth: 8 to 15.5 psia.
Note atmosphereNote(const Facts& facts);
/// Whether there is a volume to size for.
Note volumeNote(const Facts& facts);
/// Whether the pressures rise, far enough for a tank to accept a reasonable share of its volume.
Note spanNote(const Facts& facts);
/// Whether a tank can be charged to the lowest pressure: not below that of the atmosphere.
Note chargeNote(const Facts& facts);
/// Whether a conversion leads to a series that can be charged, as its size presumes.
Note conversionNote(const Facts& facts);
/// Whether the model's connection is as wide as the pipe demands.
Note connectionNote(const Facts& facts);
/// Whether flow, static and shock pressure of a shock arrestor rise in this order.
Note shockPressuresNote(const Facts& facts);
/// Whether the stored sizes are those of the stored conditions.
Note sizesNote(const Facts& facts);
/// Whether the model is one of the catalogue, and of the series that was sized for.
Note choiceNote(const Facts& facts);
/// Whether there is a number of tanks.
Note quantityNote(const Facts& facts);
/// Whether the chosen tanks have the required volume, and the required acceptance.
Note tankVolumeNote(const Facts& facts);
Note tankAcceptanceNote(const Facts& facts);
/// Whether the tanks, large enough by their sizes, also take the required water between the pressures: where
/// these are close together, the rounding of the acceptance factor counts.
Note takenNote(const Facts& facts);

/// All that apply, in this order.
std::vector<std::string> all(const Facts& facts);

} // namespace SizingNotes
