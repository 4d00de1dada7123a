#pragma once

#include <QString>

namespace JobPackage {

/// What a package holds beside cover and schedule, and what its cover says.
struct Contents {
    bool submittals = true;
    bool calculations = false;
    bool specifications = false;
    bool drawings = false;
    QString revision{};
    QString note{};
};

} // namespace JobPackage
