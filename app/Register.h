#pragma once

/// Makes all screens and commands of the program known.
void registerAll();
