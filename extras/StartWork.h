#pragma once

#include "core/store/DataCheck.h"

#include <functional>

/// Hears what the check of the data has found, in the thread of the windows.
using CheckListener = std::function<void(const DataCheck::Findings& findings)>;

/// What is done for the user's data after the start, beside his first steps: the copy of the day and a quick
/// check, in a thread of its own over connections of its own. The main window and the program wait for it
/// when they end.
void BeginStartWork(const QString& userFile, const CheckListener& checked);
