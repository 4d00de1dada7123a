#pragma once

/// Registers the import of conditions: its screen and command.
void registerImport();
