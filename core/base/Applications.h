#pragma once

#include <array>
#include <optional>
#include <string_view>

/// What a tank is used for. Code that treats each one differently uses a switch without a default, so that
/// the compiler flags whatever a sixth application would miss.
enum class Application { Expansion, Thermal, Hydropneumatic, Shock, Package };

/// The smallest required size of a tank in gallons: less than this becomes this.
inline constexpr double smallestSize = .1;

/// The series of plain steel tanks, which have no bladder and no precharge.
inline constexpr std::string_view plainSteelSeries = "RB";

/// Permitted temperature entries in °F.
struct TemperatureLimits {
    double minimumLow;
    double minimumHigh;
    double maximumLow;
    double maximumHigh;
};

/// The differences between the applications, one row each.
struct ApplicationInfo {
    Application application;
    std::string_view name; // as the session and the screens show it
    std::string_view code; // as the catalogue stores it
    int helpContext;
    std::string_view conditionsScreen;
    std::string_view resultsScreen;
    std::string_view
        conditionsHeading;          // heading of the conditions screen; empty if it has a screen of its own
    std::string_view volumeCaption; // label of the volume entry
    std::string_view resultCaption; // label of the same volume in the results
    /// Absent for expansion tanks, whose limits come from the fluid.
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
const ApplicationInfo& infoOf(Application application);
/// The application with a display name such as "Expansion Tank" (case-sensitive); nothing for other text.
std::optional<Application> applicationNamed(std::string_view name);
/// The application with a catalogue code such as "EXP"; nothing for other text.
std::optional<Application> applicationCoded(std::string_view code);
