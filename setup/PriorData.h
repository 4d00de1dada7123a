#pragma once

namespace UtilityFunctions {

/// Takes over the jobs, names and defaults of the earlier program, whose file the installer's datasource.ini
/// names, or the user when there is none. All of it stands in the user's data together, with the mark that it
/// was done, or nothing of it does. True when all jobs and tanks that the file counts are there afterwards. A
/// file that cannot be read counts none, and the conversion is marked as done; other failures are reported
/// and it stays to be done.
bool ConvertPriorData();

} // namespace UtilityFunctions
