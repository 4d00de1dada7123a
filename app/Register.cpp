#include "app/Register.h"

#include "calculation/CalculationSheet.h"
#include "core/shell/Shell.h"
#include "documents/Documents.h"
#include "estimates/Estimates.h"
#include "extras/Extras.h"
#include "jobs/Jobs.h"
#include "packages/Packages.h"
#include "setup/Setup.h"
#include "shock/Shock.h"
#include "sizing/Sizing.h"

void registerAll() {
    registerShell();
    registerJobs();
    registerDocuments();
    registerEstimates();
    registerShock();
    registerPackages();
    registerSizing();
    registerCalculation();
    registerSetup();
    registerExtras();
}
