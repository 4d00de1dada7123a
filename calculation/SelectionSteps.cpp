#include "calculation/SelectionSteps.h"

#include "calculation/SizingSteps.h"
#include "core/base/Numbers.h"
#include "core/base/Text.h"
#include "documents/submittals/SizingFacts.h"
#include "shock/ShockSizing.h"
#include "sizing/CatalogueSearch.h"
#include "sizing/TankSizing.h"

#include <algorithm>

using namespace Formulas;
using namespace SiValues;
using Record::orZero;

namespace {

QString gallons(double value) {
    return figure(value) + " gal";
}

QString pounds(double value) {
    return figure(value) + " psig (" + kilopascals(value) + ')';
}

QString modelsIn(const std::vector<TankOption>& models) {
    QStringList names;
    for (const TankOption& option : models)
        names.append(QString::fromStdString(option.model));
    return names.join(", ");
}

/// The sizes that the conditions demand; before they can be computed, those that are stored.
RequiredSizes required(const SizedTank& tank) {
    return tank.sizes.value_or(
        RequiredSizes{orZero(tank.line.requiredVolume), orZero(tank.line.requiredAcceptance)});
}

/// The options of a line, and how the search went.
std::vector<TankOption> search(const SizedTank& tank, std::vector<SearchStep>& steps) {
    const double volume = required(tank).volume;
    if (tank.conversion)
        return findConvertedModels(tank.series(), volume, &steps);
    if (tank.application == Application::Shock)
        return findShockModels(tank.series(), volume, ShockSizing::conditionsOf(tank.line).bore, &steps);
    return findModels(tank.series(), volume, required(tank).acceptance, &steps);
}

QString question(const SizedTank& tank, int quantity) {
    const QString count = QString::number(quantity);
    QString asked = count + " × volume ≥ " + gallons(required(tank).volume);
    if (tank.application == Application::Shock)
        asked += ", connection ≥ " +
                 figure(Round(leastConnection(ShockSizing::conditionsOf(tank.line).bore, quantity), 4)) +
                 " in";
    else if (!tank.conversion)
        asked = count + " × acceptance ≥ " + gallons(required(tank).acceptance) + ", " + asked;
    return asked;
}

QString answer(const SizedTank& tank, const SearchStep& step) {
    if (!step.smallest)
        return "no model";
    const QString size =
        gallons(*step.smallest) + (tank.conversion ? " of volume each" : " of acceptance each");
    return step.models.empty() ? size + ", offered already" : size + ": " + modelsIn(step.models);
}

/// The pressure to which the tank is charged before water enters, in psig.
double precharge(const SizedTank& tank) {
    return tank.application == Application::Shock ? prechargeShare * orZero(tank.line.flowPressure)
                                                  : orZero(tank.line.sopMin);
}

void addReserve(Worksheet& sheet, const QString& caption, Id id, const char* required, const char* offered,
                double need, const std::optional<double>& each, int quantity, const QString& source = {}) {
    if (need <= 0 || !each)
        return;
    const double percent = reserve(quantity * *each, need);
    sheet.step(caption,
               worked(id, {{"n", figure(quantity)}, {offered, operand(*each)}, {required, operand(need)}},
                      Round(percent, 1), "%", percent),
               source);
}

/// The water that the tanks take between the job's pressures, which may be less than their bladders hold.
void addWaterTaken(Worksheet& sheet, const SizedTank& tank, const Model& model, int quantity) {
    SystemConditions conditions = TankSizing::conditionsOf(tank.line);
    const bool shock = tank.application == Application::Shock;
    if (shock) {
        conditions.minimumPressure = precharge(tank);
        conditions.maximumPressure = orZero(tank.line.staticPressure);
    }
    const double need = required(tank).acceptance;
    if (!model.tankVolume || !model.acceptanceVolume || need <= 0 ||
        conditions.minimumPressure >= conditions.maximumPressure ||
        conditions.atmosphericPressure + conditions.minimumPressure <= 0)
        return;
    const bool steel = !shock && TankSizing::isPlainSteel(tank.series());
    const double taken =
        waterTaken(conditions, steel, quantity * *model.tankVolume, quantity * *model.acceptanceVolume);
    Values values = pressuresOf(conditions);
    values.append({{"n", figure(quantity)},
                   {"V_t", operand(*model.tankVolume)},
                   {"A_t", operand(*model.acceptanceVolume)},
                   {"P_f", operand(orZero(tank.line.flowPressure))},
                   {"P_s", operand(orZero(tank.line.staticPressure))},
                   {"V_w", operand(taken)},
                   {"V_acc", operand(need)}});
    sheet.step("Water between the pressures",
               worked(shock   ? Id::ShockWaterTaken
                      : steel ? Id::SteelWaterTaken
                              : Id::WaterTaken,
                      values, taken, "gal"),
               shock ? "What the tanks take from the precharge to the static pressure"
                     : "What the tanks take from the minimum to the maximum pressure",
               liters(taken));
    const double percent = reserve(taken, need);
    sheet.step("Its reserve", worked(Id::TakenReserve, values, Round(percent, 1), "%", percent),
               "Over the required acceptance");
}

void addShockResults(Worksheet& sheet, const SizedTank& tank, double tankVolume, int quantity) {
    const ShockConditions conditions = ShockSizing::conditionsOf(tank.line);
    const double acceptance = shockAcceptanceFactor(conditions.flowPressure, conditions.staticPressure,
                                                    conditions.atmosphericPressure);
    const double area = pipeArea(conditions.bore);
    const double leakLoad = LeakLoad(acceptance, tankVolume, quantity, conditions.length, area) * 100;
    const double delay = pumpStartupDelay(acceptance, tankVolume, quantity, conditions.flowRate);
    sheet.step("Area of the pipe", worked(Id::PipeArea, {{"ID", operand(conditions.bore)}}, area, "in²"), {},
               squareMillimeters(area));
    const Values values{{"AF", operand(acceptance)}, {"V_t", operand(tankVolume)},
                        {"n", figure(quantity)},     {"L", operand(conditions.length)},
                        {"A", operand(area)},        {"Q", operand(conditions.flowRate)}};
    sheet.step("Least connection",
               worked(Id::Connection, {{"n", figure(quantity)}, {"ID", operand(conditions.bore)}},
                      leastConnection(conditions.bore, quantity), "in"),
               "Of each tank, side by side; the catalogue's rule",
               millimeters(leastConnection(conditions.bore, quantity)));
    sheet.step("Leak load", worked(Id::LeakLoad, values, Round(leakLoad, 1), "%", leakLoad),
               "Water that the tanks give back, as a share of the pipe's");
    sheet.step("Pump startup delay", worked(Id::PumpDelay, values, Round(delay, 1), "s", delay),
               "For this long the tanks supply the flow.");
    TankLine stored;
    ShockSizing::setOutcome(stored, ShockSizing::outcomeOf(conditions, tankVolume, quantity));
    const auto percent = [](const std::optional<double>& share) {
        return share ? std::optional(Round(*share * 100, 6)) : std::nullopt;
    };
    compare(sheet, "leak load", percent(tank.line.leakLoad), *percent(stored.leakLoad), "%");
    compare(sheet, "pump startup delay", tank.line.pumpRunTime, *stored.pumpRunTime, "s");
}

} // namespace

void addSearch(Worksheet& sheet, const SizedTank& tank) {
    if (tank.application == Application::Package || tank.series().isEmpty())
        return;
    sheet.section("Search in series " + tank.series());
    std::vector<SearchStep> steps;
    const std::vector<TankOption> options = search(tank, steps);
    if (!tank.sizes)
        sheet.say("Sizes", "As stored with the line, because they could not be computed.");
    for (const SearchStep& step : steps)
        sheet.asked(QString::number(step.quantity) + (step.quantity == 1 ? " tank" : " tanks"),
                    question(tank, step.quantity), answer(tank, step));
    QStringList offered;
    for (const TankOption& option : options)
        offered.append(QString::number(option.quantity) + " × " + QString::fromStdString(option.model));
    sheet.say("Offered", offered.isEmpty() ? QStringLiteral("nothing") : offered.join(", "));
    if (!tank.line.modelNo)
        return;
    const bool among = std::ranges::any_of(options, [&](const TankOption& option) {
        return option.quantity == tank.line.qty &&
               tank.line.modelNo->compare(QString::fromStdString(option.model), Qt::CaseInsensitive) == 0;
    });
    if (!among && tank.model && tank.line.qty)
        sheet.warn("The stored choice, " + QString::number(*tank.line.qty) + " × " + *tank.line.modelNo +
                   ", is none of those that the search offers.");
}

void addChoice(Worksheet& sheet, const SizedTank& tank) {
    sheet.section("Choice");
    if (!tank.line.modelNo)
        return sheet.say("Model", "No model has been chosen yet.");
    const int quantity = tank.line.qty.value_or(0);
    sheet.say("Chosen", quantity > 0 ? QString::number(quantity) + " × " + *tank.line.modelNo
                                     : *tank.line.modelNo + ", without a number of tanks");
    if (!tank.model || quantity <= 0)
        return;
    const Model& model = *tank.model;
    if (tank.application == Application::Package) {
        if (model.makeUpCapacity)
            sheet.say("Make up capacity", figure(*model.makeUpCapacity) + " gpm (" +
                                              litersPerSecond(*model.makeUpCapacity) + ") @ " +
                                              pounds(orZero(model.tankWkPressure)));
        sheet.say("Pressure range",
                  pounds(orZero(model.minSysPressure)) + " to " + pounds(orZero(model.tankWkPressure)));
        sheet.say("Tank volume",
                  gallons(orZero(model.tankVolume)) + " (" + liters(orZero(model.tankVolume)) + ')');
        return;
    }
    addReserve(sheet, "Reserve of volume", Id::VolumeReserve, "V_req", "V_t", required(tank).volume,
               model.tankVolume, quantity);
    if (!tank.conversion)
        addReserve(sheet, "Reserve of acceptance", Id::AcceptanceReserve, "V_acc", "A_t",
                   required(tank).acceptance, model.acceptanceVolume, quantity,
                   tank.application == Application::Shock
                       ? "By what the catalogue's tanks can hold; the search does not ask for it"
                       : "By what the catalogue's tanks can hold, as the search asks");
    if (!tank.conversion)
        addWaterTaken(sheet, tank, model, quantity);
    if (tank.application == Application::Shock && model.tankVolume)
        // A line without flow or length, or with a pipe of another catalogue, still gets the rest of its
        // sheet.
        sheet.warnOfFault("Leak load and pump startup delay cannot be computed",
                          [&] { addShockResults(sheet, tank, *model.tankVolume, quantity); });
}

void addSite(Worksheet& sheet, const SizedTank& tank) {
    if (!tank.application)
        return; // nobody knows what the tank is for
    sheet.section("On site");
    if (tank.application == Application::Package) {
        const double pressure = orZero(tank.line.sopMax);
        const bool held = tank.model && pressure >= orZero(tank.model->minSysPressure) &&
                          pressure <= orZero(tank.model->tankWkPressure);
        sheet.say("System pressure",
                  pounds(pressure) + (held ? ": set the pressure switch of the package to hold it." : "."));
        return;
    }
    const QString charge = pounds(precharge(tank));
    if (TankSizing::isPlainSteel(tank.series())) {
        sheet.say("Precharge",
                  "None: the tank is plain steel and starts with air at atmospheric pressure." +
                      QString(tank.conversion
                                  ? " The size above is for one that is charged to " + charge + '.'
                                  : QString()));
        sheet.say("Fill valve",
                  "Set it to hold " + charge +
                      " at the tank while the system is cold; the air cushion follows from it.");
        return;
    }
    if (precharge(tank) < 0)
        return sheet.say("Precharge to set", "None: " + charge + " is below the pressure of the atmosphere.");
    sheet.say("Precharge to set",
              charge + ", measured at the tank with no water in it, before it is filled.");
    if (tank.model && tank.model->precharge)
        sheet.say("Factory precharge",
                  figure(*tank.model->precharge) + (*tank.model->precharge == precharge(tank)
                                                        ? " psig, as it is to be; check it."
                                                        : " psig; change it to the above."));
    switch (*tank.application) {
    case Application::Shock:
        sheet.say("Why",
                  "Nine tenths of the flow pressure: the tank holds some water while the pipe flows, so "
                  "that its bladder is never against the connection.");
        break;
    case Application::Hydropneumatic:
        sheet.say("Pump switch", "It must start the pump at " + charge +
                                     " at the tank, the precharge: lower, and the tank is empty before the "
                                     "pump starts; higher, and part of the drawdown is lost.");
        break;
    case Application::Thermal:
        sheet.say("Supply",
                  "Its pressure reducing valve must hold " + charge +
                      " at the tank, the precharge: lower, and the pressure rises to the precharge before "
                      "the tank takes any water; higher, and cold water fills what the expansion needs.");
        break;
    case Application::Expansion:
    case Application::Package:
        sheet.say("Fill valve",
                  "It must hold " + charge +
                      " at the tank, the precharge: lower, and the system loses its pressure when "
                      "it cools; higher, and cold water fills what the expansion needs.");
        break;
    }
}

std::optional<PressureCurve> curveOf(const SizedTank& tank) {
    if (!tank.model || tank.application == Application::Package || tank.conversion || precharge(tank) < 0)
        return std::nullopt;
    const bool shock = tank.application == Application::Shock;
    const bool steel = TankSizing::isPlainSteel(tank.series());
    const int quantity = tank.line.qty.value_or(0);
    std::vector<PressureCurve::Mark> marks;
    if (shock)
        marks = {{orZero(tank.line.flowPressure), "flow pressure"},
                 {orZero(tank.line.shockPressure), "shock pressure"}};
    const PressureCurve curve{.tankVolume = quantity * orZero(tank.model->tankVolume),
                              .tankAcceptance = quantity * orZero(tank.model->acceptanceVolume),
                              .atmosphericPressure = orZero(tank.line.atmPressure),
                              .emptyPressure = steel ? 0 : precharge(tank),
                              .minimumPressure = precharge(tank),
                              .maximumPressure = orZero(shock ? tank.line.staticPressure : tank.line.sopMax),
                              .workingPressure = orZero(tank.model->tankWkPressure),
                              .requiredAcceptance = required(tank).acceptance,
                              .minimumName = shock ? "precharge" : "minimum",
                              .maximumName = shock ? "static pressure" : "maximum",
                              .marks = std::move(marks)};
    return canBeDrawn(curve) ? std::optional(curve) : std::nullopt;
}
