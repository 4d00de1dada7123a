#pragma once

#include "core/store/Model.h"
#include "sizing/ModelSearch.h"

#include <QString>

/// What tanks must offer together, in gallons, and the bore in inches of a shock arrestor's pipe.
struct Requirement {
    double volume = 0;
    double acceptance = 0;
    std::optional<double> bore = std::nullopt;
};

/// The models of one series, read once and then searched without the catalogue, for screens that search at
/// every keystroke. The answers are those of CatalogueSearch.
class ModelPool {
  public:
    /// Throws DatabaseFault.
    explicit ModelPool(const QString& seriesCode);

    const QString& series() const { return code; }
    /// The source for a search. The pool must outlive it.
    ModelSource sourceFor(const Requirement& requirement) const;
    /// The options that the search offers.
    std::vector<TankOption> find(const Requirement& requirement) const;
    /// The model of a name among those of the series; null if there is none.
    const Model* model(const std::string& name) const;

  private:
    QString code;
    std::vector<Model> models;
};
