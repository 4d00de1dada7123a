#pragma once

/// Makes the screens and commands of this folder known.
void registerJobs();
