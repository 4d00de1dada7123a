#include "jobs/TankWork.h"

#include "core/base/Text.h"
#include "core/store/JobHeader.h"

namespace TankWork {

namespace {

const ApplicationInfo& infoFor(const std::optional<Application>& application) {
    return infoOf(application.value_or(Application::Expansion));
}

} // namespace

QString conditionsScreenOf(const QString& jobID, const std::optional<Application>& application) {
    return jobID == Records::reservedJob() ? QStringLiteral("frmConvertSteel")
                                           : toQString(infoFor(application).conditionsScreen);
}

QString resultsScreenOf(const QString& jobID, const std::optional<Application>& application) {
    return jobID == Records::reservedJob() ? QStringLiteral("frmResultsConvert")
                                           : toQString(infoFor(application).resultsScreen);
}

} // namespace TankWork
