#pragma once

#include <QString>

namespace Submittals {

/// The name of the submittal report for a model; empty when the catalogue gives none.
QString SetReport(const QString& model);

} // namespace Submittals

/// Registers the four submittals.
void registerSubmittals();
