#include "sizing/ConditionRules.h"

#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "sizing/FluidLimits.h"

#include <algorithm>

namespace ConditionRules {

namespace {

const char* const numbers[] = {"txtTotSysFluid", "txtSOTMin", "txtSOTMax",
                               "txtSOPMin",      "txtSOPMax", "txtAtmPressure"};

void checkOrder(Objections& found, const QHash<QString, QString>& boxes, const char* minimum,
                const char* maximum) {
    if (!(toNumber(boxes.value(minimum)) < toNumber(boxes.value(maximum))))
        found.push_back({maximum, EntryRules::wrongOrder});
}

} // namespace

TemperatureLimits limitsOf(Application application, const QString& fluid) {
    const std::string name = fluid.toStdString();
    const auto* row = std::ranges::find(fluidLimits, std::string_view(name), &FluidLimits::fluid);
    const TemperatureLimits limits = (row == fluidLimits.end() ? fluidLimits.front() : *row).limits;
    return infoOf(application).limits.value_or(limits);
}

QHash<QString, QString> hiddenBoxes(Application application) {
    const QString water = toQString(fluidLimits.front().fluid);
    switch (application) {
    case Application::Thermal:
        return {{"cmboFluidType", water}};
    case Application::Hydropneumatic:
        return {{"cmboFluidType", water}, {"txtSOTMin", "0"}, {"txtSOTMax", "1"}};
    case Application::Expansion:
    case Application::Shock:
    case Application::Package:
        break;
    }
    return {};
}

Objections objectionsTo(const QHash<QString, QString>& boxes, Application application) {
    Objections found;
    if (boxes.value("cmboFluidType").isEmpty())
        found.push_back({"cmboFluidType", EntryRules::nothingEntered});
    for (const char* box : numbers)
        if (boxes.value(box).isEmpty())
            found.push_back({box, EntryRules::nothingEntered});
        else if (const auto objection = EntryRules::objectionToNumber(boxes.value(box)))
            found.push_back({box, *objection});
    if (!found.empty())
        return found;
    checkOrder(found, boxes, "txtSOTMin", "txtSOTMax");
    checkOrder(found, boxes, "txtSOPMin", "txtSOPMax");
    const TemperatureLimits limits = limitsOf(application, boxes.value("cmboFluidType"));
    for (const auto& [box, low, high] : {std::tuple("txtSOTMin", limits.minimumLow, limits.minimumHigh),
                                         {"txtSOTMax", limits.maximumLow, limits.maximumHigh}})
        if (const auto objection = EntryRules::objectionToValue(toNumber(boxes.value(box)), low, high))
            found.push_back({box, *objection});
    return found;
}

QHash<QString, QString> boxesOf(const TankLine& line) {
    return {{"txtAtmPressure", shownText(line.atmPressure)}, {"txtSOPMin", shownText(line.sopMin)},
            {"txtSOPMax", shownText(line.sopMax)},           {"txtSOTMin", shownText(line.sotMin)},
            {"txtSOTMax", shownText(line.sotMax)},           {"txtTotSysFluid", shownText(line.totSysVolume)},
            {"cmboFluidType", shownText(line.sysFluidType)}};
}

TankLine lineOf(const QHash<QString, QString>& boxes) {
    TankLine line;
    line.atmPressure = toNumber(boxes.value("txtAtmPressure"));
    line.sopMin = toNumber(boxes.value("txtSOPMin"));
    line.sopMax = toNumber(boxes.value("txtSOPMax"));
    line.sotMin = toNumber(boxes.value("txtSOTMin"));
    line.sotMax = toNumber(boxes.value("txtSOTMax"));
    line.totSysVolume = toNumber(boxes.value("txtTotSysFluid"));
    line.sysFluidType = boxes.value("cmboFluidType");
    return line;
}

} // namespace ConditionRules
