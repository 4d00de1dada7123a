#include "estimates/frmcalcThmTSF.h"

#include "core/base/Text.h"
#include "core/shell/FieldChecks.h"
#include "core/store/Catalogue.h"
#include "estimates/SystemFluid.h"

#include <QKeyEvent>

using namespace Catalogue;
using namespace Fields;

frmcalcThmTSF::frmcalcThmTSF() : Estimator("frmcalcThmTSF") {
    setupUi(this);
    prepareEstimator(".tbToolBar.ButtonClick");
    for (QLineEdit* box : {WtrHtrVolume, Pipeft})
        checksNumber(box);
    checksPipe(PipeIndex);
    findsPipe(cmdFindPipe2);
}

/// Return and the keypad's Enter (key 108 on keyboards that call it Separator) move on to the length.
bool frmcalcThmTSF::eventFilter(QObject* object, QEvent* event) {
    if (object != PipeIndex || event->type() != QEvent::KeyPress)
        return Estimator::eventFilter(object, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return Estimator::eventFilter(object, event);
    if (validateLeaving(PipeIndex))
        Pipeft->setFocus(Qt::TabFocusReason);
    return true;
}

/// The recirculation line must be filled in, if only with a length of 0. A pipe that the catalogue does not
/// have holds nothing.
std::optional<QString> frmcalcThmTSF::Calculate() {
    for (QLineEdit* box : {WtrHtrVolume, PipeIndex, Pipeft})
        if (!isEntered(box))
            return std::nullopt;
    const double gallons =
        hotWaterFluid(toNumber(WtrHtrVolume->text()), pipeBore(PipeIndex->text()), toNumber(Pipeft->text()));
    return formattedNumber(gallons, "#,##0");
}
