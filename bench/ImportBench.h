#pragma once

/// Registers the benchmarks of the import of conditions.
void registerImportBenchmarks();
