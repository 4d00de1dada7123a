#include "shock/Shock.h"

#include "core/shell/Screens.h"
#include "shock/frmJobConditionsSHK.h"
#include "shock/frmResultSHK.h"

void registerShock() {
    Screens::add("frmJobConditionsSHK", [] { return new frmJobConditionsSHK; });
    Screens::add("frmResultSHK", [] { return new frmResultSHK; });
}
