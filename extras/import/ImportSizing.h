#pragma once

#include "core/store/TankLine.h"
#include "extras/compare/Comparison.h"
#include "extras/import/ImportText.h"

#include <map>

/// A line of an import as it will be stored, without job and keys.
struct ImportedLine {
    ImportText::Line read;
    TankLine line;
    QString model;       // its description; empty if none is chosen
    QStringList remarks; // why it has no model, and the line's notes

    /// Whether it can be stored.
    bool isRight() const { return read.problems.isEmpty(); }
};

/// Checks the lines of an import with the rules of the conditions' boxes, and gives each the first model that
/// the search offers in its series.
class ImportSizing {
  public:
    /// The series of each application, for lines that name none.
    using ChosenSeries = std::map<Application, QString>;

    /// Throws DatabaseFault.
    ImportSizing();
    ~ImportSizing();
    /// Throws DatabaseFault.
    ImportedLine sized(const ImportText::Line& read, const ChosenSeries& series);

  private:
    void check(ImportText::Line& read, Application application) const;
    void choose(ImportedLine& found, Application application, const QString& series, double bore);

    double atmosphere;      // psia
    double shockAtmosphere; // psia; the rule for a missing one differs
    int longestTag;
    std::map<Application, Comparison> comparisons;
};
