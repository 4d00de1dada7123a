#include "estimates/Estimates.h"

#include "estimates/frmPipeSelect.h"

void registerEstimates() {
    Screens::add("frmPipeSelect", [] { return new frmPipeSelect; });
}
