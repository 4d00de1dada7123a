#pragma once

#include <QString>

namespace Submittals {

/// The name of the report that a model's submittal takes; an empty text when the catalogue gives none.
QString SetReport(const QString& model);

} // namespace Submittals

/// Makes the four submittals known.
void registerSubmittals();
