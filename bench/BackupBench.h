#pragma once

/// Registers the benchmarks of the copies of the user's data, on 100,000 tank lines.
void registerBackupBenchmarks();
