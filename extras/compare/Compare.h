#pragma once

/// Registers the comparison of models: its screen, command and report.
void registerCompare();
