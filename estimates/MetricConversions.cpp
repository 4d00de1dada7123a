#include "estimates/MetricConversions.h"

#include "core/base/Numbers.h"
#include "estimates/Finite.h"

namespace MetricConversions {

namespace {

// The trade's rounded factors, with the exact values beside them.
constexpr double kilopascalsInPsi = 6.895;        // exactly 6.894757...
constexpr double gallonsInLiter = .2642;          // 231 in3 per gallon give .264172...
constexpr double feetInMeter = 3.2808;            // .3048 m per foot give 3.280839...
constexpr double tonsInMetricTon = 1.1023;        // 2,000 lb per short ton give 1.102311...
constexpr double fahrenheitInCelsius = 9.0 / 5.0; // degrees
constexpr double fahrenheitAtZeroCelsius = 32;

double oneDecimal(double value) {
    return Round(requireFinite(value), 1);
}

} // namespace

double kPaToPSI(double kilopascals) {
    return oneDecimal(kilopascals / kilopascalsInPsi);
}

double LitersToGallons(double liters) {
    return oneDecimal(liters * gallonsInLiter);
}

double MetersToFeet(double meters) {
    return oneDecimal(meters * feetInMeter);
}

double MetricTonsToTons(double metricTons) {
    return oneDecimal(metricTons * tonsInMetricTon);
}

double CelsiusToFahrenHeit(double celsius) {
    return oneDecimal(fahrenheitInCelsius * celsius + fahrenheitAtZeroCelsius);
}

} // namespace MetricConversions
