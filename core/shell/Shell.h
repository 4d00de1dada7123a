#pragma once

/// Registers the screens of this folder and the error trap's handler.
void registerShell();
