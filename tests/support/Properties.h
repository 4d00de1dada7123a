#pragma once

#include <gtest/gtest.h>

#include <rapidcheck.h>

#include <sstream>
#include <utility>

/// Checks a property, which asserts with RC_ASSERT, for so many random cases, and reports the smallest case
/// that fails. The seed in the report goes into RC_PARAMS="seed=..." to play that failure again.
template<typename Property>
void expectForAll(int cases, Property&& property) {
    rc::detail::TestParams parameters = rc::detail::configuration().testParams;
    parameters.maxSuccess = cases;
    const rc::detail::TestResult result =
        rc::detail::checkTestable(std::forward<Property>(property), rc::detail::TestMetadata{}, parameters);
    if (result.template is<rc::detail::SuccessResult>())
        return;
    std::ostringstream report;
    rc::detail::printResultMessage(result, report);
    ADD_FAILURE() << report.str() << "\nseed " << parameters.seed;
}

/// A whole number from low on and below high, each as likely, in a case that expectForAll tries.
inline int drawBelow(int low, int high) {
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(low, high));
}
