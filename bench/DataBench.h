#pragma once

/// Registers the benchmarks of searches and saves, without screens.
void registerDataBenchmarks();
