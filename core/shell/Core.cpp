#include "core/shell/Core.h"

#include "core/shell/frmDatabasePath.h"
#include "core/shell/frmError.h"
#include "core/shell/frmSplash.h"

void registerCore() {
    Screens::add("frmSplash", [] { return new frmSplash; });
    Screens::add("frmDatabasePath", [] { return new frmDatabasePath; });
    Screens::add("frmError", [] { return new frmError; });
}
