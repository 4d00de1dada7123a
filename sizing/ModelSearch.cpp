#include "sizing/ModelSearch.h"

std::vector<TankOption> SearchModels(const ModelSource& source) {
    constexpr int passes = 3;
    constexpr int mostTanks = 6;
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
            auto models = source.models(found);
            if (models.empty())
                continue;
            for (TankOption& option : models) {
                option.quantity = quantity;
                options.push_back(std::move(option));
            }
            break;
        }
    }
    return options;
}
