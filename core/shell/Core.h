#pragma once

/// Makes the screens of this folder known.
void registerCore();
