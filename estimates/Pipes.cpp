#include "estimates/Pipes.h"

#include "core/shell/Dialogs.h"
#include "core/store/Gateway.h"

namespace UtilityFunctions {

bool ValidatePipeSize(const QString& text, const QString& mode) {
    if (text.isEmpty())
        return true;
    const QString key = mode == "Metric" ? "MetricIndex" : "PipeIndex";
    Connection connection = openDatabase("Sys");
    Recordset pipe;
    pipe.Open("SELECT * FROM tblPipeMaster WHERE " + key + " = '" + text + "'", connection);
    if (!pipe.AtEnd())
        return true;
    Dialogs::current().show({"Please select a value from the list.", "Invalid", QMessageBox::Critical});
    return false;
}

} // namespace UtilityFunctions
