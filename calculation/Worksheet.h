#pragma once

#include "calculation/Formulas.h"
#include "documents/report/ReportRows.h"

#include <functional>

/// Collects the rows of a calculation sheet, section by section.
class Worksheet {
  public:
    /// Begins a section; the rows that follow belong to it.
    void section(const QString& title) { group = title; }
    /// Something wrong, in the colour of errors, above everything else.
    void warn(const QString& text);
    /// Adds steps. What leaves nothing to divide by is told above everything else: a sheet is there to be
    /// checked. Throws DatabaseFault.
    void warnOfFault(const QString& what, const std::function<void()>& steps);
    /// A fact in words.
    void say(const QString& caption, const QString& text);
    /// A worked formula, with the SI value of its result.
    void step(const QString& caption, const QString& formula, const QString& source = {},
              const QString& si = {});
    /// A stored condition, with the SI value that convert writes. One that is not stored counts as 0 in the
    /// sizing, which is said beside it.
    void condition(const QString& caption, const QString& symbol, const std::optional<double>& stored,
                   const QString& unit, QString (*convert)(double));
    /// What was asked of the catalogue for a number of tanks, and its answer.
    void asked(const QString& quantity, const QString& question, const QString& answer);
    /// The place of the curve.
    void curve();

    /// The rows collected so far: what is wrong first, then the others as they were added.
    std::vector<ReportRow> rows() const;

  private:
    void add(const char* band, ReportRow row);

    QString group;
    std::vector<ReportRow> warnings;
    std::vector<ReportRow> others;
};

/// The SI values beside the results, with five significant digits.
namespace SiValues {
QString liters(double gallons);
QString kilopascals(double psi);
QString celsius(double fahrenheit);
QString meters(double feet);
QString millimeters(double inches);
QString metersPerSecond(double feetPerSecond);
QString litersPerSecond(double gallonsPerMinute);
QString joules(double footPounds);
QString joulesPerMeter(double footPoundsPerFoot);
QString kilojoulesPerCubicMeter(double footPoundsPerCubicFoot);
QString squareMillimeters(double squareInches);
} // namespace SiValues
