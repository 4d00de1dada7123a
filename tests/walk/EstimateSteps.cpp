#include "core/base/Text.h"
#include "core/shell/Fields.h"
#include "estimates/MetricConversions.h"
#include "tests/support/Driver.h"
#include "tests/walk/Steps.h"

namespace {

using namespace Steps;

void estimateOf(Walk& walk, const QString& window) {
    static const QMap<QString, QString> estimators = {{"Expansion Tank", "frmCalcExpTSF"},
                                                      {"Thermal Expansion Tank", "frmcalcThmTSF"},
                                                      {"Hydropneumatic Tank", "frmCalcHydTSF"}};
    const QString estimator = estimators[walk.notes.windows[window].work->application.value_or("")];
    if (estimator.isEmpty())
        return;
    openBeside(walk, window, "cmdCalcTSF", estimator);
    walk.notes.windows[estimator].handsBack = true;
}

void estimateFreely(Walk& walk, const QString&) {
    static const QMap<QString, QString> estimators = {
        {"mnuEstEXP", "frmCalcExpTSF"}, {"mnuEstTHM", "frmcalcThmTSF"}, {"mnuEstHYD", "frmCalcHydTSF"}};
    const QString menu = walk.oneOf(estimators.keys());
    const Work work = walk.notes.begin();
    if (!walk.notes.isOpen(estimators[menu])) {
        walk.notes.set(work, {}, &Values::job, "");
        walk.notes.set(work, {}, &Values::tank, "");
        walk.notes.open(estimators[menu], work);
    }
    walk.command(menu, work);
}

void calculate(Walk& walk, const QString& window) {
    static const QMap<QString, QStringList> boxes = {{"frmCalcExpTSF", {"ChillerTons"}},
                                                     {"frmcalcThmTSF", {"WtrHtrVolume", "Pipeft"}},
                                                     {"frmCalcHydTSF", {"PumpCapacity", "PumpRunTime"}}};
    walk.front(window);
    if (window == "frmCalcExpTSF")
        walk.press(window, "bttnChiller");
    if (window == "frmcalcThmTSF")
        walk.type(window, "PipeIndex", "2 in Sch 40");
    for (const QString& box : boxes[window])
        walk.type(window, box, walk.number(5, 90, walk.notes.windows[window].boxes[box]));
    walk.press(window, "bttnCalc");
    walk.notes.windows[window].boxes["TotSysFluidCalc"] =
        Fields::fieldText(Driver::control(window, "TotSysFluidCalc"));
}

void takeEstimate(Walk& walk, const QString& window) {
    const QString result = walk.notes.windows[window].boxes["TotSysFluidCalc"];
    if (result.isEmpty() || !walk.notes.serves(window, "frmJobConditions"))
        return;
    walk.reach(window, "bttnOK");
    Window& conditions = walk.notes.windows["frmJobConditions"];
    conditions.boxes["txtTotSysFluid"] = result;
    conditions.typed = true;
    walk.notes.remove(window);
    walk.press(window, "bttnOK");
}

void cancelEstimate(Walk& walk, const QString& window) {
    walk.reach(window, "bttnCancel");
    walk.notes.remove(window);
    walk.press(window, "bttnCancel");
}

void openPad(Walk& walk, const QString& window) {
    openBeside(walk, window, "cmdMetric", window == "frmJobConditions" ? "frmMetric" : "frmMetricSHK");
}

void openPadByMenu(Walk& walk, const QString&) {
    static const QMap<QString, QString> pads = {{"frmJobConditions", "frmMetric"},
                                                {"frmConvertSteel", "frmMetric"},
                                                {"frmJobConditionsSHK", "frmMetricSHK"}};
    const QString front = walk.inFront();
    if (!pads.contains(front))
        return;
    walk.notes.open(pads[front], walk.notes.windows[front].work);
    walk.command("mnuMetric", walk.notes.begin());
}

/// A box of a pad, and the box it fills.
struct Conversion {
    const char* pad;
    const char* box;
    const char* target;
    double low; // in metric units
    double high;
    double (*convert)(double);
};

constexpr Conversion conversions[] = {
    {"frmMetric", "txtTotSysFluid", "txtTotSysFluid", 500, 9000, MetricConversions::LitersToGallons},
    {"frmMetric", "txtSOPMin", "txtSOPMin", 40, 200, MetricConversions::kPaToPSI},
    {"frmMetric", "txtSOPMax", "txtSOPMax", 300, 900, MetricConversions::kPaToPSI},
    {"frmMetricSHK", "txtPipeLength", "PipeLength", 20, 100, MetricConversions::MetersToFeet},
    {"frmMetricSHK", "txtFlowRate", "FlowRate", 80, 200, MetricConversions::LitersToGallons},
};

void typeMetric(Walk& walk, const QString& window) {
    walk.front(window);
    for (const Conversion& conversion : conversions)
        if (window == conversion.pad && walk.chance(2))
            walk.type(window, conversion.box, walk.number(conversion.low, conversion.high, ""));
}

void takeMetric(Walk& walk, const QString& window) {
    const QString target = faceOf(window).serves;
    if (!walk.notes.serves(window, target))
        return;
    walk.reach(window, "cmdOK");
    Window& conditions = walk.notes.windows[target];
    const Row boxes = walk.notes.windows[window].boxes;
    for (const Conversion& conversion : conversions)
        if (window == conversion.pad && !boxes[conversion.box].isEmpty()) {
            conditions.boxes[conversion.target] =
                shownNumber(conversion.convert(boxes[conversion.box].toDouble()));
            conditions.typed = true;
        }
    walk.notes.remove(window);
    walk.press(window, "cmdOK");
}

} // namespace

QList<Step> Steps::estimateSteps() {
    return {
        {"estimate", 3, "frmJobConditions", estimateOf},
        {"estimate freely", 2, "", estimateFreely},
        {"calculate", 4, "frmCalcExpTSF", calculate},
        {"calculate", 4, "frmcalcThmTSF", calculate},
        {"calculate", 4, "frmCalcHydTSF", calculate},
        {"take the estimate", 3, "frmCalcExpTSF", takeEstimate},
        {"take the estimate", 3, "frmcalcThmTSF", takeEstimate},
        {"take the estimate", 3, "frmCalcHydTSF", takeEstimate},
        {"cancel", 1, "frmCalcExpTSF", cancelEstimate},
        {"cancel", 1, "frmcalcThmTSF", cancelEstimate},
        {"cancel", 1, "frmCalcHydTSF", cancelEstimate},
        {"open a pad", 2, "frmJobConditions", openPad},
        {"open a pad", 2, "frmJobConditionsSHK", openPad},
        {"open a pad by the menu", 2, "", openPadByMenu},
        {"type metric values", 4, "frmMetric", typeMetric},
        {"type metric values", 4, "frmMetricSHK", typeMetric},
        {"take metric values", 3, "frmMetric", takeMetric},
        {"take metric values", 3, "frmMetricSHK", takeMetric},
    };
}
