#pragma once

class Report;

/// The start routines of the four submittals: each reads the session's tank line and its model and fills the
/// fields of its page. A failure ends in the error dialog; what was filled by then stays.
void StartBladderSubmittal(Report& report);
void StartSteelSubmittal(Report& report);
void StartPackageSubmittal(Report& report);
void StartShockSubmittal(Report& report);
