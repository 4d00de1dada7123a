#pragma once

/// Metric values in U.S. units, rounded to one decimal, halves to the even digit: the program computes and
/// stores in U.S. units only, and the decimal is as much as its screens show. All throw Fault 6 for a result
/// that no double holds.
namespace MetricConversions {

/// Kilopascals in psi.
double kPaToPSI(double kilopascals);
/// Litres in U.S. gallons, and litres a minute in gallons a minute.
double LitersToGallons(double liters);
double MetersToFeet(double meters);
/// Metric tons in short tons.
double MetricTonsToTons(double metricTons);
double CelsiusToFahrenHeit(double celsius);

} // namespace MetricConversions
