#pragma once

/// Whether another copy of the program was running when this was first asked; main asks at the start.
bool PreviousInstance();
