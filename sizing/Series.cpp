#include "sizing/Series.h"

#include <algorithm>

std::vector<std::string_view> seriesOf(Application application) {
    if (application == Application::Shock)
        return {infoOf(application).code};
    std::vector<std::string_view> codes;
    for (const Series& series : allSeries)
        if (series.application == application)
            codes.emplace_back(series.code);
    return codes;
}

std::optional<Application> applicationOfSeries(std::string_view code) {
    const auto* found = std::ranges::find(allSeries, code, &Series::code);
    return found == allSeries.end() ? applicationCoded(code) : found->application;
}
