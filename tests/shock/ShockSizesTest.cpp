#include "shock/ShockSizes.h"
#include "core/base/Fault.h"
#include "sizing/ModelSearch.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

const ShockConditions job{2.067, 200, 100, 40, 60, 225, 14.7};

/// Equal to the last of twelve significant digits.
void expectDigits(double value, double printed) {
    EXPECT_NEAR(value / printed, 1, 5e-12) << printed;
}

} // namespace

TEST(ShockSizes, OfAHighPressureJob) {
    expectDigits(shockAcceptanceFactor(40, 60, 14.7), .321285140562);
    const double factor = highPressureFactor(shockPressureBand(225), staticPressureBand(60));
    EXPECT_DOUBLE_EQ(factor, 4937.1275);
    const ShockSizes sizes = computeShockSizes(job, factor);
    expectDigits(sizes.waterVelocity, 9.57287426603);
    expectDigits(sizes.kineticEnergy, 2.13632744657);
    expectDigits(sizes.totalKineticEnergy, 427.265489314);
    expectDigits(sizes.requiredAcceptance, .647329010659);
    expectDigits(sizes.requiredVolume, 2.01481154567);
}

TEST(ShockSizes, RaiseThePressuresToTheirBands) {
    const std::pair<double, double> shock[] = {{1, 100},   {100, 100},   {100.1, 110},   {110, 110},
                                               {179, 180}, {180, 180},   {180.5, 180.5}, {185, 185},
                                               {190, 190}, {190.1, 200}, {191, 200},     {200, 200},
                                               {201, 201}, {225, 225},   {250, 250},     {251, 251}};
    for (const auto& [pressure, band] : shock)
        EXPECT_EQ(shockPressureBand(pressure), band) << pressure;
    const std::pair<double, double> still[] = {{0, 20},  {20, 20},   {20.1, 30}, {25, 30},
                                               {30, 30}, {109, 110}, {110, 110}, {110.1, 110.1}};
    for (const auto& [pressure, band] : still)
        EXPECT_EQ(staticPressureBand(pressure), band) << pressure;
    EXPECT_TRUE(tableHasPressureFactor(200, 110));
    EXPECT_TRUE(tableHasPressureFactor(185, 20)) << "looked up, though no row has it";
    EXPECT_FALSE(tableHasPressureFactor(201, 110));
    EXPECT_FALSE(tableHasPressureFactor(200, 110.1));
}

TEST(ShockSizes, ObjectToWhatCannotBeRight) {
    EXPECT_FALSE(shockObjection(20, .05, 250)) << "the limits themselves pass";
    EXPECT_TRUE(shockObjection(20.0001, .01, 300)->starts_with("Water velocity"));
    EXPECT_TRUE(shockObjection(20, .0499, 300)->starts_with("Tank is accepting"));
    EXPECT_TRUE(shockObjection(1, -1, 100)->starts_with("Tank is accepting"));
    EXPECT_EQ(*shockObjection(20, .05, 251), "Shock pressure exceeds normal working pressure of standard "
                                             "models.  Custom tank may be available.");
}

TEST(ShockSizes, FailInsteadOfDividingByZero) {
    EXPECT_THROW(computeShockSizes(job, 0), Fault);
    EXPECT_THROW(shockAcceptanceFactor(40, -14.7, 14.7), Fault);
    ShockConditions even = job; // nine tenths of the flow pressure equals the static pressure
    even.flowPressure = 50;
    even.staticPressure = 45;
    EXPECT_EQ(shockAcceptanceFactor(50, 45, 14.7), 0);
    EXPECT_THROW(computeShockSizes(even, 1000), Fault);
    EXPECT_THROW(LeakLoad(.3, 10, 1, 0, 3), Fault);
    EXPECT_THROW(pumpStartupDelay(.3, 10, 1, 0), Fault);
}

TEST(ShockSizes, GiveLeakLoadAndDelay) {
    const double area = pipeArea(2);
    EXPECT_DOUBLE_EQ(area, 22.0 / 7);
    EXPECT_DOUBLE_EQ(LeakLoad(.25, 20, 2, 100, area), .6125);
    EXPECT_DOUBLE_EQ(pumpStartupDelay(.25, 20, 2, 50), 12);
}

TEST(ShockSearch, GoesThroughTheQuantities) {
    // A size for each quantity that finds a new one; the third repetition ends the search.
    const double sizes[] = {0, 90, 90, 40, 40, 30, 30};
    const ModelSource source{[&](int quantity) { return std::optional(sizes[quantity]); },
                             [](double size) {
                                 return std::vector<TankOption>{{0, "m", size, 0, 0}};
                             }};
    std::vector<int> quantities;
    for (const TankOption& option : searchShockModels(source))
        quantities.push_back(option.quantity);
    EXPECT_EQ(quantities, (std::vector<int>{1, 3, 5}));
    const ModelSource nothing{[](int) { return std::optional<double>(); },
                              [](double) { return std::vector<TankOption>{}; }};
    EXPECT_TRUE(searchShockModels(nothing).empty());
    const ModelSource falling{[](int quantity) { return std::optional(100.0 / quantity); }, source.models};
    EXPECT_EQ(searchShockModels(falling).size(), 6U) << "never more than six tanks in parallel";
}
