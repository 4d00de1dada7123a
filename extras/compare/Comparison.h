#pragma once

#include "calculation/PressureCurve.h"
#include "core/base/Applications.h"
#include "core/store/TankLine.h"
#include "sizing/ModelPool.h"

#include <QStringList>

/// A model in a quantity, as an answer to conditions.
struct Candidate {
    QString series;
    int quantity = 0;
    const Model* model = nullptr; // null when no model of the series is large enough
    QString objection = {};       // why the search does not offer it; empty if it does
    TankLine line = {};           // as it would be stored, without job and key
    double volume = 0;            // gal of all tanks
    double acceptance = 0;        // gal of all tanks
    double volumeReserve = 0;     // per cent more than required
    double acceptanceReserve = 0; // the same; without meaning where acceptance need not be met
    double floorArea = 0;         // ft², the squares that the tanks stand on
    double weight = 0;            // lb, of all tanks
    QStringList notes = {};

    bool isOffered() const { return objection.isEmpty(); }
};

/// Which candidates are shown. A candidate without a model has neither size nor code that would pass.
struct CompareFilters {
    std::optional<double> mostHeight; // in
    std::optional<double> mostArea;   // ft²
    bool asmeOnly = false;
    bool offeredOnly = false;

    bool allow(const Candidate& candidate) const;
};

/// Answers to conditions: all series of an application, in quantities of one to four and those beyond that
/// the search offers.
class Comparison {
  public:
    static constexpr int MostTanks = 4;

    /// Reads the models of an application. Throws DatabaseFault.
    explicit Comparison(Application application);

    Application application() const { return compared; }
    /// The candidates for a line with conditions and, for a shock arrestor, with its sizes and the bore of
    /// its pipe in inches; of all series, or of one. Throws Fault 11 or 6 for conditions that cannot be
    /// sized, and DatabaseFault.
    std::vector<Candidate> candidatesFor(const TankLine& conditions, double bore = 0,
                                         const QString& series = {}) const;

  private:
    void addSeries(std::vector<Candidate>& found, const ModelPool& pool, const TankLine& sized,
                   double bore) const;
    Candidate candidate(const ModelPool& pool, const TankLine& sized, const TankOption& option,
                        double bore) const;

    Application compared;
    std::vector<ModelPool> pools;
};

/// The curve of pressure over water of a candidate, if there is one to draw.
std::optional<PressureCurve> curveOf(const Candidate& candidate, Application application);

/// Whether no single tank of a candidate's series is enough.
bool takesSeveral(const std::vector<Candidate>& candidates, const Candidate& chosen);
