#pragma once
#include "core/shell/Screen.h" // IWYU pragma: export
