#pragma once

/// Registers the import of conditions from a table: its screen and command.
void registerImport();
