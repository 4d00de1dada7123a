#pragma once

#include "documents/report/Report.h"

#include <span>

/// Makes reports known, one a row. Each subsystem adds its own.
void AddReports(std::span<const ReportKind> kinds);

/// A report by its name; null when there is none.
const ReportKind* FindReport(const QString& name);
