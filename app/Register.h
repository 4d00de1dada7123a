#pragma once

/// Registers all screens and commands of the program.
void registerAll();
