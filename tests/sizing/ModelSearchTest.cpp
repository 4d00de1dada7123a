#include "sizing/ModelSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace {

struct Model {
    double volume;
    double acceptance;
};

std::vector<TankOption> search(const std::vector<Model>& catalogue, double volume, double acceptance) {
    return searchModels({[&](int quantity) {
                             std::optional<double> smallest;
                             for (const Model& m : catalogue)
                                 if (m.acceptance * quantity >= acceptance && m.volume * quantity >= volume)
                                     smallest = std::min(smallest.value_or(m.acceptance), m.acceptance);
                             return smallest;
                         },
                         [&](double size) {
                             std::vector<TankOption> rows;
                             for (const Model& m : catalogue)
                                 if (m.acceptance == size)
                                     rows.push_back({0, "", m.volume, 0, 0});
                             return rows;
                         }});
}

std::vector<std::pair<int, double>> offered(const std::vector<TankOption>& options) {
    std::vector<std::pair<int, double>> pairs;
    pairs.reserve(options.size());
    for (const TankOption& o : options)
        pairs.emplace_back(o.quantity, o.tankVolume);
    return pairs;
}

const std::vector<Model> threeSizes = {{100, 40}, {200, 90}, {400, 200}};
using Pairs = std::vector<std::pair<int, double>>;

} // namespace

TEST(ModelSearch, OffersEachSizeOnce) {
    EXPECT_EQ(offered(search(threeSizes, 150, 60)), (Pairs{{1, 200}, {2, 100}}));
    EXPECT_EQ(offered(search(threeSizes, 900, 500)), (Pairs{{3, 400}}));
    EXPECT_EQ(offered(search(threeSizes, 5000, 10)), Pairs{});
    EXPECT_EQ(offered(search(threeSizes, 90, 30)), (Pairs{{1, 100}}));
    EXPECT_EQ(offered(search({}, 1, 1)), Pairs{});
}

TEST(ModelSearch, ListsAllModelsOfOneAcceptance) {
    EXPECT_EQ(offered(search({{100, 40}, {60, 40}, {400, 200}}, 90, 30)), (Pairs{{1, 100}, {1, 60}}));
}

TEST(ModelSearch, TriesTheNextQuantityWhenASizeIsNotFoundAgain) {
    const ModelSource source{
        [](int quantity) { return std::optional<double>(100.0 / quantity); },
        [](double size) {
            return size < 21 ? std::vector<TankOption>{{0, "m", size, 0, 0}} : std::vector<TankOption>{};
        }};
    EXPECT_EQ(offered(searchModels(source)), (Pairs{{5, 20}, {6, 100.0 / 6}}));
}

TEST(ModelSearch, MeetsBothRequirementsWithAtMostThreeQuantities) {
    std::mt19937 random(23);
    const auto between = [&random](double low, double high) {
        return std::uniform_real_distribution(low, high)(random);
    };
    for (int i = 0; i < 3000; ++i) {
        std::vector<Model> catalogue(static_cast<std::size_t>(between(1, 20)));
        std::set<double> acceptances;
        for (Model& m : catalogue) {
            m.volume = between(1, 1000);
            m.acceptance = m.volume * between(.3, 1);
            acceptances.insert(m.acceptance);
        }
        const double volume = between(.1, 3000);
        const double acceptance = volume * between(.05, .9);
        std::set<int> quantities;
        for (const TankOption& o : search(catalogue, volume, acceptance)) {
            quantities.insert(o.quantity);
            EXPECT_LE(o.quantity, 3);
            EXPECT_GE(o.tankVolume * o.quantity, volume);
        }
        EXPECT_LE(quantities.size(), 3U);
    }
}
