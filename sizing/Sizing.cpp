#include "sizing/Sizing.h"

#include "core/shell/Screens.h"
#include "sizing/frmJobConditions.h"
#include "sizing/frmMetric.h"
#include "sizing/frmResults.h"
#include "sizing/frmResultsConvert.h"
#include "sizing/frmTankSeries.h"
#include "sizing/frmtankselection.h"

void registerSizing() {
    Screens::add("frmJobConditions", [] { return new frmJobConditions; });
    Screens::add("frmMetric", [] { return new frmMetric; });
    Screens::add("frmTankSeries", [] { return new frmTankSeries; });
    Screens::add("frmtankselection", [] { return new frmtankselection; });
    Screens::add("frmResults", [] { return new frmResults; });
    Screens::add("frmResultsConvert", [] { return new frmResultsConvert; });
}
