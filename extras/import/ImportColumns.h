#pragma once

#include <QString>

#include <vector>

/// The columns and units that a text with conditions may name.
namespace ImportColumns {

/// What the values of a column are; each kind has its units.
enum class Quantity { Text, Volume, Temperature, GaugePressure, AbsolutePressure, Length, Flow };

/// A column, under the name of its box, or "Tag", "Application" or "Series".
struct Column {
    const char* box;
    const char* name;   // as headings and messages call it
    const char* others; // what else a heading may say, in lower case, between bars
    Quantity quantity;
};

/// A unit: its value is `toMetric` times that of the program's own metric unit, which `convert` takes to the
/// U.S. one. A U.S. unit has no conversion.
struct Unit {
    Quantity quantity;
    const char* names; // in lower case, between bars
    double toMetric = 1;
    double (*convert)(double) = nullptr;
};

/// All columns, in the order of the sample.
const std::vector<Column>& all();
const Column* named(const QString& box);

/// A heading as read: its column, and its unit, which is null for U.S. units. Or what is wrong with it.
struct Heading {
    const Column* column = nullptr;
    const Unit* unit = nullptr;
    QString problem{};
};
Heading readHeading(const QString& text);

/// A heading for a sample, such as "Volume [gal]".
QString headingOf(const Column& column);

} // namespace ImportColumns
