#pragma once

#include "core/base/Fault.h"

#include <cmath>

/// The value itself. Throws Fault 6 when it overflows a double.
inline double requireFinite(double value) {
    if (!std::isfinite(value))
        throw Fault(Fault::Overflow, "Overflow");
    return value;
}
