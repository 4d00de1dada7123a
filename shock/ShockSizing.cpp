#include "shock/ShockSizing.h"

#include "core/base/Applications.h"
#include "core/base/Numbers.h"
#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "core/store/Catalogue.h"
#include "core/store/UserDefaults.h"

#include <algorithm>
#include <initializer_list>

using namespace Catalogue;
using Record::orZero;

namespace ShockSizing {

ShockConditions conditionsOf(const TankLine& tank) {
    return conditionsOf(tank, pipeBore(tank.pipeIndex.value_or(QString())));
}

ShockConditions conditionsOf(const TankLine& tank, double bore) {
    return {.bore = bore,
            .length = orZero(tank.pipeLength),
            .flowRate = orZero(tank.flowRate),
            .flowPressure = orZero(tank.flowPressure),
            .staticPressure = orZero(tank.staticPressure),
            .shockPressure = orZero(tank.shockPressure),
            .atmosphericPressure = orZero(tank.atmPressure)};
}

double pressureFactor(double shockBand, double staticBand) {
    if (!tableHasPressureFactor(shockBand, staticBand))
        return highPressureFactor(shockBand, staticBand);
    return readPressureFactor(shockBand, staticBand);
}

double atmosphericPressure() {
    const double stored = Records::readUserDefaults().value_or(UserDefaults()).defaultPSIa.value_or(0);
    return stored == 0 ? UserDefaults::StandardAtmosphere : stored;
}

ShockSizes sizesOf(const ShockConditions& conditions, std::optional<std::string_view>& objection) {
    const double acceptance = shockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                    conditions.atmosphericPressure);
    const double shockBand = shockPressureBand(conditions.shockPressure);
    const ShockSizes sizes = computeShockSizes(
        conditions, pressureFactor(shockBand, staticPressureBand(conditions.staticPressure)));
    objection = shockObjection(sizes.waterVelocity, acceptance, shockBand);
    return sizes;
}

TankLine lineOf(const ShockConditions& conditions, const QString& pipeIndex, const ShockSizes& sizes) {
    TankLine line;
    line.atmPressure = conditions.atmosphericPressure;
    line.pipeIndex = pipeIndex;
    line.pipeLength = conditions.length;
    line.flowRate = conditions.flowRate;
    line.flowPressure = conditions.flowPressure;
    line.staticPressure = conditions.staticPressure;
    line.shockPressure = conditions.shockPressure;
    line.waterVelocity = Round(sizes.waterVelocity, storedDecimals);
    line.kineticEnergy = Round(sizes.kineticEnergy, storedDecimals);
    line.totalKineticEnergy = Round(sizes.totalKineticEnergy, storedDecimals);
    line.requiredVolume = Round(sizes.requiredVolume, storedDecimals);
    line.requiredAcceptance = Round(sizes.requiredAcceptance, storedDecimals);
    line.tankClass = toQString(infoOf(Application::Shock).code);
    return line;
}

Objections objectionsTo(const QHash<QString, QString>& boxes) {
    Objections found;
    for (const char* box :
         {"PipeIndex", "PipeLength", "FlowRate", "FlowPressure", "StaticPressure", "ShockPressure"})
        if (boxes.value(box).isEmpty())
            found.push_back({box, EntryRules::nothingEntered});
        else if (const auto objection = EntryRules::objectionToNumber(boxes.value(box));
                 objection && QLatin1String(box) != QLatin1String("PipeIndex"))
            found.push_back({box, *objection});
    if (!found.empty())
        return found;
    const ShockConditions conditions = conditionsIn(boxes, UserDefaults::StandardAtmosphere);
    if (const auto objection =
            EntryRules::objectionToValue(conditions.staticPressure, lowestStatic, highestStatic))
        found.push_back({"StaticPressure", *objection});
    if (!(conditions.flowPressure < conditions.staticPressure))
        found.push_back({"FlowPressure", EntryRules::wrongOrder});
    if (!(conditions.staticPressure < conditions.shockPressure))
        found.push_back({"ShockPressure", EntryRules::wrongOrder});
    if (conditions.bore == 0)
        found.push_back({"PipeIndex", QStringLiteral("Not a valid Pipe Index")});
    return found;
}

ShockConditions conditionsIn(const QHash<QString, QString>& boxes, double atmosphere) {
    const QString pipe = boxes.value("PipeIndex");
    return {.bore = pipe.contains(u'\'') ? 0 : pipeBore(pipe), // which goes into a statement as it is
            .length = toNumber(boxes.value("PipeLength")),
            .flowRate = toNumber(boxes.value("FlowRate")),
            .flowPressure = toNumber(boxes.value("FlowPressure")),
            .staticPressure = toNumber(boxes.value("StaticPressure")),
            .shockPressure = toNumber(boxes.value("ShockPressure")),
            .atmosphericPressure = atmosphere};
}

QHash<QString, QString> boxesOf(const TankLine& line) {
    return {{"PipeIndex", shownText(line.pipeIndex)},
            {"PipeLength", shownText(line.pipeLength)},
            {"FlowRate", shownText(line.flowRate)},
            {"FlowPressure", shownText(line.flowPressure)},
            {"StaticPressure", shownText(line.staticPressure)},
            {"ShockPressure", shownText(line.shockPressure)}};
}

double requiredConnection(const TankLine& line) {
    return requiredConnection(line, conditionsOf(line).bore);
}

double requiredConnection(const TankLine& line, double bore) {
    return leastConnection(bore, std::max(1, line.qty.value_or(1)));
}

Outcome outcomeOf(const ShockConditions& conditions, double tankVolume, int quantity) {
    const double acceptance = shockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                    conditions.atmosphericPressure);
    const double leakLoad =
        LeakLoad(acceptance, tankVolume, quantity, conditions.length, pipeArea(conditions.bore));
    const double delay = pumpStartupDelay(acceptance, tankVolume, quantity, conditions.flowRate);
    return {leakLoad, delay, formattedNumber(leakLoad, "#,##0.0%"), formattedNumber(delay, "#,##0.0 sec")};
}

void setOutcome(TankLine& line, const Outcome& outcome) {
    line.leakLoad = toNumber(outcome.leakLoadText.chopped(1)) / 100;
    line.pumpRunTime = toNumber(outcome.delayText.chopped(4));
}

} // namespace ShockSizing
