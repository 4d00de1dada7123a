#pragma once

#include "core/base/Fault.h"

#include <QString>

#include <functional>

namespace Faults {

/// The one error trap: runs a procedure, and hands a failure that leaves it to the handler, under the name of
/// the routine in which it happened, or else the given name. The module is "Splash" or empty. True when
/// nothing failed.
bool Trap(const QString& codeSource, const std::function<void()>& procedure, const QString& module = {});

/// What the trap does with a failure.
using FailureHandler =
    std::function<void(const Fault& fault, const QString& codeSource, const QString& module)>;
void SetFailureHandler(FailureHandler handler);

} // namespace Faults
