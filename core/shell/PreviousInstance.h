#pragma once

/// Whether another instance of the program was running at the first call, which main makes at the start.
bool previousInstance();
