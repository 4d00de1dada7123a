#pragma once

#include "documents/report/Report.h"

#include <span>

/// The reports of the program, one a row.
std::span<const ReportKind> AllReports();

/// A report by its name; null when there is none.
const ReportKind* FindReport(const QString& name);
