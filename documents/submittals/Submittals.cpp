#include "documents/submittals/Submittals.h"

#include "core/store/Gateway.h"
#include "core/store/SqlText.h"
#include "documents/report/Reports.h"
#include "documents/submittals/SubmittalFields.h"

QString UtilityFunctions::SetReport(const QString& model) {
    Connection connection = openDatabase("Sys");
    Recordset row;
    row.Open("SELECT Submittal FROM tblModelMaster WHERE ModelDscrptn = '" + SqlEscape(model) + "'",
             connection);
    const QString submittal = row.AtEnd() ? QString() : row["Submittal"].text();
    if (submittal.isEmpty())
        return {};
    Recordset specification;
    specification.Open("SELECT Report FROM tblSpecMaster WHERE Submittal = '" + SqlEscape(submittal) + "'",
                       connection);
    return specification.AtEnd() ? QString() : specification["Report"].text();
}

void registerSubmittals() {
    static constexpr ReportKind reports[] = {
        {"rptSubmittal1", "rptSubmittal1", "User", StartBladderSubmittal, ReportOf::TankLine},
        {"rptSubmittal2", "rptSubmittal2", "User", StartSteelSubmittal, ReportOf::TankLine},
        {"rptSubmittal3", "rptSubmittal3", "User", StartPackageSubmittal, ReportOf::TankLine},
        {"rptSubmittal4", "rptSubmittal4", "User", StartShockSubmittal, ReportOf::TankLine},
    };
    AddReports(reports);
}
