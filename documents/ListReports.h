#pragma once

class Report;

/// The start routines of the reports that are lists. A failure ends in the error dialog; the pages then show
/// the data source as it stood.
void StartTankList(Report& report);
void StartPackageList(Report& report);
void StartSchedule(Report& report);

/// The commands of the Reports menu: the standard models of an application, and the schedule of the job.
void registerListCommands();
