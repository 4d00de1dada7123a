#include "estimates/Estimates.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "estimates/Estimator.h"
#include "estimates/MetricPad.h"
#include "estimates/frmCalcExpTSF.h"
#include "estimates/frmCalcHydTSF.h"
#include "estimates/frmMetricCalc.h"
#include "estimates/frmPipeSelect.h"
#include "estimates/frmcalcThmTSF.h"

namespace {

/// Opens the metric pad of the active screen; beeps if it has none.
void convertMetric() {
    const QString conditions = QStringLiteral("frmJobConditions");
    const QString shockConditions = QStringLiteral("frmJobConditionsSHK");
    const QString active = Screens::active();
    const Screens::AtWork work(Screens::find(active)); // the pad joins the task of the screen that it serves
    if (auto* estimator = dynamic_cast<Estimator*>(Screens::find(active)))
        estimator->OpenMetricForm(); // does nothing for a method without anything to convert
    else if (active == conditions || active == "frmConvertSteel") // which takes nothing from the pad
        openMetricPad("frmMetric", conditions);
    else if (active == shockConditions)
        openMetricPad("frmMetricSHK", shockConditions);
    else if (const Screen* screen = Screens::find(active);
             auto* button = screen ? screen->control<QAbstractButton>("cmdMetric") : nullptr)
        button->click();
    else
        Dialogs::current().beep();
}

} // namespace

void registerEstimates() {
    Screens::add("frmPipeSelect", [] { return new frmPipeSelect; });
    Screens::add("frmCalcExpTSF", [] { return new frmCalcExpTSF; });
    Screens::add("frmcalcThmTSF", [] { return new frmcalcThmTSF; });
    Screens::add("frmCalcHydTSF", [] { return new frmCalcHydTSF; });
    Screens::add("frmMetricCalc", [] { return new frmMetricCalc; });
    for (const auto& [command, estimator] : {std::pair("mnuEstEXP", "frmCalcExpTSF"),
                                             {"mnuEstTHM", "frmcalcThmTSF"},
                                             {"mnuEstHYD", "frmCalcHydTSF"}})
        Commands::set(command, [estimator = QString(estimator)] { openEstimator(estimator); });
    Commands::set("mnuMetric", convertMetric);
}
