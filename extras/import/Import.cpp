#include "extras/import/Import.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "extras/import/frmImport.h"

void registerImport() {
    Screens::add("frmImport", [] { return new frmImport; });
    Commands::set("mnuImport", [] { Screens::open("frmImport"); });
}
