#pragma once

#include "core/base/Fault.h"

#include <QString>

#include <functional>

namespace Faults {

/// The only error trap: runs a procedure and passes a failure to the handler, with the name of the routine
/// that failed, or else the given name. The module is "Splash" or empty. True on success.
bool runTrapped(const QString& codeSource, const std::function<void()>& procedure,
                const QString& module = {});

/// While one lives, the trap lets failures through: for what is made whole or not at all, out of routines
/// that otherwise report a failure and go on.
class Untrapped {
  public:
    Untrapped();
    ~Untrapped();
    Q_DISABLE_COPY_MOVE(Untrapped)
};

/// How many failures there have been so far.
int failures();

/// What the trap does with a failure.
using FailureHandler =
    std::function<void(const Fault& fault, const QString& codeSource, const QString& module)>;
void setFailureHandler(FailureHandler handler);

} // namespace Faults
