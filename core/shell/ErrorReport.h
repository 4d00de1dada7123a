#pragma once

#include "core/base/Fault.h"

#include <QString>

#include <cstdint>

namespace Faults {

/// The single failure path: builds the thirteen-line report and shows it in frmError without blocking. Masks
/// the database password in the system source. The module is "Splash" or empty.
void ReportError(std::int32_t number, const QString& description, const QString& dll, const QString& source,
                 const QString& codeSource, const QString& module = {});

/// What the user sees of a failure: if the database is missing, the question for its folder, otherwise the
/// report.
void showFailure(const Fault& fault, const QString& codeSource, const QString& module);

/// Shows a text in frmError. A failure at the start recurs with every tick; the same text is then not shown
/// again.
void showErrorText(const QString& text, const QString& module = {});

} // namespace Faults
