#pragma once

#include "core/base/Applications.h"

/// Opens the results of the tank line at work, with a warning where no single tank is enough.
void openResults(Application application, bool severalTanks);
