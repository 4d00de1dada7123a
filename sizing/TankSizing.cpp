#include "sizing/TankSizing.h"

#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "core/store/Catalogue.h"
#include "core/store/JobHeader.h"
#include "sizing/FluidLimits.h"
#include "sizing/Series.h"

using Record::orZero;

namespace TankSizing {

SystemConditions conditionsOf(const TankLine& tank) {
    return {.minimumTemperature = orZero(tank.sotMin),
            .maximumTemperature = orZero(tank.sotMax),
            .minimumPressure = orZero(tank.sopMin),
            .maximumPressure = orZero(tank.sopMax),
            .atmosphericPressure = orZero(tank.atmPressure),
            .volume = orZero(tank.totSysVolume)};
}

double expansionFactor(const TankLine& tank) {
    const SystemConditions conditions = conditionsOf(tank);
    const QString fluid = tank.sysFluidType.value_or(QString());
    if (fluid == waterFluid)
        return Catalogue::readExpansion(expansionColumn(conditions.minimumTemperature),
                                        conditions.maximumTemperature)
            .value_or(Catalogue::Expansion())
            .factor;
    return fluidExpansionFactor(fluid.toStdString(), conditions.minimumTemperature,
                                conditions.maximumTemperature);
}

bool isPlainSteel(const QString& series) {
    return series == toQString(plainSteelSeries);
}

RequiredSizes sizesOf(const TankLine& tank, Application application, const QString& series) {
    const SystemConditions conditions = conditionsOf(tank);
    const double acceptance = acceptanceFactor(conditions, isPlainSteel(series));
    switch (application) {
    case Application::Expansion:
    case Application::Thermal:
        return expansionTankSizes(conditions, expansionFactor(tank), acceptance);
    case Application::Hydropneumatic:
        return hydropneumaticTankSizes(conditions, acceptance);
    case Application::Shock:
    case Application::Package:
        break; // these have no series to choose from
    }
    throw Fault(Fault::InternalError, "No sizes without a series");
}

void addSizes(SizingNotes::Facts& facts, const TankLine& tank) {
    const QString series = tank.tankClass.value_or(QString());
    const auto application = applicationOfSeries(series.toStdString());
    const bool conversion = tank.jobID == Records::reservedJob();
    if (!conversion && !application)
        return;
    try {
        const RequiredSizes sizes =
            conversion ? convertedTankSizes(conditionsOf(tank)) : sizesOf(tank, *application, series);
        facts.computedVolume = sizes.volume;
        facts.computedAcceptance = sizes.acceptance;
    } catch (const DatabaseFault&) {
        throw;
    } catch (const Fault&) { // the pressures leave no acceptance
    }
}

} // namespace TankSizing
