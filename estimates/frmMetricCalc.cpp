#include "estimates/frmMetricCalc.h"

#include "core/shell/Screens.h"
#include "estimates/MetricConversions.h"

#include <algorithm>
#include <array>
#include <string_view>

using namespace MetricConversions;

namespace {

/// A box that an estimator's method needs and the target of its value, in the order of writing.
struct Service {
    std::string_view tag;
    const char* box;
    const char* target;
};

constexpr std::array services = {
    Service{"frmCalcExpTSF-bttnBldg", "txtBldgHeight", "BldgHeight"},
    Service{"frmCalcExpTSF-bttnBldg", "txtBldgWidth", "BldgWidth"},
    Service{"frmCalcExpTSF-bttnBldg", "txtBldgDepth", "BldgDepth"},
    Service{"frmCalcExpTSF-bttnChiller", "txtChillerTons", "ChillerTons"},
    Service{"frmCalcExpTSF-bttnComponent", "txtVolBoiler", "BoilerCapacity"},
    Service{"frmCalcExpTSF-bttnComponent", "txtPipeLength", "PipeCapacity"},
    Service{"frmCalcExpTSF-bttnComponent", "txtVolOthrComp", "AdditionalCapacity"},
    Service{"frmCalcExpTSF-bttnDetail", "txtPipeLength", "txtPipeLengthItemized"},
    Service{"frmCalcExpTSF-bttnDetail", "txtVolBoiler", "txtCapacityItem"},
    Service{"frmCalcHydTSF", "txtPumpCapacity", "PumpCapacity"},
    Service{"frmcalcThmTSF", "txtPipeLength", "Pipeft"},
    Service{"frmcalcThmTSF", "txtVolWtrHtr", "WtrHtrVolume"},
};

} // namespace

frmMetricCalc::frmMetricCalc() : MetricPad("frmMetricCalc") {
    setupUi(this);
    prepare();
    setDefault(cmdOK);
    converts(txtBldgHeight, lblBldgHeightUS, MetersToFeet, "ft");
    converts(txtBldgWidth, lblBldgWidthUS, MetersToFeet, "ft");
    converts(txtBldgDepth, lblBldgDepthUS, MetersToFeet, "ft");
    converts(txtChillerTons, lblChillerTonsUS, MetricTonsToTons, "tons");
    converts(txtPipeLength, lblPipeLengthUS, MetersToFeet, "ft");
    converts(txtVolBoiler, lblBoilerUS, LitersToGallons, "gal");
    converts(txtVolOthrComp, lblOthrCompUS, LitersToGallons, "gal");
    converts(txtVolWtrHtr, lblWtrHtrUS, LitersToGallons, "gal");
    converts(txtPumpCapacity, lblPumpCapacityUS, LitersToGallons, "gpm");
    handsOver(cmdOK, [this] { return target(); });
    on(cmdOK, ".cmdOK", [this] { confirm(); });
    showBoxes(); // none until it serves a method
}

bool frmMetricCalc::openFor(const QString& tag) {
    if (std::ranges::find(services, tag.toStdString(), &Service::tag) == services.end())
        return false;
    if (const Screen* open = Screens::find("frmMetricCalc"); open && open->Tag != tag)
        Screens::unload("frmMetricCalc"); // its boxes belong to another method
    auto* pad = static_cast<frmMetricCalc*>(Screens::load("frmMetricCalc"));
    if (!pad)
        return true; // its failure has already been reported
    if (pad->Tag != tag) {
        pad->Tag = tag;
        pad->showBoxes();
    }
    pad->setTarget(tag.section('-', 0, 0));
    Screens::show("frmMetricCalc");
    return true;
}

void frmMetricCalc::showBoxes() {
    struct Row {
        QLineEdit* box;
        QList<QWidget*> others; // the heading and labels of the box's line
    };
    const Row rows[] = {
        {txtBldgHeight, {lblBldDimensions, lblHeight, lblBldgHeightUM, lblBldgHeightUS}},
        {txtBldgWidth, {lblBldDimensions, lblWidth, lblBldgWidthUM, lblBldgWidthUS}},
        {txtBldgDepth, {lblBldDimensions, lblDepth, lblBldgDepthUM, lblBldgDepthUS}},
        {txtChillerTons, {lblChillerTons, lblChillerTonsUM, lblChillerTonsUS}},
        {txtPipeLength, {lblPipeLength, lblPipeLengthUM, lblPipeLengthUS}},
        {txtVolBoiler, {lblVolumes, lblBoiler, lblBoilerUM, lblBoilerUS}},
        {txtVolOthrComp, {lblVolumes, lblOthrComp, lblOthrCompUM, lblOthrCompUS}},
        {txtVolWtrHtr, {lblVolumes, lblWtrHtr, lblWtrHtrUM, lblWtrHtrUS}},
        {txtPumpCapacity, {lblPumpCapacity, lblPumpCapacityUM, lblPumpCapacityUS}},
    };
    const std::string tag = Tag.toStdString();
    const auto needed = [&](const Row& row) {
        const std::string box = row.box->objectName().toStdString();
        return std::ranges::any_of(services, [&](const Service& s) { return s.tag == tag && s.box == box; });
    };
    for (const bool shown : {false, true}) // a heading covers several boxes
        for (const Row& row : rows)
            if (needed(row) == shown)
                for (QWidget* widget : row.others + QList<QWidget*>{row.box})
                    widget->setVisible(shown);
    if (tag == "frmCalcExpTSF-bttnDetail") // any piece of equipment
        lblBoiler->setText("Fixture");
}

void frmMetricCalc::confirm() {
    const std::string tag = Tag.toStdString();
    for (const Service& service : services)
        if (service.tag == tag)
            handOver(control<QLineEdit>(service.box), service.target);
    Screens::unload(name());
}
