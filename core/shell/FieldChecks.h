#pragma once

#include <QWidget>

#include <cstdint>

/// The checks on entry fields (text and combo boxes). A field that fails is painted until its next check
/// passes.
namespace Fields {

/// True for a number of 0 or more. An empty field becomes "0" and passes. Without a message a bad text
/// becomes "0" too.
bool ValidateNumeric(QWidget* field, bool showMessage);
/// True when the number is within the limits, both included, or exactly 0. Throws Fault 13 for other text.
bool ValidateMinMax(QWidget* field, double minimum, double maximum);
/// True when the first number is below the second. Throws Fault 13 for other texts.
bool ValidateValueRange(QWidget* minimumField, QWidget* maximumField);
bool ValidateValueEntered(QWidget* field, bool showMessage);
bool ValidateItemSelected(QWidget* field, bool showMessage);

/// The help topic of the session's application, 0 when it has none.
std::int16_t SetHelpContext();

} // namespace Fields
