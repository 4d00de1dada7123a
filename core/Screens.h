#pragma once
#include "core/Screen.h" // IWYU pragma: export
