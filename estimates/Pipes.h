#pragma once

#include <QString>

namespace Pipes {

/// Whether the catalogue has a pipe: by its metric key for the mode "Metric", else by its U.S. key. An empty
/// text passes. Tells the user when it has none. Throws DatabaseFault for a text that breaks the query, as
/// an apostrophe does.
bool ValidatePipeSize(const QString& text, const QString& mode);

/// The U.S. key of a pipe by its metric key; an empty text when the catalogue has none. Throws DatabaseFault.
QString PipeIndexOf(const QString& metricIndex);

/// Opens the chooser for a screen, which takes the pipe that the user chooses.
void OpenPipeChooser(const QString& opener);
/// Closes the chooser when it stands open for a screen that goes.
void ClosePipeChooser(const QString& opener);

} // namespace Pipes
