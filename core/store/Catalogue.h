#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace Catalogue {

/// Whether the catalogue has a pipe with this U.S. or metric key. The key goes into the statement as it is,
/// so text with an apostrophe throws DatabaseFault.
bool hasPipe(const QString& pipeIndex);
bool hasMetricPipe(const QString& metricIndex);

/// The U.S. key of a pipe for its metric key; empty when the catalogue has none. Throws DatabaseFault.
QString pipeIndexOf(const QString& metricIndex);

/// The metric key of a pipe for its U.S. key; empty when the catalogue has none. Throws DatabaseFault.
QString metricIndexOf(const QString& pipeIndex);

/// The bore in inches of a pipe with this U.S. key; nothing if the catalogue has none. Throws DatabaseFault.
std::optional<double> findBore(const QString& pipeIndex);
/// The same; 0 if the catalogue has none.
double pipeBore(const QString& pipeIndex);

/// The transverse area of a pipe with this U.S. key in square inches. Throws DatabaseFault, also if the
/// catalogue has none.
double transverseArea(const QString& pipeIndex);

/// A pipe size with its keys.
struct PipeSize {
    QString pipeIndex;
    QString metricIndex;
    double bore; // in
};
/// The pipes of a schedule: "40", "80" or "Cu". Throws DatabaseFault.
std::vector<PipeSize> pipesOf(const QString& schedule);

/// The factor in the pressure table for two bands in psig; 0 if the table has no such row. Throws
/// DatabaseFault.
double readPressureFactor(double shockBand, double staticBand);

/// The expansion of water, and the row of the table that it comes from.
struct Expansion {
    double factor = 0;
    double row = 0; // °F
};
/// The expansion of water up to a maximum temperature in °F, from the column for a minimum temperature;
/// nothing above the last row. Throws DatabaseFault.
std::optional<Expansion> readExpansion(int column, double maximumTemperature);

/// Inches as a whole number and a fraction with the inch mark, such as 1-1/4"; values below one stay decimal
/// (.5"). Throws DatabaseFault.
QString FractionConversion(double value);

/// What the catalogue says of a drawing.
struct DrawingInfo {
    double width;
    double height;  // to the same scale
    QString ending; // of its file's name
};
/// A drawing by its name, which goes into the statement as it is. Nothing if the catalogue has none. Throws
/// DatabaseFault.
std::optional<DrawingInfo> findDrawing(const QString& drawing);

} // namespace Catalogue
