#pragma once

#include "tests/support/ScriptedDialogs.h"

#include <QSize>
#include <QString>

/// Why a line of a scenario failed.
struct Failure {
    QString what;
};

/// What the commands of a scenario work on.
struct Stage {
    ScriptedDialogs& dialogs;
    QString shotFolder;     // empty to take no pictures
    QString homeFolder;     // a scenario's relative paths start here
    QString scenarioFolder; // holds the golden texts
    bool started = false;
    QSize window = {1180, 800}; // of the main window; the offscreen display is smaller than real ones
};
