#pragma once

#include "core/store/Gateway.h"
#include "tests/support/OfficeDatabase.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <optional>

/// A test that runs on a file and on an office, each empty and its own. The catalogue is a file in both.
class BothEngines : public testing::TestWithParam<const char*> {
  protected:
    BothEngines() {
        home.installData();
        if (onOffice())
            office.emplace().use();
    }

    static bool onOffice() { return GetParam() == std::string_view("Office"); }

    TemporaryHome home;
    std::optional<OfficeDatabase> office;
};

/// Names the engine in the test's name.
#define ON_BOTH_ENGINES(suite)                                                                               \
    INSTANTIATE_TEST_SUITE_P(Engines, suite, testing::Values("File", "Office"),                              \
                             [](const auto& engine) { return engine.param; })
