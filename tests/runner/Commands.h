#pragma once

#include "tests/runner/Stage.h"

#include <QHash>
#include <QStringList>

/// A command of the scenarios: the first word of a line. Throws Failure.
struct Command {
    void (*run)(Stage& stage, const QStringList& words);
    int leastWords;
    bool acts = false; // prepared answers must have been asked for by its end
};

/// The commands that do what a user does, or prepare what the program will meet.
const QHash<QString, Command>& actionCommands();
/// The commands that compare what a user sees, and what is stored, with what is expected.
const QHash<QString, Command>& expectationCommands();
