#include "core/shell/Subject.h"

#include "core/store/JobHeader.h"

QString Subjects::textOf(Subject subject, const Session::TaskValues& values) {
    QString job = values.jobID.value_or(QString());
    switch (subject) {
    case Subject::TankLine:
        return job + u'\n' + Session::lineOf(values) + u'\n' + values.tankClass.value_or(QString());
    case Subject::Job:
        return job;
    case Subject::None:
        return {};
    }
    return {};
}

QString Subjects::keyOf(Subject subject, const Session::TaskValues& values) {
    const QString line = subject == Subject::TankLine ? Session::lineOf(values) : QString();
    return subject == Subject::None || !line.isEmpty() ? line : values.jobID.value_or(QString());
}

bool Subjects::leaves(Subject subject, const Session::TaskValues& before, const Session::TaskValues& now) {
    const QString job = before.jobID.value_or(QString());
    const bool leavesJob = !job.isEmpty() && job != now.jobID.value_or(QString());
    const bool leavesTank =
        !Session::lineOf(before).isEmpty() && Session::lineOf(before) != Session::lineOf(now);
    switch (subject) {
    case Subject::TankLine:
        return leavesJob || leavesTank;
    case Subject::Job:
        return leavesJob;
    case Subject::None:
        return false;
    }
    return false;
}

std::optional<Gateway::DataState> Subjects::stateOf(Subject subject, const Session::TaskValues& values) {
    return Gateway::readDataState(subject == Subject::None ? QString() : values.jobID.value_or(QString()),
                                  subject == Subject::TankLine ? Session::lineOf(values) : QString());
}

bool Subjects::exists(Subject subject, const Session::TaskValues& values, const Gateway::DataState& state) {
    const bool hasTank = subject == Subject::TankLine && !Session::lineOf(values).isEmpty();
    return hasTank ? state.tankExists : state.jobExists;
}

bool Subjects::createJob(Subject subject, const Session::TaskValues& values) {
    return subject == Subject::TankLine && Session::lineOf(values).isEmpty() &&
           values.jobID == Records::reservedJob();
}

bool Subjects::isOf(Subject subject, const Session::TaskValues& values, const QString& jobID,
                    const QString& tankID) {
    const auto same = [](const QString& one, const QString& other) {
        return one.compare(other, Qt::CaseInsensitive) == 0;
    };
    if (tankID.isEmpty())
        return subject != Subject::None && same(values.jobID.value_or(QString()), jobID);
    return subject == Subject::TankLine && same(Session::lineOf(values), tankID);
}
