#pragma once

#include <QWidget>

#include <cstdint>

/// Checks on entry fields (text and combo boxes). A field that fails stays marked until its text changes or
/// its next check passes.
namespace Fields {

/// True for a number of 0 or more. An empty field becomes "0" and passes. Without a message an invalid text
/// becomes "0" too.
bool ValidateNumeric(QWidget* field, bool showMessage);
/// True if the number is within the limits, inclusive, or exactly 0. Throws Fault 13 for other text.
bool ValidateMinMax(QWidget* field, double minimum, double maximum);
/// True if the first number is below the second. If not, both are marked, and each stays so until it is
/// changed or the other one is changed so that they are in order. Throws Fault 13 for other text.
bool ValidateValueRange(QWidget* minimumField, QWidget* maximumField);
/// Unmarks a field refused by `ValidateValueRange` and its other half, if the two are in order now.
void unmarkOrdered(QWidget* field);
bool ValidateValueEntered(QWidget* field, bool showMessage);
bool ValidateItemSelected(QWidget* field, bool showMessage);
/// Whether a field has a value. Without a message: an empty one is marked and gets the focus.
bool isEntered(QWidget* field);

/// The help topic of the session's application; 0 if there is none.
std::int16_t SetHelpContext();

} // namespace Fields
