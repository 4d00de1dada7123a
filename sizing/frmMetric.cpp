#include "sizing/frmMetric.h"

#include "core/base/Text.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/SessionStore.h"
#include "estimates/MetricConversions.h"

using namespace MetricConversions;
using namespace StatusBar;

frmMetric::frmMetric() : MetricPad("frmMetric") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    converts(txtAtmPressure, lblAtmPressureUS, kPaToPSI, "psia");
    converts(txtSOPMin, lblSOPMinUS, kPaToPSI, "psig");
    converts(txtSOPMax, lblSOPMaxUS, kPaToPSI, "psig");
    converts(txtTotSysFluid, lblTotSysFluidUS, LitersToGallons, "gal");
    converts(txtSOTMin, lblSOTMinUS, CelsiusToFahrenHeit, "°F");
    converts(txtSOTMax, lblSOTMaxUS, CelsiusToFahrenHeit, "°F");
    handsOver(cmdOK, [this] { return target(); });
    on(cmdOK, ".cmdOK", [this] { confirm(); });
}

void frmMetric::Load() {
    MetricPad::Load();
    setStatusText("Convert Metric");
}

/// The conditions of a hydropneumatic tank have no temperatures.
void frmMetric::adaptToTarget() {
    const Screen* screen = Screens::find(target());
    const auto* temperature = screen ? screen->control<QLineEdit>("txtSOTMin") : nullptr;
    if (!temperature || !temperature->isHidden())
        return;
    for (QWidget* hidden :
         std::initializer_list<QWidget*>{lblSOT, lblSOTMin, lblSOTMax, lblSOTMinUM, lblSOTMaxUM, lblSOTMinUS,
                                         lblSOTMaxUS, txtSOTMin, txtSOTMax})
        hidden->hide();
    lblSysFluidContent->setText("Drawdown");
}

/// A box that shows 0 leaves its target unchanged, because an empty box becomes 0 when it is left. So 0 °C
/// cannot be entered here.
bool frmMetric::leavesTarget(const QString& text) const {
    return text.isEmpty() || text == "0";
}

void frmMetric::confirm() {
    for (const QLineEdit* box : {txtAtmPressure, txtSOPMin, txtSOPMax, txtTotSysFluid, txtSOTMin, txtSOTMax})
        handOver(box, box->objectName()); // each has the same name as its target
    Screens::unload(name());
}
