#include "core/Core.h"

#include "core/frmDatabasePath.h"
#include "core/frmError.h"
#include "core/frmSplash.h"

void registerCore() {
    Screens::add("frmSplash", [] { return new frmSplash; });
    Screens::add("frmDatabasePath", [] { return new frmDatabasePath; });
    Screens::add("frmError", [] { return new frmError; });
}
