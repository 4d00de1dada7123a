#include "shock/Shock.h"

#include "core/shell/Screens.h"
#include "shock/frmJobConditionsSHK.h"
#include "shock/frmMetricSHK.h"
#include "shock/frmResultSHK.h"

void registerShock() {
    Screens::add("frmJobConditionsSHK", [] { return new frmJobConditionsSHK; });
    Screens::add("frmMetricSHK", [] { return new frmMetricSHK; });
    Screens::add("frmResultSHK", [] { return new frmResultSHK; });
}
