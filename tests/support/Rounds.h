#pragma once

#include <QtGlobal>

/// How often a test of chance repeats: a few times in every run, and as often as it takes to trust it in
/// scripts/endurance.
inline int Rounds(int everyRun, int endurance) {
    return qEnvironmentVariableIsSet("BRENNOVAL_ENDURANCE") ? endurance : everyRun;
}
