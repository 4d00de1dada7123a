#pragma once

namespace PriorData {

/// Takes over the jobs, names and defaults of the earlier program, whose file the installer's datasource.ini
/// names, or the user when there is none. All of it stands in the user's data together, with the mark that it
/// was done, or nothing of it does. True when all jobs and tanks that the file counts are there afterwards,
/// so that the installer's file may go. One that cannot be read counts none, is put aside, and the conversion
/// is marked as done; if it cannot be put aside the result is false and it stays. Other failures are reported
/// and the conversion stays to be done.
bool ConvertPriorData();

/// Takes over jobs, tanks and names of a file of the user's choice beside what he has entered since, whole or
/// not at all; the file stays as it is. Jobs whose IDs he has already are named and can be left out, and a
/// short report ends it. Throws Fault.
void TakeOverPriorData();

} // namespace PriorData
