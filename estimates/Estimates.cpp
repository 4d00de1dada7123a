#include "estimates/Estimates.h"

#include "core/shell/Screens.h"
#include "estimates/frmPipeSelect.h"

void registerEstimates() {
    Screens::add("frmPipeSelect", [] { return new frmPipeSelect; });
}
