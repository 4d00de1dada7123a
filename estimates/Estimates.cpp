#include "estimates/Estimates.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "estimates/Estimator.h"
#include "estimates/frmCalcExpTSF.h"
#include "estimates/frmCalcHydTSF.h"
#include "estimates/frmMetricCalc.h"
#include "estimates/frmPipeSelect.h"
#include "estimates/frmcalcThmTSF.h"

namespace {

/// Opens the metric pad of the active screen; beeps if it has none.
void convertMetric() {
    static const QHash<QString, QString> pads = {{"frmJobConditions", "frmMetric"},
                                                 {"frmConvertSteel", "frmMetric"},
                                                 {"frmJobConditionsSHK", "frmMetricSHK"}};
    const QString active = Screens::active();
    const Screens::AtWork work(Screens::find(active)); // the pad joins the task of the screen that it serves
    if (auto* estimator = dynamic_cast<Estimator*>(Screens::find(active)))
        estimator->OpenMetricForm(); // does nothing for a method without anything to convert
    else if (pads.contains(active))
        Screens::open(pads.value(active));
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
        Commands::set(command, [estimator = QString(estimator)] {
            openEstimator(estimator, EstimatorUse::FreeStanding);
        });
    Commands::set("mnuMetric", convertMetric);
}
