#pragma once

/// Converts metric values to U.S. units, rounded to one decimal, halves to even: the program computes and
/// stores in U.S. units only, and its screens show no more than one decimal. All throw Fault 6 if the result
/// overflows a double.
namespace MetricConversions {

/// Kilopascals to psi.
double kPaToPSI(double kilopascals);
/// Litres to U.S. gallons, and litres per minute to gallons per minute.
double LitersToGallons(double liters);
double MetersToFeet(double meters);
/// Metric tons to short tons.
double MetricTonsToTons(double metricTons);
double CelsiusToFahrenHeit(double celsius);

} // namespace MetricConversions
