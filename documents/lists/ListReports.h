#pragma once

/// Registers the list reports and the commands of the Reports menu that show them: the standard models of an
/// application, and the schedule of the job.
void registerLists();
