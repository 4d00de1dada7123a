#pragma once

#include "core/base/Applications.h"

#include <array>
#include <string_view>

/// What a double click on a series does.
enum class DoubleClick { GoesOn, OnlyChooses, IsIgnored };

/// A series of tanks that can be chosen for an application.
struct Series {
    const char* option; // its button
    const char* code;   // in the catalogue and in tank lines
    Application application;
    /// The stored code that selects the button again. For RCBD the two codes differ, so a stored RCBD is not
    /// selected again; this is deliberate.
    const char* storedCode = code;
    DoubleClick doubleClick = DoubleClick::GoesOn;
};

/// All series in the order in which they are offered.
inline constexpr std::array<Series, 14> allSeries = {{
    {"OptRCB", "RCB", Application::Expansion},
    {"OptRHB", "RHB", Application::Expansion},
    {"OptRCBD", "RCBD", Application::Expansion, "RCD"},
    {"OptRC", "RC", Application::Expansion},
    {"OptRGB", "RGB", Application::Expansion},
    {"OptRB", "RB", Application::Expansion},
    {"OptRF", "R", Application::Expansion},
    {"OptGWB", "GWB", Application::Thermal},
    {"OptGW", "GW", Application::Thermal, "GW", DoubleClick::OnlyChooses},
    {"OptGGB", "GGB", Application::Thermal, "GGB", DoubleClick::IsIgnored},
    {"OptGD", "G", Application::Thermal},
    {"OptJW", "JW", Application::Hydropneumatic},
    {"OptJWB", "JWB", Application::Hydropneumatic},
    {"OptJWG", "JWG", Application::Hydropneumatic},
}};
