#include "sizing/Sizing.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "core/store/SessionStore.h"
#include "sizing/frmConvertSteel.h"
#include "sizing/frmJobConditions.h"
#include "sizing/frmMetric.h"
#include "sizing/frmResults.h"
#include "sizing/frmResultsConvert.h"
#include "sizing/frmTankSeries.h"
#include "sizing/frmtankselection.h"

namespace {

/// Starts a new conversion even if one is already open.
void convertSteelTank() {
    Session::Mode.write(Session::Modes::New);
    Session::JobID.write("");
    Session::TankID.write("");
    Screens::unload("frmConvertSteel");
    Screens::open("frmConvertSteel");
}

} // namespace

void registerSizing() {
    Screens::add("frmConvertSteel", [] { return new frmConvertSteel; });
    Screens::add("frmJobConditions", [] { return new frmJobConditions; });
    Screens::add("frmMetric", [] { return new frmMetric; });
    Screens::add("frmTankSeries", [] { return new frmTankSeries; });
    Screens::add("frmtankselection", [] { return new frmtankselection; });
    Screens::add("frmResults", [] { return new frmResults; });
    Screens::add("frmResultsConvert", [] { return new frmResultsConvert; });
    Commands::set("mnuConvert", convertSteelTank);
}
