#pragma once

#include "core/base/Applications.h"
#include "core/store/Model.h"
#include "core/store/TankLine.h"

#include <QStringList>

/// A tank line of a job as the overview shows it.
struct JobLine {
    TankLine line;
    std::optional<Model> model;             // nothing without one, or when the catalogue lacks it
    std::optional<Application> application; // nothing when neither model nor series tells
    QStringList notes;

    /// How far the line is: "Sized", "No model yet", "Model not in the catalogue" or "2 notes".
    QString state() const;
    /// The tags of its units, as far as there are any. A line keeps those of units that it no longer has.
    QString tags() const;
};

/// The tank lines of a job in the order of its documents. The catalogue is read once. Throws DatabaseFault.
std::vector<JobLine> jobLinesOf(const QString& jobID);
