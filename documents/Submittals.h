#pragma once

#include <QString>

namespace UtilityFunctions {

/// The name of the report that a model's submittal takes; an empty text when the catalogue gives none.
QString SetReport(const QString& model);

/// Prints the report of a screen, after the printer dialog; a beep when the screen has none.
void PrintSubmittal(const QString& screen);

/// Shows the report of a screen in the viewer; a beep when the screen has none.
void PreviewSubmittal(const QString& screen);

} // namespace UtilityFunctions
