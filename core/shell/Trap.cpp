#include "core/shell/Trap.h"

#include <utility>

namespace Faults {

namespace {
FailureHandler& failureHandler() {
    static FailureHandler handler = [](const Fault&, const QString&, const QString&) {};
    return handler;
}

int& failureCount() {
    static int count = 0;
    return count;
}

int& untrappedDepth() {
    static int depth = 0;
    return depth;
}
} // namespace

Untrapped::Untrapped() {
    ++untrappedDepth();
}

Untrapped::~Untrapped() {
    --untrappedDepth();
}

int failures() {
    return failureCount();
}

bool runTrapped(const QString& codeSource, const std::function<void()>& procedure, const QString& module) {
    try {
        underName(codeSource.toStdString(), procedure);
        return true;
    } catch (const Fault& fault) {
        if (untrappedDepth() > 0)
            throw;
        ++failureCount();
        failureHandler()(fault, QString::fromStdString(fault.routine()), module);
        return false;
    }
}

void setFailureHandler(FailureHandler handler) {
    failureHandler() = std::move(handler);
}

} // namespace Faults
