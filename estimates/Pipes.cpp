#include "estimates/Pipes.h"

#include "core/base/Fault.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Screens.h"
#include "core/store/Catalogue.h"
#include "core/store/Gateway.h"

using namespace Gateway;

namespace Pipes {

bool ValidatePipeSize(const QString& text, const QString& mode) {
    if (text.isEmpty())
        return true;
    const QString key = mode == "Metric" ? "MetricIndex" : "PipeIndex";
    const bool known = underName("ValidatePipeSize", [&] {
        return !Rows("Sys", "SELECT * FROM tblPipeMaster WHERE " + key + " = '" + text + "'").atEnd();
    });
    if (!known)
        Dialogs::current().show({"Please select a value from the list.", "Invalid", QMessageBox::Critical});
    return known;
}

QString pipeIndexOf(const QString& metricIndex) {
    Rows pipe("Sys", "SELECT * FROM tblPipeMaster WHERE MetricIndex = ?", {metricIndex});
    return pipe.atEnd() ? QString() : pipe["PipeIndex"].text();
}

QString metricIndexOf(const QString& pipeIndex) {
    Rows pipe = Catalogue::readPipe(pipeIndex);
    return pipe.atEnd() ? QString() : pipe["MetricIndex"].text();
}

void openPipeChooser(const QString& opener) {
    if (Screen* chooser = Screens::load("frmPipeSelect")) {
        chooser->Tag = opener;
        chooser->updateHandOver();
    }
    Screens::show("frmPipeSelect");
}

void closePipeChooser(const QString& opener) {
    if (const Screen* chooser = Screens::find("frmPipeSelect"); chooser && chooser->Tag == opener)
        Screens::unload("frmPipeSelect");
}

} // namespace Pipes
