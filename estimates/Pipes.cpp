#include "estimates/Pipes.h"

#include "core/base/Fault.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/store/Catalogue.h"

#include <QLineEdit>

using namespace Catalogue;

namespace Pipes {

bool ValidatePipeSize(QLineEdit* box, const QString& mode) {
    const QString text = box->text();
    if (text.isEmpty())
        return true;
    const bool known =
        underName("ValidatePipeSize", [&] { return mode == "Metric" ? hasMetricPipe(text) : hasPipe(text); });
    known ? Fields::unmarkField(box) : Fields::markField(box);
    if (!known)
        Dialogs::current().show({"Please select a value from the list.", "Invalid", QMessageBox::Critical});
    return known;
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
