#include "documents/submittals/SizingNotes.h"

#include "core/base/Applications.h"
#include "core/base/Numbers.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace SizingNotes {

namespace {

constexpr double lowestAtmosphere = 8;     // psia, at some 16,000 ft
constexpr double highestAtmosphere = 15.5; // psia, some 1,500 ft below the sea
constexpr double leastShare = .05;         // of a tank; less is an abnormally low volume of water
constexpr double missingShare = .005;      // of the required water; less comes from rounding alone

std::string with(double value, const char* unit) {
    return shownNumberText(value) + ' ' + unit;
}

/// The share of a tank that fills between rising pressures (Boyle's law); nothing without such.
std::optional<double> acceptedShare(const Facts& facts) {
    if (!facts.minimumPressure || !facts.maximumPressure || !facts.atmosphere ||
        *facts.minimumPressure >= *facts.maximumPressure || *facts.atmosphere + *facts.minimumPressure <= 0)
        return std::nullopt;
    const double low = *facts.atmosphere + *facts.minimumPressure;
    const double high = *facts.atmosphere + *facts.maximumPressure;
    return facts.plainSteel ? *facts.atmosphere / low - *facts.atmosphere / high : 1 - low / high;
}

/// Whether the tanks have less of a size than is required; unknown sizes do not count.
Note shortage(const Facts& facts, const std::optional<double>& required, const std::optional<double>& each,
              const char* name) {
    if (facts.quantity <= 0 || !required || !each || *each * facts.quantity >= *required)
        return std::nullopt;
    return "The chosen tanks have " + with(*each * facts.quantity, "gal") + " of " + name + ", but " +
           with(*required, "gal") + " are required.";
}

} // namespace

Note pressureNote(const Facts& facts) {
    if (facts.maximumPressure && facts.workingPressure && facts.leastPressure &&
        *facts.maximumPressure > *facts.workingPressure)
        return "The system pressure of " + with(*facts.maximumPressure, "psig") +
               " is above the model's range, which ends at " + with(*facts.workingPressure, "psig") + ".";
    if (facts.maximumPressure && facts.workingPressure && *facts.maximumPressure > *facts.workingPressure)
        return "The maximum pressure of " + with(*facts.maximumPressure, "psig") +
               " is above the model's working pressure of " + with(*facts.workingPressure, "psig") + ".";
    if (facts.minimumPressure && facts.workingPressure && *facts.minimumPressure > *facts.workingPressure)
        return "The minimum pressure of " + with(*facts.minimumPressure, "psig") +
               " is above the model's working pressure of " + with(*facts.workingPressure, "psig") + ".";
    if (facts.maximumPressure && facts.leastPressure && *facts.maximumPressure < *facts.leastPressure)
        return "The system pressure of " + with(*facts.maximumPressure, "psig") +
               " is below the model's range, which begins at " + with(*facts.leastPressure, "psig") + ".";
    return std::nullopt;
}

Note temperatureNote(const Facts& facts) {
    if (!facts.maximumTemperature || !facts.temperatureRating ||
        *facts.maximumTemperature <= *facts.temperatureRating)
        return std::nullopt;
    return "The maximum temperature of " + with(*facts.maximumTemperature, "°F") +
           " is above the model's rating of " + with(*facts.temperatureRating, "°F") + ".";
}

Note atmosphereNote(const Facts& facts) {
    if (!facts.atmosphere)
        return facts.minimumPressure || facts.shock // packages have none
                   ? Note("No atmospheric pressure is stored; it counts as 0 psia.")
                   : std::nullopt;
    if ((*facts.atmosphere >= lowestAtmosphere && *facts.atmosphere <= highestAtmosphere))
        return std::nullopt;
    return "The atmospheric pressure of " + with(*facts.atmosphere, "psia") +
           " is not that of any inhabited place, which lies between " + with(lowestAtmosphere, "and ") +
           with(highestAtmosphere, "psia") + ".";
}

Note volumeNote(const Facts& facts) {
    if (facts.volume && *facts.volume == 0)
        return "The volume is 0 gal, so that nothing was sized for.";
    for (const auto& size : {facts.requiredVolume, facts.requiredAcceptance})
        if (size && *size == smallestSize) // shock arrestors have no such limit and may be smaller
            return "A required size is at its lower limit of " + with(smallestSize, "gal") + ".";
    return std::nullopt;
}

Note spanNote(const Facts& facts) {
    if (facts.minimumPressure && facts.maximumPressure && *facts.minimumPressure >= *facts.maximumPressure)
        return "The minimum pressure of " + with(*facts.minimumPressure, "psig") +
               " is not below the maximum of " + with(*facts.maximumPressure, "psig") + ".";
    const auto share = acceptedShare(facts);
    if (!share || *share >= leastShare)
        return std::nullopt;
    return "The pressures lie so close together that a tank accepts less than a twentieth of its volume.";
}

Note chargeNote(const Facts& facts) {
    if (!facts.minimumPressure || *facts.minimumPressure >= 0)
        return std::nullopt;
    return "The minimum pressure of " + with(*facts.minimumPressure, "psig") +
           " is below that of the atmosphere: no tank can be charged to it.";
}

Note conversionNote(const Facts& facts) {
    if (!facts.conversion || !facts.plainSteel)
        return std::nullopt;
    return "The required volume holds for a tank that is charged to the minimum pressure, which a plain "
           "steel "
           "tank is not.";
}

Note connectionNote(const Facts& facts) {
    if (!facts.requiredConnection || !facts.connection || *facts.connection >= *facts.requiredConnection)
        return std::nullopt;
    return "The model's connection of " + with(*facts.connection, "in") +
           " is narrower than the pipe demands: " + with(Round(*facts.requiredConnection, 3), "in") + ".";
}

Note choiceNote(const Facts& facts) {
    if (facts.model.empty())
        return std::nullopt;
    if (!facts.modelKnown)
        return "The model " + facts.model + " is not in the catalogue.";
    if (!facts.series.empty() && facts.series != facts.modelSeries)
        return "The model " + facts.model + " is not of the series " + facts.series +
               ", for which the sizes were computed.";
    return std::nullopt;
}

Note quantityNote(const Facts& facts) {
    if (facts.model.empty() || facts.quantity > 0)
        return std::nullopt;
    return "There is no number of tanks with the model " + facts.model + ".";
}

Note tankVolumeNote(const Facts& facts) {
    return shortage(facts, facts.requiredVolume, facts.tankVolume, "volume");
}

Note tankAcceptanceNote(const Facts& facts) {
    return shortage(facts, facts.requiredAcceptance, facts.tankAcceptance, "acceptance");
}

Note sizesNote(const Facts& facts) {
    constexpr double tolerance = 1e-6; // gal
    for (const auto& [stored, computed, name] :
         {std::tuple(facts.requiredVolume, facts.computedVolume, "volume"),
          {facts.requiredAcceptance, facts.computedAcceptance, "acceptance"}})
        if (stored && computed && std::abs(*stored - *computed) > tolerance)
            return "The stored conditions give a required " + std::string(name) + " of " +
                   with(Round(*computed, 4), "gal") + ", but " + with(Round(*stored, 4), "gal") +
                   " are stored. Go through the conditions again with Recalc.";
    return std::nullopt;
}

Note shockPressuresNote(const Facts& facts) {
    if (facts.flowPressure && facts.staticPressure && *facts.flowPressure >= *facts.staticPressure)
        return "The flow pressure of " + with(*facts.flowPressure, "psig") +
               " is not below the static pressure of " + with(*facts.staticPressure, "psig") + ".";
    if (facts.shock && facts.staticPressure && facts.maximumPressure &&
        *facts.staticPressure >= *facts.maximumPressure)
        return "The static pressure of " + with(*facts.staticPressure, "psig") +
               " is not below the shock pressure of " + with(*facts.maximumPressure, "psig") + ".";
    return std::nullopt;
}

Note takenNote(const Facts& facts) {
    const auto share = acceptedShare(facts);
    if (facts.shock || !share || facts.quantity <= 0 || !facts.tankVolume || !facts.requiredAcceptance ||
        *facts.requiredAcceptance <= smallestSize || tankVolumeNote(facts) || tankAcceptanceNote(facts))
        return std::nullopt;
    const double water = *share * *facts.tankVolume;
    const double taken =
        facts.quantity * (facts.plainSteel ? water : std::min(water, facts.tankAcceptance.value_or(water)));
    if (taken >= *facts.requiredAcceptance * (1 - missingShare))
        return std::nullopt;
    return "Between the pressures the chosen tanks take " + with(Round(taken, 4), "gal") + ", but " +
           with(*facts.requiredAcceptance, "gal") + " are required.";
}

std::vector<std::string> all(const Facts& facts) {
    std::vector<std::string> notes;
    for (Note (*one)(const Facts&) :
         {sizesNote, choiceNote, quantityNote, tankVolumeNote, tankAcceptanceNote, takenNote, conversionNote,
          pressureNote, temperatureNote, atmosphereNote, volumeNote, spanNote, shockPressuresNote, chargeNote,
          connectionNote})
        if (const Note note = one(facts))
            notes.push_back(*note);
    return notes;
}

} // namespace SizingNotes
