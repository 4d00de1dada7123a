#include "core/base/Applications.h"

#include "core/base/Fault.h"

#include <algorithm>

namespace {

/// A switch, so that the compiler also flags an application without a row.
constexpr const ApplicationInfo& rowOf(Application application) {
    switch (application) {
    case Application::Expansion:
        return std::get<0>(allApplications);
    case Application::Thermal:
        return std::get<1>(allApplications);
    case Application::Hydropneumatic:
        return std::get<2>(allApplications);
    case Application::Shock:
        return std::get<3>(allApplications);
    case Application::Package:
        return std::get<4>(allApplications);
    }
    throw Fault(Fault::InternalError, "No such application");
}
static_assert(std::ranges::all_of(allApplications, [](const ApplicationInfo& info) {
    return &rowOf(info.application) == &info;
}));

std::optional<Application> applicationWith(std::string_view ApplicationInfo::*member, std::string_view text) {
    const auto* row = std::ranges::find(allApplications, text, member);
    return row == allApplications.end() ? std::nullopt : std::optional(row->application);
}

} // namespace

const ApplicationInfo& infoOf(Application application) {
    return rowOf(application);
}

std::optional<Application> applicationNamed(std::string_view name) {
    return applicationWith(&ApplicationInfo::name, name);
}

std::optional<Application> applicationCoded(std::string_view code) {
    return applicationWith(&ApplicationInfo::code, code);
}
