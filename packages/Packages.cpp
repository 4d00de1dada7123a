#include "packages/Packages.h"

#include "core/shell/Screens.h"
#include "packages/frmPKGSelect.h"

void registerPackages() {
    Screens::add("frmPKGSelect", [] { return new frmPKGSelect; });
}
