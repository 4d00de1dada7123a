#pragma once

#include <QList>
#include <QString>

#include <optional>
#include <span>
#include <utility>

/// The formulas of the sizing, as the calculation sheet and the manual show them, written as
/// documents/report/Formula reads them.
namespace Formulas {

enum class Id : std::uint8_t {
    SpecificVolumeCold,
    SpecificVolumeHot,
    FluidFactor,
    AcceptanceFactor,
    SteelAcceptanceFactor,
    ExpansionAcceptance,
    ExpansionVolume,
    Drawdown,
    DrawdownVolume,
    SteelRatio,
    ConvertedVolume,
    Velocity,
    KineticEnergy,
    TotalEnergy,
    PressureFactor,
    ShockAcceptanceFactor,
    ShockAcceptance,
    ShockVolume,
    Connection,
    PipeArea,
    LeakLoad,
    PumpDelay,
    VolumeReserve,
    AcceptanceReserve,
    WaterTaken,
    SteelWaterTaken,
    ShockWaterTaken,
    TakenReserve,
};

struct Row {
    Id id;
    const char* name; // of its picture in the manual
    const char* text;
};
/// All formulas, in the order of their numbers.
std::span<const Row> all();
/// The formula with that number, as Row::text.
QString textOf(Id id);

/// The names in a formula and what they stand for.
using Values = QList<std::pair<QString, QString>>;

/// A number in a formula: as stored if it has at most 12 digits, otherwise rounded to 12.
QString figure(double value);
/// The same in brackets if it is negative.
QString operand(double value);

/// A formula worked out, one equal sign after the other: symbols, numbers, the number before it is rounded if
/// given, result and unit.
QString worked(Id id, const Values& values, double result, const QString& unit,
               std::optional<double> unrounded = std::nullopt);
/// A given quantity: "V = 1000 gal".
QString given(const QString& symbol, double value, const QString& unit);

} // namespace Formulas
