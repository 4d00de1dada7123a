#pragma once

/// Registers the benchmarks of screens, from a press until they have painted.
void registerScreenBenchmarks();
