#include "estimates/frmCalcHydTSF.h"

#include "core/base/Text.h"
#include "core/shell/FieldChecks.h"
#include "estimates/SystemFluid.h"

using namespace Fields;

frmCalcHydTSF::frmCalcHydTSF() : Estimator("frmCalcHydTSF") {
    setupUi(this);
    prepareEstimator(".tbToolBar.ButtonClick");
    for (QLineEdit* box : {PumpCapacity, PumpRunTime})
        checksNumber(box);
}

std::optional<QString> frmCalcHydTSF::Calculate() {
    for (QLineEdit* box : {PumpCapacity, PumpRunTime})
        if (!isEntered(box))
            return std::nullopt;
    const double gallons = Drawdown(toNumber(PumpCapacity->text()), toNumber(PumpRunTime->text()));
    return formattedNumber(gallons, "0"); // no separators, unlike the other estimates
}
