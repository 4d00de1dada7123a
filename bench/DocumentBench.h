#pragma once

/// Makes known how long reports, their screens and their files take.
void registerDocumentBenchmarks();
/// What the pages of the longest list take, in megabytes; 0 when it was not made.
double LongestListMemory();
