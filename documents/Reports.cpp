#include "documents/Reports.h"

#include "documents/ListReports.h"
#include "documents/SubmittalFields.h"

#include <algorithm>

namespace {

constexpr ReportKind reports[] = {
    {"rptSubmittal1", "rptSubmittal1", "User", StartBladderSubmittal, true},
    {"rptSubmittal2", "rptSubmittal2", "User", StartSteelSubmittal, true},
    {"rptSubmittal3", "rptSubmittal3", "User", StartPackageSubmittal, true},
    {"rptSubmittal4", "rptSubmittal4", "User", StartShockSubmittal, true},
    {"rptExpTankList", "rptExpTankList", "Sys", StartTankList, false},
    {"rptPKGTankList", "rptPKGTankList", "Sys", StartPackageList, false},
    {"rptSchedule", "rptSchedule", "User", StartSchedule, true},
};

} // namespace

std::span<const ReportKind> AllReports() {
    return reports;
}

const ReportKind* FindReport(const QString& name) {
    const auto* found = std::ranges::find_if(
        reports, [&](const ReportKind& kind) { return name == QLatin1String(kind.name); });
    return found == std::end(reports) ? nullptr : found;
}
