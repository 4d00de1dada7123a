#include "documents/Submittals.h"

#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Screens.h"
#include "core/shell/Trap.h"
#include "core/store/Gateway.h"
#include "core/store/SqlText.h"
#include "documents/Reports.h"
#include "documents/ResultScreen.h"
#include "documents/viewer/ReportOutput.h"

namespace UtilityFunctions {

namespace {

/// The report of a screen; null when it has none.
const ReportKind* reportOf(const QString& screenName) {
    const auto* screen = dynamic_cast<const ResultScreen*>(Screens::find(screenName));
    const ReportKind* report = screen ? FindReport(screen->reportName()) : nullptr;
    return report && report->ofScreens ? report : nullptr;
}

/// Makes the report of a screen and hands it on; a beep when the screen has none.
void withReport(const QString& screen, void (*use)(const Document&)) {
    const Hourglass hourglass;
    const ReportKind* kind = reportOf(screen);
    if (!kind)
        return Dialogs::current().beep();
    use(Report(*kind).Run());
}

} // namespace

QString SetReport(const QString& model) {
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

void PrintSubmittal(const QString& screen) {
    Trap("PrintSubmittal", [&] { withReport(screen, PrintDocument); });
}

void PreviewSubmittal(const QString& screen) {
    Trap("PreviewSubmittal", [&] { withReport(screen, ShowDocument); });
}

} // namespace UtilityFunctions
