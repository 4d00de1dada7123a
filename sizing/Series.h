#pragma once

#include "core/base/Applications.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

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

/// The codes of the series of an application in that order. Shock arrestors have one series, which bears the
/// application's code; packages have none.
std::vector<std::string_view> seriesOf(Application application);

/// The application of a series or, failing that, the one with this code; nothing for an unknown code.
std::optional<Application> applicationOfSeries(std::string_view code);
