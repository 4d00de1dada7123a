#include "sizing/ModelSearch.h"

namespace {
constexpr int passes = 3;
constexpr int mostTanks = 6;

/// Adds the models of one size in a quantity; false when there are none.
bool offer(std::vector<TankOption>& options, std::vector<TankOption> models, int quantity) {
    for (TankOption& option : models) {
        option.quantity = quantity;
        options.push_back(std::move(option));
    }
    return !models.empty();
}
} // namespace

ModelSource noting(const ModelSource& source, std::vector<SearchStep>& steps) {
    return {[&](int quantity) {
                steps.push_back({quantity, source.smallest(quantity), {}});
                return steps.back().smallest;
            },
            [&](double size) {
                steps.back().models = source.models(size);
                return steps.back().models;
            }};
}

std::vector<TankOption> searchModels(const ModelSource& source) {
    std::vector<TankOption> options;
    double found = 0;
    double last = 0;
    int quantity = 0;
    for (int pass = 1; pass <= passes; ++pass) {
        ++quantity;
        for (; quantity <= mostTanks; ++quantity) {
            found = source.smallest(quantity).value_or(found);
            if (found == last)
                break;
            last = found;
            if (offer(options, source.models(found), quantity))
                break;
        }
    }
    return options;
}

std::vector<TankOption> searchShockModels(const ModelSource& source) {
    std::vector<TankOption> options;
    double found = 0;
    double last = 0;
    int quantity = 0;
    for (int pass = 1; pass <= passes; ++pass) {
        for (++quantity; quantity <= mostTanks; ++quantity) {
            found = source.smallest(quantity).value_or(found);
            if (found == last)
                break;
            last = found;
            offer(options, source.models(found), quantity);
        }
    }
    return options;
}
