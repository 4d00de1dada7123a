#pragma once

#include <array>
#include <optional>
#include <string_view>

/// What a tank is for. Code that must treat each differently is a switch without a default, so that the
/// compiler finds what a sixth application would miss.
enum class Application { Expansion, Thermal, Hydropneumatic, Shock, Package };

/// Temperatures in °F that may be entered.
struct TemperatureLimits {
    double minimumLow;
    double minimumHigh;
    double maximumLow;
    double maximumHigh;
};

/// What sets the applications apart, in one row each.
struct ApplicationInfo {
    Application application;
    std::string_view name; // as the session and the screens show it
    std::string_view code; // in the catalogue
    int helpContext;
    std::string_view conditionsScreen;
    std::string_view resultsScreen;
    std::string_view conditionsHeading; // of the conditions screen; empty where it has a screen of its own
    std::string_view volumeCaption;     // of the volume that the user enters
    std::string_view resultCaption;     // of the same volume among the results
    /// Where the application sets them: those of expansion tanks are their fluid's.
    std::optional<TemperatureLimits> limits = std::nullopt;
};

inline constexpr std::array<ApplicationInfo, 5> allApplications = {{
    {Application::Expansion, "Expansion Tank", "EXP", 101, "frmJobConditions", "frmResults",
     "Enter Job Conditions For Expansion Tank...", "Total &System Fluid Content", "System Volume:"},
    {Application::Thermal, "Thermal Expansion Tank", "THM", 102, "frmJobConditions", "frmResults",
     "Enter Job Conditions For Thermal Expansion Tank...", "Total &System Fluid Content",
     "System Volume:", TemperatureLimits{40, 100, 90, 245}}, // deliberately above every fluid's maximum
    {Application::Hydropneumatic, "Hydropneumatic Tank", "HYD", 103, "frmJobConditions", "frmResults",
     "Enter Job Conditions For Hydro-Pneumatic Tank...", "&Drawdown", "Drawdown",
     TemperatureLimits{-999999, 999999, -999999, 999999}},
    {Application::Shock, "Shock Arrestor Tank", "SHK", 104, "frmJobConditionsSHK", "frmResultSHK", "", "",
     ""},
    {Application::Package, "Glycol Make-up Package", "PKG", 105, "frmPKGSelect", "frmPKGSelect", "", "", ""},
}};

/// The row of an application.
const ApplicationInfo& InfoOf(Application application);
/// The application of a display name such as "Expansion Tank", exact in case; nothing for another text.
std::optional<Application> ApplicationNamed(std::string_view name);
/// The application of a catalogue code such as "EXP"; nothing for another text.
std::optional<Application> ApplicationCoded(std::string_view code);
