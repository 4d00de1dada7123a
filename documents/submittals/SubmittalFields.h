#pragma once

class Report;

/// The start routines of the four submittals. Each reads the session's tank line and its model and fills in
/// the fields of its page. A failure opens the error dialog; fields filled in so far stay.
void StartBladderSubmittal(Report& report);
void StartSteelSubmittal(Report& report);
void StartPackageSubmittal(Report& report);
void StartShockSubmittal(Report& report);
