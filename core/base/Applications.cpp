#include "core/base/Applications.h"

#include <algorithm>

namespace {

std::optional<Application> applicationWith(std::string_view ApplicationInfo::*member, std::string_view text) {
    const auto* row = std::ranges::find(allApplications, text, member);
    return row == allApplications.end() ? std::nullopt : std::optional(row->application);
}

} // namespace

const ApplicationInfo& infoOf(Application application) {
    return *std::ranges::find(allApplications, application, &ApplicationInfo::application);
}

std::optional<Application> applicationNamed(std::string_view name) {
    return applicationWith(&ApplicationInfo::name, name);
}

std::optional<Application> applicationCoded(std::string_view code) {
    return applicationWith(&ApplicationInfo::code, code);
}
