#pragma once

#include <QtGlobal>

/// How often a random test repeats: a few times in every run, and often enough to be trusted in
/// scripts/endurance.
inline int roundCount(int everyRun, int endurance) {
    return qEnvironmentVariableIsSet("BRENNOVAL_ENDURANCE") ? endurance : everyRun;
}
