// One of many users of an office: saves jobs and tanks through the program's save code until the standard
// input ends, some in jobs that others work on too, and tells of each save that has returned, or why not.
// Usage: brennoval-office-user SESSION_FOLDER ADDRESS NAME SHARED_JOB...

#include "core/base/Fault.h"
#include "core/store/JobHeader.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSettings>

#include <cstdio>

#include <poll.h>
#include <unistd.h>

using namespace Registry;

namespace {

void tell(const QString& what) {
    std::puts(what.toUtf8().constData());
    std::fflush(stdout);
}

bool isToStop() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, 0) > 0;
}

class User {
  public:
    User(QString userName, QStringList jobs) : name(std::move(userName)), shared(std::move(jobs)) {}

    /// One save of a series: a job, its first tank, then tanks in the shared jobs, each sized after it is
    /// added.
    void step() {
        constexpr int stepsOfAJob = 12;
        try {
            QElapsedTimer clock;
            clock.start();
            const QString done = next(steps % stepsOfAJob);
            tell(QString("%1 %2").arg(done).arg(clock.nsecsElapsed() / 1000));
        } catch (const Fault& fault) {
            tank.clear();
            tell("failed " + QString::fromUtf8(fault.what()).simplified());
        }
        ++steps;
    }

  private:
    QString next(int step) {
        if (step == 0)
            return addJob();
        if (step % 2 == 1)
            return addTank(step == 1 ? job : shared[steps / 2 % shared.size()]);
        return sizeTank();
    }

    QString addJob() {
        const QString newJob = QString("%1-%2").arg(name).arg(steps);
        if (!Records::addJobHeader({.jobID = newJob,
                                    .jobDscrptn = "Description",
                                    .engineer = {},
                                    .contractor = {},
                                    .jobInfo = {},
                                    .dateCreated = QDateTime::currentDateTime()}))
            return "exists " + newJob;
        job = newJob;
        return "job " + newJob;
    }

    QString addTank(const QString& toJob) {
        TankLine line;
        line.jobID = toJob;
        line.dateCreated = QDateTime::currentDateTime();
        line.totSysVolume = steps;
        line.sysFluidType = name;
        Session::Mode.write(Session::Modes::New);
        Session::TankID.write({});
        std::optional<TankLine> asRead;
        tank.clear();
        Records::saveTankLine(line, TankLine::conditions(), asRead, Record::IfChanged::Refuse);
        tank = Session::TankID.text();
        return QString("tank %1 %2").arg(tank).arg(steps);
    }

    /// The sizes of the tank that was added last, as the second screen stores them.
    QString sizeTank() {
        if (tank.isEmpty())
            return "nothing";
        auto line = Records::findTankLine(tank);
        if (!line)
            return "lost " + tank;
        std::optional<TankLine> asRead = line;
        line->requiredVolume = steps;
        Records::updateTankLine(tank, *line, TankLine::sizes(), asRead, Record::IfChanged::Refuse);
        return QString("sized %1 %2").arg(tank).arg(steps);
    }

    QString name;
    QStringList shared;
    QString job = shared.first(); // the newest of the user's own
    QString tank;
    int steps = 0;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 5)
        return 2;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, arguments[1]);
    QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, arguments[1] + "/machine");
    createRegistryKey(HKeyCurrentUser(), AppRegistryKey());
    SetRegValue(AppRegistryKey(), "UserDatabase", arguments[2], RegistryType::Text);
    User user(arguments[3], arguments.sliced(4));
    while (!isToStop())
        user.step();
    return 0;
}
