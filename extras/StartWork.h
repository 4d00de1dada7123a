#pragma once

#include <QString>

/// What is done for the user's data after the start, beside his first steps: the copy of the day, in a thread
/// of its own over a connection of its own. The main window and the program wait for it when they end.
void BeginStartWork(const QString& userFile);
