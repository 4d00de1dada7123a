#pragma once

class Report;

/// The start routines of the four submittals. Each reads the session's tank line and its model and fills in
/// the fields of its page. A failure opens the error dialog; fields filled in so far stay.
void startBladderSubmittal(Report& report);
void startSteelSubmittal(Report& report);
void startPackageSubmittal(Report& report);
void startShockSubmittal(Report& report);
