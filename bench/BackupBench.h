#pragma once

/// Registers the benchmarks for backups of the user's data, with 100,000 tank lines.
void registerBackupBenchmarks();
