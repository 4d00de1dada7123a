#include "data/Wording.h"

#include <regex>

namespace {

/// Words that must be in a specification if, and only if, the condition holds.
struct Claim {
    const char* words;
    bool (*holds)(const CatalogueModel&, const Drawing&);
};

using Model = const CatalogueModel&;
using Picture = const Drawing&;

bool hangs(Model model, Picture picture) {
    return !model.isPackage() && !picture.ringBase && !picture.legs && !picture.saddles;
}

constexpr Claim claims[] = {
    {"ASME Boiler and Pressure Vessel Code", [](Model model, Picture) { return model.code; }},
    {"code data", [](Model model, Picture) { return model.code; }},
    {"non-code vessel", [](Model model, Picture) { return !model.isPackage() && !model.code; }},
    {"stand upright", [](Model, Picture picture) { return picture.ringBase || picture.legs; }},
    {"welded steel ring base", [](Model, Picture picture) { return picture.ringBase; }},
    {"welded steel legs", [](Model, Picture picture) { return picture.legs; }},
    {"lie horizontally", [](Model, Picture picture) { return picture.horizontal; }},
    {"saddles", [](Model, Picture picture) { return picture.saddles; }},
    {"hanging", hangs},
    {"system connection shall be at the top",
     [](Model, Picture picture) { return picture.connectionTop && !picture.connectionBottom; }},
    {"system connection shall be at the bottom",
     [](Model, Picture picture) { return picture.connectionBottom && !picture.connectionTop; }},
    {"connections shall be provided at the top and at the bottom",
     [](Model, Picture picture) { return picture.connectionTop && picture.connectionBottom; }},
    {"removable through the flanged opening",
     [](Model model, Picture) { return model.bladder.starts_with("Replaceable"); }},
    {"sealed to the vessel at manufacture",
     [](Model model, Picture) { return model.bladder.starts_with("Fixed"); }},
    {"locked into the shell",
     [](Model model, Picture) { return model.bladder.find("Diaphragm") != std::string::npos; }},
    {"no bladder or diaphragm", [](Model model, Picture) { return model.bladder == "Plain Steel"; }},
    {"charged at the factory to @Precharge@", [](Model model, Picture) { return model.hasBladder(); }},
    {"contact with drinking water", [](Model model, Picture) { return model.drinkingWater; }},
    {"polyethylene solution container", [](Model model, Picture) { return model.isPackage(); }},
    {"The pump shall deliver @MakeUpCapacity@ gpm at @WkPressure@ psi with a motor of @Hp@ hp.",
     [](Model model, Picture) { return model.pumps() == 1; }},
    {"Each of two pumps shall deliver @MakeUpCapacity@ gpm at @WkPressure@ psi with a motor of @Hp@ hp.",
     [](Model model, Picture) { return model.pumps() == 2; }},
    {"nominal gallonage", [](Model, Picture) { return true; }},
    // The unit comes with the volume on one screen but not on the page, so the text must not add it.
    {"gallons", [](Model, Picture) { return false; }},
    // A plain steel tank has no charge; a shock tank has no valve to recharge it through.
    {"recharged", [](Model model, Picture) { return model.hasBladder() && !model.isShock(); }},
};

int count(const std::string& text, const std::string& words) {
    int times = 0;
    for (auto at = text.find(words); at != std::string::npos; at = text.find(words, at + words.size()))
        ++times;
    return times;
}

bool has(const std::string& text, const char* words) {
    return text.find(words) != std::string::npos;
}

/// What a package's specification demands, and the element of the drawing that shows it.
struct Demand {
    const char* words;
    const char* part;
    int times;
};

constexpr Demand demands[] = {
    {"volume marks", "volume-marks", 1},
    {"a lid", "lid", 1},
    {"a float switch", "float-switch", 1},
    {"a strainer", "strainer", 1},
    {"check valve", "check-valve", 1},
    {"isolating valve", "isolating-valve", 1},
    {"pressure gauge", "pressure-gauge", 1},
    {"an adjustable pressure switch", "pressure-switch", 1},
    {"each with its own pressure switch and gauge", "pressure-switch", 2},
    {"each with its own pressure switch and gauge", "pressure-gauge", 2},
    {"raise an alarm", "controls", 1},
};

void checkDemands(Model model, Picture picture, std::vector<std::string>& faults) {
    for (const Demand& demand : demands) {
        const auto shown = picture.parts.find(demand.part);
        if (has(model.specification, demand.words) &&
            (shown == picture.parts.end() || shown->second < demand.times))
            faults.push_back(std::string("its text demands what its drawing does not show: ") + demand.words);
    }
}

/// A flange is beside the caption NPT on the pages, so text, type and drawing must say where the thread is.
void checkConnection(Model model, Picture picture, std::vector<std::string>& faults) {
    const bool flanged = has(model.connectionType, "flange");
    const bool fromThree =
        has(model.specification, "Connections of 3 inches and above shall be Class 150 flanges, "
                                 "each with a companion flange threaded NPT. ");
    const bool always =
        has(model.specification,
            "The connection shall be a Class 150 flange with a companion flange threaded NPT. ");
    if (!model.isPackage() && !has(model.connectionType, "NPT"))
        faults.emplace_back("its connection is not of NPT, as the pages say");
    if (flanged != (always || (fromThree && model.connection >= 3)))
        faults.emplace_back("its connection and its text differ on the flange");
    if (flanged && !picture.parts.contains("companion-flange"))
        faults.emplace_back("its drawing does not show the flange");
}

/// The pages have gallons, so a description counts in them, and a model keeps to the range that it names.
void checkDescription(Model model, std::vector<std::string>& faults) {
    static const std::regex range("(of|below) ([0-9]+) gallons( and above)?");
    if (has(model.description, "litre"))
        faults.emplace_back("its description counts in litres");
    std::smatch found;
    if (!std::regex_search(model.description, found, range))
        return;
    const double limit = std::stod(found[2]);
    if (found[1] == "below" ? model.volume >= limit : model.volume < limit)
        faults.push_back("its description names sizes " + found.str());
}

/// One sentence, with and without the name: what follows the name continues it.
bool isSentence(const std::string& line) {
    static const std::regex sentence("The basis of design is [^.]* @Rep@ [a-z][^.@]*\\.");
    return std::regex_match(line, sentence);
}

} // namespace

std::vector<std::string> wordingFaults(const CatalogueModel& model, const Drawing& drawing) {
    std::vector<std::string> faults;
    for (const Claim& claim : claims) {
        const int times = count(model.specification, claim.words);
        const int expected = claim.holds(model, drawing) ? 1 : 0;
        if (times != expected)
            faults.push_back(std::string("its text says ") + std::to_string(times) + " times, not " +
                             std::to_string(expected) + ": " + claim.words);
    }
    const int charges =
        count(model.specification, "shall be adjusted ") + count(model.specification, "shall be set ");
    if (charges != (model.hasBladder() ? 1 : 0))
        faults.push_back("its text sets the charge " + std::to_string(charges) + " times");
    if (has(model.description, "hang") != hangs(model, drawing))
        faults.emplace_back("its description and its drawing differ on whether it hangs");
    if (has(model.description, "horizontally") != drawing.horizontal)
        faults.emplace_back("its description and its drawing differ on whether it lies");
    if (model.bladder.starts_with("Replaceable") && !drawing.topNozzle)
        faults.emplace_back("its bladder is replaceable and its drawing has no flange to take it out");
    if (!isSentence(model.lastLine))
        faults.emplace_back("its last line is no sentence without a representative");
    checkDescription(model, faults);
    checkConnection(model, drawing, faults);
    if (model.isPackage())
        checkDemands(model, drawing, faults);
    return faults;
}
