#include "documents/submittals/SizingNotes.h"

#include "core/base/Applications.h"
#include "core/base/Numbers.h"

#include <tuple>

namespace SizingNotes {

namespace {

constexpr double lowestAtmosphere = 8;     // psia, at some 16,000 ft
constexpr double highestAtmosphere = 15.5; // psia, some 1,500 ft below the sea
constexpr double leastShare = .05;         // of a tank; less is an abnormally low volume of water

std::string with(double value, const char* unit) {
    return shownNumberText(value) + ' ' + unit;
}

} // namespace

Note pressureNote(const Facts& facts) {
    if (facts.maximumPressure && facts.workingPressure && *facts.maximumPressure > *facts.workingPressure)
        return "The maximum pressure of " + with(*facts.maximumPressure, "psig") +
               " is above the model's working pressure of " + with(*facts.workingPressure, "psig") + ".";
    if (facts.minimumPressure && facts.workingPressure && *facts.minimumPressure > *facts.workingPressure)
        return "The minimum pressure of " + with(*facts.minimumPressure, "psig") +
               " is above the model's working pressure of " + with(*facts.workingPressure, "psig") + ".";
    if (facts.maximumPressure && facts.leastPressure && *facts.maximumPressure < *facts.leastPressure)
        return "The pressure of " + with(*facts.maximumPressure, "psig") +
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
    if (!facts.atmosphere ||
        (*facts.atmosphere >= lowestAtmosphere && *facts.atmosphere <= highestAtmosphere))
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
    if (!facts.minimumPressure || !facts.maximumPressure || !facts.atmosphere)
        return std::nullopt;
    const double low = *facts.atmosphere + *facts.minimumPressure;
    const double high = *facts.atmosphere + *facts.maximumPressure;
    if (low <= 0 || high <= 0)
        return std::nullopt;
    const double share =
        facts.plainSteel ? *facts.atmosphere / low - *facts.atmosphere / high : 1 - low / high;
    if (share >= leastShare)
        return std::nullopt;
    return "The pressures lie so close together that a tank accepts less than a twentieth of its volume.";
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
    for (const auto& [required, offered, name] :
         {std::tuple(facts.requiredVolume, facts.tankVolume, "volume"),
          {facts.requiredAcceptance, facts.tankAcceptance, "acceptance"}})
        if (required && offered && *offered * facts.quantity < *required)
            return "The chosen tanks have " + with(*offered * facts.quantity, "gal") + " of " + name +
                   ", but " + with(*required, "gal") + " are required.";
    return std::nullopt;
}

std::vector<std::string> all(const Facts& facts) {
    std::vector<std::string> notes;
    for (Note (*one)(const Facts&) :
         {choiceNote, pressureNote, temperatureNote, atmosphereNote, volumeNote, spanNote, connectionNote})
        if (const Note note = one(facts))
            notes.push_back(*note);
    return notes;
}

} // namespace SizingNotes
