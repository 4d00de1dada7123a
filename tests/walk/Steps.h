#pragma once

#include "tests/walk/Walk.h"

/// The steps of a walk, by what they act on, and what several of them use.
namespace Steps {

QList<Step> menuSteps(); // commands of the menu, and windows
QList<Step> jobSteps();
QList<Step> sizingSteps();
QList<Step> estimateSteps(); // with the metric pads
QList<Step> resultSteps();   // with tags, schedule and packages

/// The conditions screen of an application, by its display name.
extern const QMap<QString, QString> conditionsOf;
/// An application's display name, by its code.
extern const QMap<QString, QString> applicationsByCode;

/// What a column of a screen's list shows.
QStringList rowsOf(const QString& window, int column = 0);
/// Presses Cancel, which does the same as closing by the title bar.
void cancel(Walk& walk, const QString& window);
/// Selects a row of a screen's list.
void chooseRow(Walk& walk, const QString& window);
/// Presses a button that opens a screen for the same task.
void openBeside(Walk& walk, const QString& window, const QString& button, const QString& screen);
/// A report shows what it is about, whatever the viewer was opened for.
void showReport(Notes& notes, const Work& work, About about);
/// A tank without a model stops the schedule with an error, which the user closes.
bool scheduleStops(const Walk& walk, const QString& job);
void closeError(Walk& walk);

} // namespace Steps
