#pragma once

/// Makes the screens of this folder known, and the error trap's handler.
void registerShell();
