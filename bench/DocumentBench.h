#pragma once

/// Registers the benchmarks for reports, their screens and their files.
void registerDocumentBenchmarks();
/// Memory that the pages of the longest list take, in megabytes; 0 if the list was not built.
double longestListMemory();
