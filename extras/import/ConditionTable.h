#pragma once

#include "core/base/Applications.h"
#include "core/store/TankLine.h"

#include <QStringList>

#include <optional>
#include <vector>

/// A system from a table of conditions, as it would be stored.
struct ImportedTank {
    int row = 0; // the number of its line in the text
    std::optional<Application> application{};
    TankLine line{};        // its conditions and tag; its series, if the table names one
    double bore = 0;        // in, of a shock arrestor's pipe
    QStringList problems{}; // why it cannot be stored
    QString remark{};       // why it has no model

    bool isGood() const { return problems.isEmpty(); }
};

/// Reads systems from tables: one a line, in columns whose headings name a condition and, in brackets, its
/// unit.
namespace ConditionTable {

struct Systems {
    QStringList problems{}; // with the headings; without any the systems are complete
    std::vector<ImportedTank> tanks{};
};

/// Reads the systems in a text. Every value passes the checks of the box that it would be entered in, with
/// that box's words. A column of the atmospheric pressure may be missing: then `atmosphere` in psia counts.
/// Throws DatabaseFault.
Systems systemsIn(const QString& text, double atmosphere);

/// A table to fill in, with every heading and an example of each application.
QString sample();

} // namespace ConditionTable
