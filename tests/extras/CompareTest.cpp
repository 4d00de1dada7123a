// The comparison of models, against the search that the screens make.

#include "extras/compare/Comparison.h"
#include "shock/ShockSizing.h"
#include "sizing/CatalogueSearch.h"
#include "sizing/FluidLimits.h"
#include "sizing/TankSizing.h"
#include "tests/support/Rounds.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <map>
#include <sstream>

using Record::orZero;

namespace {

/// A random value in tenths; a failure is brought down towards the lowest one.
double tenths(int low, int high) {
    return *rc::gen::inRange(10 * low, 10 * high + 1) / 10.0;
}

TankLine randomTank() {
    TankLine line;
    line.sysFluidType = QString::fromUtf8(fluidLimits[*rc::gen::inRange<std::size_t>(0, 11)].fluid);
    line.atmPressure = tenths(8, 15);
    line.sotMin = *rc::gen::inRange(40, 100);
    line.sotMax = *rc::gen::inRange(int(*line.sotMin) + 1, 241);
    line.sopMin = tenths(0, 80);
    line.sopMax = *line.sopMin + tenths(1, 100);
    line.totSysVolume = std::exp(tenths(0, 10));
    return line;
}

ShockConditions randomPipe() {
    const double flow = tenths(10, 50);
    const double still = std::max(20.0, flow + tenths(1, 50));
    double shock = still + tenths(20, 150);
    if (shock > 180 && shock <= 190) // which the table does not cover
        shock += 10;
    return {.bore = *rc::gen::element(.622, 1.049, 2.067, 4.026, 7.981),
            .length = tenths(20, 2000),
            .flowRate = tenths(5, 400),
            .flowPressure = flow,
            .staticPressure = still,
            .shockPressure = shock,
            .atmosphericPressure = 14.7};
}

std::vector<std::string> texts(const std::vector<TankOption>& options) {
    std::vector<std::string> found;
    found.reserve(options.size());
    for (const TankOption& option : options)
        found.push_back(std::to_string(option.quantity) + " x " + option.model);
    return found;
}

/// What a comparison offers, by series.
std::map<QString, std::vector<std::string>> offers(const std::vector<Candidate>& candidates) {
    std::map<QString, std::vector<std::string>> found;
    for (const Candidate& candidate : candidates) {
        auto& series = found[candidate.series];
        EXPECT_EQ(candidate.model == nullptr, candidate.objection == "No model is large enough");
        if (candidate.isOffered())
            series.push_back(std::to_string(candidate.quantity) + " x " +
                             candidate.line.modelNo.value_or("").toStdString());
    }
    return found;
}

} // namespace

TEST(Comparison, OffersWhatTheScreensOffer) {
    const TemporaryHome home;
    home.installData();
    rc::detail::TestParams rounds;
    rounds.seed = 47;
    rounds.maxSuccess = roundCount(100, 1000);
    std::size_t offered = 0;
    for (const Application application :
         {Application::Expansion, Application::Thermal, Application::Hydropneumatic, Application::Shock}) {
        const Comparison comparison(application);
        const auto sameAsScreens = [&] {
            const bool shock = application == Application::Shock;
            ShockConditions pipe;
            TankLine line;
            if (shock) {
                std::optional<std::string_view> objection;
                pipe = randomPipe();
                line = ShockSizing::lineOf(pipe, "pipe", ShockSizing::sizesOf(pipe, objection));
            } else {
                line = randomTank();
            }
            for (const auto& [series, models] : offers(comparison.candidatesFor(line, pipe.bore))) {
                std::vector<TankOption> expected;
                if (shock) {
                    expected = findShockModels(series, orZero(line.requiredVolume), pipe.bore);
                } else {
                    const RequiredSizes sizes = TankSizing::sizesOf(line, application, series);
                    expected = findModels(series, sizes.volume, sizes.acceptance);
                }
                RC_LOG() << "series " << series.toStdString() << '\n';
                RC_ASSERT(models == texts(expected));
                offered += expected.size();
            }
        };
        const auto result = rc::detail::checkTestable(sameAsScreens, rc::detail::TestMetadata(), rounds);
        std::ostringstream report;
        rc::detail::printResultMessage(result, report);
        EXPECT_TRUE(result.is<rc::detail::SuccessResult>()) << report.str();
    }
    EXPECT_GT(offered, 2000);
}

TEST(Comparison, SaysWhyAQuantityIsNotOffered) {
    const TemporaryHome home;
    home.installData();
    TankLine line;
    line.sysFluidType = "Water";
    line.atmPressure = 14.7;
    line.sopMin = 40;
    line.sopMax = 60;
    line.totSysVolume = 100;
    QStringList found;
    for (const Candidate& candidate : Comparison(Application::Hydropneumatic).candidatesFor(line))
        found.append(QString("%1 %2 %3 %4 %5")
                         .arg(candidate.series)
                         .arg(candidate.quantity)
                         .arg(candidate.line.modelNo.value_or("-"))
                         .arg(candidate.volumeReserve, 0, 'f', 1)
                         .arg(candidate.objection));
    EXPECT_EQ(found.join('\n').toStdString(),
              "JW 1 JW 1500 6.1 \n"
              "JW 2 JW 750 6.1 \n"
              "JW 3 JW 500 6.1 \n"
              "JW 4 JW 450 27.3 The search looks at no more than three quantities\n"
              "JWB 1 JWB 2000 41.4 \n"
              "JWB 2 JWB 800 13.1 \n"
              "JWB 3 JWB 500 6.1 \n"
              "JWB 4 JWB 400 13.2 The search looks at no more than three quantities\n"
              "JWG 1 - 0.0 No model is large enough\n"
              "JWG 2 JWG 480 55.6 \n"
              "JWG 3 JWG 470 48.5 \n"
              "JWG 4 JWG 460 27.3 The search looks at no more than three quantities");
}
