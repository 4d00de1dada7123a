#include "sizing/RequiredSizes.h"
#include "core/base/Fault.h"
#include "sizing/FluidLimits.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace {

const SystemConditions glycolJob{50, 200, 12, 30, 14.7, 1000};

std::array<double, 4> limitsOf(const FluidLimits& row) {
    return {row.limits.minimumLow, row.limits.minimumHigh, row.limits.maximumLow, row.limits.maximumHigh};
}

} // namespace

TEST(RequiredSizes, OfEachGlycol) {
    const struct {
        std::string_view fluid;
        double limits[4]; // of the minimum temperature, then of the maximum
        double at60;
        double at180;
        double expansion;
    } rows[] = {
        {"10% Ethylene Glycol", {30, 100, 90, 240}, 1.003744, 1.032808, .02896},
        {"20% Ethylene Glycol", {20, 100, 90, 240}, 1.00538, 1.035884, .03034},
        {"30% Ethylene Glycol", {10, 100, 90, 240}, 1.007164, 1.039204, .03181},
        {"40% Ethylene Glycol", {0, 100, 90, 250}, 1.008974, 1.042634, .03336},
        {"50% Ethylene Glycol", {-20, 100, 90, 250}, 1.0121312, 1.0474736, .03492},
        {"10% Propylene Glycol", {30, 100, 90, 240}, 1.00387, 1.034434, .03045},
        {"20% Propylene Glycol", {20, 100, 90, 240}, 1.006433, 1.040723, .03407},
        {"30% Propylene Glycol", {10, 100, 90, 240}, 1.009081, 1.047067, .03764},
        {"40% Propylene Glycol", {0, 100, 90, 250}, 1.012152, 1.05348, .04083},
        {"50% Propylene Glycol", {-20, 100, 90, 250}, 1.016614, 1.061746, .04439},
    };
    ASSERT_EQ(fluidLimits.size(), 1 + std::size(rows));
    EXPECT_EQ(fluidLimits[0].fluid, "Water");
    EXPECT_EQ(limitsOf(fluidLimits[0]), (std::array<double, 4>{40, 100, 90, 240}));
    std::size_t place = 0;
    for (const auto& row : rows) {
        EXPECT_EQ(fluidLimits[++place].fluid, row.fluid);
        EXPECT_EQ(limitsOf(fluidLimits[place]), std::to_array(row.limits)) << row.fluid;
        EXPECT_DOUBLE_EQ(SpecVol(row.fluid, 60).value(), row.at60) << row.fluid;
        EXPECT_DOUBLE_EQ(SpecVol(row.fluid, 180).value(), row.at180) << row.fluid;
        EXPECT_EQ(fluidExpansionFactor(row.fluid, 60, 180), row.expansion) << row.fluid;
    }
}

TEST(RequiredSizes, GlycolJob) {
    EXPECT_DOUBLE_EQ(*SpecVol("30% Propylene Glycol", 50), 1.0070725);
    EXPECT_DOUBLE_EQ(*SpecVol("30% Propylene Glycol", 200), 1.05589);
    const double e = fluidExpansionFactor("30% Propylene Glycol", 50, 200);
    EXPECT_EQ(e, .04847);
    const double bladder = acceptanceFactor(glycolJob, false);
    EXPECT_EQ(bladder, .4027);
    const RequiredSizes sizes = expansionTankSizes(glycolJob, e, bladder);
    EXPECT_EQ(sizes.acceptance, 48.47);
    EXPECT_EQ(sizes.volume, 120.3626);
    const double plain = acceptanceFactor(glycolJob, true);
    EXPECT_EQ(plain, .2217);
    EXPECT_EQ(expansionTankSizes(glycolJob, e, plain).volume, 218.6288);
    EXPECT_EQ(expansionTankSizes(glycolJob, e, plain).acceptance, 48.47);
}

TEST(RequiredSizes, Drawdown) {
    const SystemConditions job{0, 1, 40, 60, 14.7, 50};
    EXPECT_EQ(acceptanceFactor(job, false), .2677);
    EXPECT_EQ(hydropneumaticTankSizes(job, .2677).acceptance, 50);
    EXPECT_EQ(hydropneumaticTankSizes(job, .2677).volume, 186.7762);
}

TEST(RequiredSizes, Conversion) {
    const RequiredSizes sizes = convertedTankSizes({0, 0, 20, 0, 14.7, 500});
    EXPECT_EQ(sizes.volume, 212);
    EXPECT_EQ(sizes.acceptance, 212);
}

TEST(RequiredSizes, ColumnOfTheWaterTable) {
    const std::pair<double, int> cases[] = {{-20, 40},  {40, 40}, {40.5, 45},  {45, 45},
                                            {45.1, 50}, {95, 95}, {95.1, 100}, {400, 100}};
    for (const auto& [temperature, column] : cases)
        EXPECT_EQ(expansionColumn(temperature), column) << temperature;
}

TEST(RequiredSizes, HaveLowerLimits) {
    const RequiredSizes none = expansionTankSizes(glycolJob, 0, .4);
    EXPECT_EQ(none.acceptance, .1);
    EXPECT_EQ(none.volume, .1);
    SystemConditions small = glycolJob;
    small.volume = 1;
    const RequiredSizes sizes = expansionTankSizes(small, .04, .05);
    EXPECT_EQ(sizes.acceptance, .1);
    EXPECT_EQ(sizes.volume, .8);
    const RequiredSizes drawdown = hydropneumaticTankSizes({0, 1, 40, 60, 14.7, .01}, .2677);
    EXPECT_EQ(drawdown.acceptance, .1);
    EXPECT_EQ(drawdown.volume, .1);
    const RequiredSizes converted = convertedTankSizes({0, 0, 20, 0, 14.7, 1}); // .42 rounds to 0
    EXPECT_EQ(converted.acceptance, .1);
    EXPECT_EQ(converted.volume, .1);
}

TEST(RequiredSizes, FailWhenThePressuresAreTooClose) {
    const SystemConditions close{40, 200, 100, 100.001, 14.7, 1000};
    EXPECT_EQ(acceptanceFactor(close, false), 0);
    EXPECT_THROW(expansionTankSizes(close, .04, acceptanceFactor(close, false)), Fault);
    EXPECT_THROW(hydropneumaticTankSizes(close, 0), Fault);
    EXPECT_THROW(acceptanceFactor({}, false), Fault);
    EXPECT_THROW(acceptanceFactor({}, true), Fault);
    EXPECT_THROW(convertedTankSizes({}), Fault);
}

TEST(RequiredSizes, UnknownFluidGrowsByHalf) {
    EXPECT_FALSE(SpecVol("Water", 50));
    EXPECT_EQ(fluidExpansionFactor("Brine", 50, 200), .5);
}

TEST(RequiredSizes, NeverFallWhenTheSystemGrowsOrGetsHotter) {
    std::mt19937 random(11);
    const auto between = [&random](double low, double high) {
        return std::uniform_real_distribution(low, high)(random);
    };
    for (int i = 0; i < 5000; ++i) {
        const FluidLimits& limits = fluidLimits[1 + static_cast<std::size_t>(i) % 10];
        SystemConditions job;
        job.minimumTemperature = between(0, 90);
        job.maximumTemperature = between(job.minimumTemperature + 1, 240);
        job.minimumPressure = between(4, 100);
        job.maximumPressure = job.minimumPressure + between(2, 100);
        job.atmosphericPressure = between(10, 15);
        job.volume = between(1, 50000);
        const bool plain = i % 3 == 0;
        const auto volumeOf = [&](const SystemConditions& c) {
            return expansionTankSizes(
                       c, fluidExpansionFactor(limits.fluid, c.minimumTemperature, c.maximumTemperature),
                       acceptanceFactor(c, plain))
                .volume;
        };
        SystemConditions larger = job;
        larger.volume *= between(1, 3);
        EXPECT_GE(volumeOf(larger), volumeOf(job)) << limits.fluid;
        SystemConditions hotter = job;
        hotter.maximumTemperature += between(0, 20);
        EXPECT_GE(volumeOf(hotter), volumeOf(job)) << limits.fluid << ' ' << job.maximumTemperature;
    }
}
