#include "sizing/ModelPool.h"

#include "shock/ShockSizes.h"

#include <algorithm>
#include <cmath>

using Record::orZero;

ModelPool::ModelPool(const QString& seriesCode) : code(seriesCode), models(Catalogue::modelsOf(seriesCode)) {}

/// A model without a size meets nothing, as null does in a statement.
ModelSource ModelPool::sourceFor(const Requirement& requirement) const {
    const auto meets = [requirement](const Model& model, int quantity) {
        if (!model.acceptanceVolume || !model.tankVolume || *model.tankVolume * quantity < requirement.volume)
            return false;
        if (!requirement.bore)
            return *model.acceptanceVolume * quantity >= requirement.acceptance;
        return model.tankSysConn && *model.tankSysConn >= leastConnection(*requirement.bore, quantity);
    };
    return {[this, meets](int quantity) {
                std::optional<double> smallest;
                for (const Model& model : models)
                    if (meets(model, quantity) && (!smallest || *model.acceptanceVolume < *smallest))
                        smallest = model.acceptanceVolume;
                return smallest;
            },
            [this](double size) {
                std::vector<TankOption> options;
                for (const Model& model : models)
                    if (model.acceptanceVolume == size)
                        options.push_back({0, model.modelDscrptn.value_or(QString()).toStdString(),
                                           orZero(model.tankVolume), orZero(model.tankOD),
                                           orZero(model.oal)});
                return options;
            }};
}

std::vector<TankOption> ModelPool::find(const Requirement& requirement) const {
    const ModelSource source = sourceFor(requirement);
    return requirement.bore ? searchShockModels(source) : searchModels(source);
}

const Model* ModelPool::model(const std::string& name) const {
    const QString wanted = QString::fromStdString(name);
    const auto found = std::ranges::find(
        models, wanted, [](const Model& model) { return model.modelDscrptn.value_or(QString()); });
    return found == models.end() ? nullptr : &*found;
}
