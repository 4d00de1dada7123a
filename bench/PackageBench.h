#pragma once

/// Registers the benchmarks of a job's package of documents.
void registerPackageBenchmarks();
