// The search on the catalogue as it is shipped.

#include "sizing/CatalogueSearch.h"
#include "core/store/Gateway.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

namespace {

double acceptanceOf(const std::string& model) {
    Connection catalogue = UtilityFunctions::openDatabase("Sys");
    Recordset row;
    row.Open("SELECT * FROM tblModelMaster WHERE ModelDscrptn = '" + QString::fromStdString(model) + "'",
             catalogue);
    return row["AcceptanceVolume"].number();
}

} // namespace

TEST(CatalogueSearch, OffersWhatMeetsBothRequirements) {
    const TemporaryHome home;
    home.installData();
    std::mt19937 random(31);
    const QStringList series = {"R",   "RCBD", "RC", "RB", "RGB", "RCB", "RHB",
                                "GWB", "GGB",  "GW", "G",  "JW",  "JWB", "JWG"};
    int offered = 0;
    for (int i = 0; i < 2000; ++i) {
        const QString& one = series[i % series.size()];
        const double volume = std::exp(std::uniform_real_distribution(-1.0, 8.5)(random));
        const double acceptance = volume * std::uniform_real_distribution(.05, .95)(random);
        std::set<int> quantities;
        std::set<double> acceptances;
        for (const TankOption& option : FindModels(one, volume, acceptance)) {
            const double each = acceptanceOf(option.model);
            EXPECT_GE(each * option.quantity, acceptance) << option.model;
            // A model of the same acceptance as one that fits is listed beside it, whatever its volume.
            if (acceptances.insert(each).second) {
                EXPECT_GE(option.tankVolume * option.quantity, volume) << option.model;
            }
            quantities.insert(option.quantity);
            ++offered;
        }
        EXPECT_LE(quantities.size(), 3U);
    }
    EXPECT_GT(offered, 1000);
}

TEST(CatalogueSearch, ReplacesSteelTanksByVolumeAlone) {
    const TemporaryHome home;
    home.installData();
    const auto options = FindConvertedModels("RCBD", 212);
    ASSERT_EQ(options.size(), 3U);
    EXPECT_EQ(options[0].model, "RCBD 1100");
    EXPECT_EQ(options[1].model, "RCBD 450");
    EXPECT_EQ(options[1].quantity, 2);
    EXPECT_TRUE(FindConvertedModels("RCBD", 1e6).empty());
}
