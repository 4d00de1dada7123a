// The comparison of models, against the search that the screens make.

#include "extras/compare/Comparison.h"
#include "shock/ShockSizing.h"
#include "sizing/CatalogueSearch.h"
#include "sizing/FluidLimits.h"
#include "sizing/TankSizing.h"
#include "tests/support/Rounds.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

using Record::orZero;

namespace {

class Conditions {
  public:
    TankLine tank() {
        TankLine line;
        line.sysFluidType = QString::fromUtf8(fluidLimits[std::size_t(between(0, 10.99))].fluid);
        line.atmPressure = between(8, 15);
        line.sotMin = std::floor(between(40, 100));
        line.sotMax = std::floor(between(*line.sotMin + 1, 240));
        line.sopMin = between(0, 80);
        line.sopMax = *line.sopMin + between(1, 100);
        line.totSysVolume = std::exp(between(0, 10));
        return line;
    }

    ShockConditions shock() {
        const double flow = between(10, 50);
        const double still = std::max(20.0, flow + between(1, 50));
        double shock = still + between(20, 150);
        if (shock > 180 && shock <= 190) // which the table does not cover
            shock += 10;
        return {.bore = Bores[std::size_t(between(0, 4.99))],
                .length = between(20, 2000),
                .flowRate = between(5, 400),
                .flowPressure = flow,
                .staticPressure = still,
                .shockPressure = shock,
                .atmosphericPressure = 14.7};
    }

  private:
    double between(double low, double high) { return std::uniform_real_distribution(low, high)(random); }

    static constexpr double Bores[] = {.622, 1.049, 2.067, 4.026, 7.981};
    std::mt19937 random{47};
};

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
    Conditions random;
    int offered = 0;
    for (const Application application :
         {Application::Expansion, Application::Thermal, Application::Hydropneumatic, Application::Shock}) {
        const Comparison comparison(application);
        for (int i = 0; i < roundCount(100, 1000); ++i) {
            const bool shock = application == Application::Shock;
            const ShockConditions pipe = random.shock();
            std::optional<std::string_view> objection;
            TankLine line = random.tank();
            if (shock)
                line = ShockSizing::lineOf(pipe, "pipe", ShockSizing::sizesOf(pipe, objection));
            for (const auto& [series, models] : offers(comparison.candidatesFor(line, pipe.bore))) {
                std::vector<TankOption> expected;
                if (shock) {
                    expected = findShockModels(series, orZero(line.requiredVolume), pipe.bore);
                } else {
                    const RequiredSizes sizes = TankSizing::sizesOf(line, application, series);
                    expected = findModels(series, sizes.volume, sizes.acceptance);
                }
                EXPECT_EQ(models, texts(expected)) << series.toStdString() << ", round " << i;
                offered += int(expected.size());
            }
        }
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
    EXPECT_EQ(found.join('\n').toStdString(), "JW 1 JW 1500 6.1 \n"
                                              "JW 2 JW 750 6.1 \n"
                                              "JW 3 JW 500 6.1 \n"
                                              "JW 4 JW 450 27.3 The search offers three quantities\n"
                                              "JWB 1 JWB 2000 41.4 \n"
                                              "JWB 2 JWB 800 13.1 \n"
                                              "JWB 3 JWB 500 6.1 \n"
                                              "JWB 4 JWB 400 13.2 The search offers three quantities\n"
                                              "JWG 1 - 0.0 No model is large enough\n"
                                              "JWG 2 JWG 480 55.6 \n"
                                              "JWG 3 JWG 470 48.5 \n"
                                              "JWG 4 JWG 460 27.3 The search offers three quantities");
}
