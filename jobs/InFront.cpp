#include "jobs/InFront.h"

#include "core/shell/Screens.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"

namespace InFront {

QString job() {
    const Screen* front = Screens::find(Screens::active());
    return front && front->shownRecord() != Subject::None ? Session::JobID.text() : QString();
}

std::optional<TankLine> tank() {
    const Screen* front = Screens::find(Screens::active());
    const QString tankID = Session::tankLine();
    if (!front || front->shownRecord() != Subject::TankLine || Screens::recordOf(*front) != tankID ||
        Session::Mode.text() == Session::Modes::Convert)
        return std::nullopt;
    std::optional<TankLine> line = Records::findTankLine(tankID);
    const QString jobID = line ? line->jobID.value_or(QString()) : QString();
    const bool ofJob = jobID.compare(Session::JobID.text(), Qt::CaseInsensitive) == 0;
    return ofJob && jobID != Records::reservedJob() ? line : std::nullopt;
}

} // namespace InFront
