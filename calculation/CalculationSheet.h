#pragma once

/// Registers the calculation sheet of a tank line and its command.
void registerCalculation();
