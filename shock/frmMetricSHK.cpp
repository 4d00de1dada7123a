#include "shock/frmMetricSHK.h"

#include "core/shell/Fields.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/Catalogue.h"
#include "estimates/MetricConversions.h"
#include "estimates/Pipes.h"

using namespace Catalogue;
using namespace MetricConversions;
using namespace Pipes;
using namespace StatusBar;

frmMetricSHK::frmMetricSHK() : MetricPad("frmMetricSHK") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    connect(txtPipeIndex, &QLineEdit::textChanged, this,
            [this](const QString& text) { trap(".txtPipeIndex_Change", [&] { showPipe(text); }); });
    onLeaving(txtPipeIndex, ".txtPipeIndex_Validate",
              [this] { return ValidatePipeSize(txtPipeIndex, "Metric"); });
    converts(txtPipeLength, lblPipeLengthUS, MetersToFeet, "ft");
    converts(txtFlowRate, lblFlowRateUS, LitersToGallons, "gpm");
    converts(txtFlowPressure, lblFlowPressureUS, kPaToPSI, "psig");
    converts(txtStaticPressure, lblStaticPressureUS, kPaToPSI, "psig");
    converts(txtShockPressure, lblShockPressureUS, kPaToPSI, "psig");
    on(cmdFindPipe2, ".cmdFindPipe2", [this] { openPipeChooser(name()); });
    handsOver(cmdOK, [this] { return target(); });
    on(cmdOK, ".cmdOK", [this] { confirm(); });
}

void frmMetricSHK::Load() {
    MetricPad::Load();
    setStatusText("Convert Metric");
}

void frmMetricSHK::showPipe(const QString& metricIndex) {
    if (const QString metric = metricIndexOf(metricIndex); !metric.isEmpty()) { // the chooser's, a U.S. key
        txtPipeIndex->setText(metric);
        return;
    }
    const QString pipe = metricIndex.isEmpty() ? QString() : pipeIndexOf(metricIndex);
    lblPipeIndexUS->setText(metricIndex.isEmpty() ? QString()
                            : pipe.isEmpty()      ? "not a metric size"
                                                  : "= " + pipe);
}

/// A text that is no pipe leaves the pipe on the conditions unchanged.
void frmMetricSHK::confirm() {
    if (const QString text = txtPipeIndex->text(); !text.isEmpty())
        if (const QString pipe = pipeIndexOf(text); !pipe.isEmpty())
            Screens::handOver(*this, target(), "PipeIndex", pipe);
    for (const QLineEdit* box :
         {txtFlowRate, txtFlowPressure, txtStaticPressure, txtShockPressure, txtPipeLength})
        handOver(box, box->objectName().mid(3)); // the target's name is the same without "txt"
    Screens::unload(name());
}
