#include "estimates/SystemFluid.h"

#include "core/base/Fault.h"
#include "estimates/MetricConversions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

namespace {

double itemized(double bore, double length, double equipment) {
    ItemizedFluid fluid;
    fluid.addRun(bore, length);
    fluid.addEquipment(equipment);
    return fluid.total();
}

double boiler(int output, int radiation, int piping) {
    return boilerFluid(std::int16_t(output), {radiation, piping});
}

} // namespace

TEST(SystemFluid, OfKnownCases) {
    const std::pair<double, double> cases[] = {
        {buildingFluid(20, 100, 50, 3), 8},
        {buildingFluid(50, 20, 100, 3), 8},
        {buildingFluid(20, 20, 10, 100), 69},
        {buildingFluid(0, 0, 0, 100), 0},
        {buildingFluid(1, 1, .25, 625), 22},     // 21.5
        {buildingFluid(1.25, 2.5, 1, 1000), 64}, // 64.5
        {boiler(1000, 0, 0), 336},
        {boiler(2000, 1, 1), 672},
        {boiler(32767, 0, 0), 11010},
        {boiler(1000, 2, 1), 414},
        {boiler(1000, 3, 0), 414},
        {boiler(1000, 4, 0), 566},
        {boiler(1000, 5, 1), 673},
        {boiler(750, 2, 0), 310}, // 310.5
        {boiler(250, 2, 0), 104},
        {chillerFluid(50.5), 404},
        {chillerFluid(.3125), 2},
        {chillerFluid(.4375), 4},
        {componentFluid(100, 0, 0, 3), 100},
        {componentFluid(100, 50, 100, 40.539), 167},
        {componentFluid(2.25, .25, 0, 3), 2},
        {componentFluid(3.25, .25, 0, 3), 4},
        {ItemizedFluid().total(), 0},
        {itemized(2, 100, 80), 96},
        {itemized(2, 100, 0), 16},
        {itemized(2, 0, 2.5), 2},
        {itemized(0, 100, 3.5), 4},
        {hotWaterFluid(50, 1, 100), 54},
        {hotWaterFluid(50.5, 1, 0), 50},
        {hotWaterFluid(51.5, 0, 100), 52},
        {Drawdown(25, 1.5), 38},
        {Drawdown(22.5, 1), 22},
        {Drawdown(1000, 10), 10000},
    };
    for (const auto& [found, expected] : cases)
        EXPECT_EQ(found, expected) << "case " << &found - &cases[0].first;
}

TEST(SystemFluid, ItemizedRunOfAnUnknownPipeKeepsTheBoreBefore) {
    ItemizedFluid fluid;
    fluid.addRun(std::nullopt, 1000); // no run before it, so no bore
    fluid.addRun(2, 1000);            // 163.25 gal
    fluid.addRun(std::nullopt, 2000);
    EXPECT_EQ(fluid.total(), 490); // 489.76
}

TEST(MetricConversions, RoundToOneDecimalHalfToEven) {
    using namespace MetricConversions;
    const std::pair<double, double> cases[] = {
        {kPaToPSI(690), 100.1},
        {kPaToPSI(101.3), 14.7},
        {kPaToPSI(345), 50},
        {kPaToPSI(15.51375), 2.2},
        {kPaToPSI(5.17125), .8},
        {LitersToGallons(100), 26.4},
        {LitersToGallons(1000), 264.2},
        {LitersToGallons(1250), 330.2},
        {LitersToGallons(3750), 990.8},
        {MetersToFeet(10), 32.8},
        {MetersToFeet(312.5), 1025.2},
        {MetersToFeet(937.5), 3075.8},
        {MetricTonsToTons(100), 110.2},
        {MetricTonsToTons(2500), 2755.8},
        {MetricTonsToTons(7500), 8267.2},
        {CelsiusToFahrenHeit(100), 212},
        {CelsiusToFahrenHeit(1.25), 34.2},
        {CelsiusToFahrenHeit(3.75), 38.8},
        {CelsiusToFahrenHeit(10), 50},
        {CelsiusToFahrenHeit(93.3), 199.9},
        {CelsiusToFahrenHeit(0), 32},
    };
    for (const auto& [found, expected] : cases)
        EXPECT_EQ(found, expected) << "case " << &found - &cases[0].first;
}

TEST(SystemFluid, FailsBeyondADouble) {
    const auto faultOf = [](const std::function<double()>& estimate) {
        try {
            estimate();
        } catch (const Fault& fault) {
            return fault.number();
        }
        return 0;
    };
    EXPECT_EQ(faultOf([] { return boiler(0, 0, 0); }), Fault::DivisionByZero);
    EXPECT_EQ(faultOf([] { return buildingFluid(1e200, 1e200, 1, 1e200); }), Fault::Overflow);
    EXPECT_EQ(faultOf([] { return componentFluid(1e308, 1e308, 1, 1); }), Fault::Overflow);
    EXPECT_EQ(faultOf([] { return itemized(1e200, 1, 0); }), Fault::Overflow);
    EXPECT_EQ(faultOf([] { return hotWaterFluid(1, 1e200, 1); }), Fault::Overflow);
    EXPECT_EQ(faultOf([] { return chillerFluid(1e308); }), Fault::Overflow);
    EXPECT_EQ(faultOf([] { return Drawdown(1e200, 1e200); }), Fault::Overflow);
    EXPECT_EQ(faultOf([] { return MetricConversions::MetersToFeet(1e308); }), Fault::Overflow);
}

namespace {

__extension__ using Whole = __int128;

/// An exact number of gallons to check the doubles against. Entries are whole tenths, hundredths or
/// thousandths, so nothing is lost.
struct Exact {
    Whole numerator;
    Whole denominator;

    bool isTie() const { return 2 * (numerator % denominator) == denominator; }
    double nearest() const {
        return double(Whole(numerator / denominator) + Whole(2 * (numerator % denominator) > denominator));
    }
};

} // namespace

TEST(SystemFluid, AgreesWithExactArithmetic) {
    std::mt19937 random(11);
    const auto draw = [&](int limit) { return Whole(std::uniform_int_distribution(1, limit)(random)); };
    const Whole factors[6][2] = {{336, 336}, {336, 336}, {414, 414}, {414, 414}, {566, 673}, {566, 673}};
    int held = 0;
    for (int i = 0; i < 1000; ++i) {
        const Whole a = draw(9999), b = draw(9999), c = draw(9999); // tenths
        const Whole area = draw(1400000), bore = draw(12000);       // thousandths
        const int radiation = int(draw(6)) - 1, piping = int(draw(2)) - 1;
        const Whole two = a + b + c - std::min({a, b, c});
        const auto of = [](Whole number, double unit) { return double(number) / unit; };
        ItemizedFluid items;
        items.addRun(of(bore, 1000), of(a, 10));
        items.addRun(of(bore, 1000), of(b, 10));
        items.addEquipment(of(c, 10));
        const std::pair<double, Exact> estimates[] = {
            {buildingFluid(of(a, 10), of(b, 10), of(c, 10), of(area, 1000)),
             {two * 4 * area * 43, 100000000}},
            {boiler(int(a), radiation, piping), {a * factors[radiation][piping], 1000}},
            {chillerFluid(of(a, 100)), {a * 8, 100}},
            {componentFluid(of(a, 10), of(b, 10), of(c, 10), of(area, 1000)),
             {area * c * 43 + (a + b) * 10000000, 100000000}},
            {items.total(), {bore * bore * (a + b) * 22 * 748 + c * 403200000000, 4032000000000}},
            {hotWaterFluid(of(a, 10), of(bore, 1000), of(b, 10)),
             {bore * bore * b * 314286 * 748 + a * 5760000000000000, 57600000000000000}},
            {Drawdown(of(a, 10), of(b, 100)), {a * b, 1000}},
        };
        for (const auto& [found, exact] : estimates) {
            if (exact.isTie()) // a tie in decimals need not be one in doubles
                continue;
            EXPECT_EQ(found, exact.nearest()) << "estimate " << i;
            ++held;
        }
    }
    EXPECT_GT(held, 6500);
}
