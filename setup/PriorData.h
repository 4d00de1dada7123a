#pragma once

namespace PriorData {

/// Takes over the jobs, names and defaults of the earlier program. The installer's datasource.ini names the
/// file; without one the user is asked. Everything is stored in one transaction, together with the mark that
/// it is done. True if all jobs and tanks that the file counts are there afterwards, so that the installer's
/// file may be deleted. A file that cannot be read counts as empty: it is put aside and the conversion is
/// marked as done; if it cannot be put aside, the result is false and it stays. Other failures are reported
/// and the conversion remains to be done.
bool ConvertPriorData();

/// Adds the jobs, tanks and names of a file that the user selects to their existing data, completely or not
/// at all; the file is not changed. Jobs with IDs that they already have are listed and can be skipped; a
/// short report follows at the end. Throws Fault.
void takeOverPriorData();

} // namespace PriorData
