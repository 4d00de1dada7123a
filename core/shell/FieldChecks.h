#pragma once

#include <QString>
#include <QWidget>

#include <cstdint>

class Screen;

/// The checks on entry fields (text and combo boxes) and the small services that every screen calls. A
/// field that fails is painted until its next check passes.
namespace UtilityFunctions {

/// True for a number of 0 or more. An empty field becomes "0" and passes. Without a message a bad text
/// becomes "0" too.
bool ValidateNumeric(QWidget* field, bool showMessage);
/// True when the number is within the limits, both included, or exactly 0.
bool ValidateMinMax(QWidget* field, double minimum, double maximum);
/// True when the first number is below the second.
bool ValidateValueRange(QWidget* minimumField, QWidget* maximumField);
bool ValidateValueEntered(QWidget* field, bool showMessage);
bool ValidateItemSelected(QWidget* field, bool showMessage);

/// The text of a text box, text area or combo box.
QString FieldText(const QWidget* field);
void SetFieldText(QWidget* field, const QString& text);
/// Paints a field as wrong, and back in the system's colours.
void MarkField(QWidget* field);
void UnmarkField(QWidget* field);
bool IsMarked(const QWidget* field);

/// Doubles each apostrophe, for a quoted text in SQL.
QString SqlEscape(const QString& text);
/// Inches as whole number and fraction with the inch mark; a value below one stays decimal.
QString FractionConversion(double value);
/// The next free tank number of the session's job.
std::int16_t GetNextNumber();
/// Deletes the header of a job that has no tank lines.
void CancelJobInput(const QString& jobID);
/// The help topic of the session's application, 0 when it has none.
std::int16_t SetHelpContext();
/// Places a screen in the middle of the main window, at its top edge when it is taller.
void FormatScreen(Screen& screen);
/// Puts the version back into the first status panel.
void SetStatusBarText();

QString AppNameExpansion();
QString AppNameThermal();
QString AppNameHydro();
QString AppNameShock();
QString AppNamePackage();

} // namespace UtilityFunctions
