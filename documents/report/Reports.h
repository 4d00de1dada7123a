#pragma once

#include "documents/report/Report.h"

#include <span>

/// Registers reports, one per row. Each subsystem adds its own.
void AddReports(std::span<const ReportKind> kinds);

/// The report of a name, or null.
const ReportKind* FindReport(const QString& name);
