#include "data/Wording.h"

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
    {"recharged",
     [](Model model, Picture) {
         return model.hasBladder() && model.application != infoOf(Application::Shock).code;
     }},
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
    if (!model.lastLine.ends_with(" @Rep@"))
        faults.emplace_back("its last line reads badly without a representative");
    return faults;
}
