#pragma once

#include "core/store/DataCheck.h"

#include <functional>

/// Receives the result of the data check, in the GUI thread.
using CheckListener = std::function<void(const DataCheck::Findings& findings)>;

/// Background work on the user's data after the start: the daily backup and a quick check, in a thread and
/// over connections of their own. The main window and the program wait for it when they close.
void beginStartWork(const QString& userFile, const CheckListener& checked);
