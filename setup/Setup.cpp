#include "setup/Setup.h"

#include "core/shell/Commands.h"
#include "core/shell/Screens.h"
#include "setup/frmFirstTime.h"
#include "setup/frmUserInput.h"
#include "setup/frmValidateRep.h"

void registerSetup() {
    Screens::add("frmFirstTime", [] { return new frmFirstTime; });
    Screens::add("frmUserInput", [] { return new frmUserInput; });
    Screens::add("frmValidateRep", [] { return new frmValidateRep; });
    Commands::set("mnuSetup", [] { Screens::open("frmUserInput"); });
}
