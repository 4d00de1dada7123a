#include "packages/Packages.h"

#include "packages/frmPKGSelect.h"

void registerPackages() {
    Screens::add("frmPKGSelect", [] { return new frmPKGSelect; });
}
