#pragma once

#include <QString>

class QLineEdit;

namespace Pipes {

/// Whether the catalogue has the pipe in a box: by its metric key in "Metric" mode, otherwise by its U.S.
/// key. An empty text passes. Tells the user when there is none, and marks the box. Throws DatabaseFault for
/// text that breaks the query, such as an apostrophe.
bool ValidatePipeSize(QLineEdit* box, const QString& mode);

/// Opens the chooser for a screen, which receives the pipe that the user chooses.
void openPipeChooser(const QString& opener);
/// Closes the chooser if it is open for a screen that is closing.
void closePipeChooser(const QString& opener);

} // namespace Pipes
