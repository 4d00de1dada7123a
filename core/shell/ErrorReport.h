#pragma once

#include "core/base/Fault.h"

#include <QString>

#include <cstdint>

namespace Faults {

/// The one failure path: builds the report of thirteen lines and shows it in frmError without waiting. The
/// database password is masked in the system source. The module is "Splash" or empty.
void ReportError(std::int32_t number, const QString& description, const QString& dll, const QString& source,
                 const QString& codeSource, const QString& module = {});

/// What the user sees of a failure: the question for the folder when the database is not there, else the
/// report.
void ShowFailure(const Fault& fault, const QString& codeSource, const QString& module);

/// Shows a text in frmError. The same text of a failure at the start, which every tick repeats, is left
/// alone.
void ShowErrorText(const QString& text, const QString& module = {});

} // namespace Faults
