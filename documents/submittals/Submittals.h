#pragma once

#include <QString>

struct Model;

namespace Submittals {

/// The name of the submittal report for a model; empty when the catalogue gives none.
QString SetReport(const QString& model);
QString SetReport(const Model& model);

} // namespace Submittals

/// Registers the four submittals.
void registerSubmittals();
