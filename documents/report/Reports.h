#pragma once

#include "documents/report/Report.h"

#include <span>

/// Registers reports, one per row. Each subsystem adds its own.
void addReports(std::span<const ReportKind> kinds);

/// The report of a name, or null.
const ReportKind* findReport(const QString& name);
