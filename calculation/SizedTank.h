#pragma once

#include "core/base/Applications.h"
#include "core/store/Model.h"
#include "core/store/TankLine.h"
#include "sizing/RequiredSizes.h"

/// A stored tank line with what the sheet needs to know about it.
struct SizedTank {
    TankLine line;
    std::optional<Model> model;             // nothing if there is none, or the catalogue lacks it
    std::optional<Application> application; // of the line's series, otherwise of the session
    bool conversion = false;                // of a plain steel tank
    std::optional<RequiredSizes> sizes;     // computed again; nothing before a series is chosen

    QString series() const { return line.tankClass.value_or(QString()); }
};

/// Reads a line and its model. The sizes are left to the steps. Throws DatabaseFault.
SizedTank sizedTank(const TankLine& line);
