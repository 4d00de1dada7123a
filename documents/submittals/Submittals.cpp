#include "documents/submittals/Submittals.h"

#include "core/store/Model.h"
#include "core/store/Specification.h"
#include "documents/report/Reports.h"
#include "documents/submittals/SubmittalFields.h"

using namespace Catalogue;

QString Submittals::SetReport(const QString& model) {
    const auto found = findModel(model);
    return found ? SetReport(*found) : QString();
}

QString Submittals::SetReport(const Model& model) {
    const QString submittal = model.submittal.value_or(QString());
    return submittal.isEmpty() ? QString() : reportOf(submittal);
}

void registerSubmittals() {
    static constexpr ReportKind reports[] = {
        {"rptSubmittal1", "rptSubmittal1", "User", startBladderSubmittal, ReportOf::TankLine},
        {"rptSubmittal2", "rptSubmittal2", "User", startSteelSubmittal, ReportOf::TankLine},
        {"rptSubmittal3", "rptSubmittal3", "User", startPackageSubmittal, ReportOf::TankLine},
        {"rptSubmittal4", "rptSubmittal4", "User", startShockSubmittal, ReportOf::TankLine},
    };
    addReports(reports);
}
