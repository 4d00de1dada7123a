// The steps of the ordinary workflow in an office: how long they take next to a user's own file, next to
// their SQL through libpq alone, and over a longer way, and how often each asks the server. Usage:
// brennoval-office-bench [ROUNDS]

#include "bench/BenchData.h"
#include "bench/OfficeReplay.h"
#include "core/shell/DesktopApplication.h"
#include "core/shell/Screens.h"
#include "core/store/Deletion.h"
#include "core/store/JobHeader.h"
#include "core/store/NewTankLines.h"
#include "core/store/OfficeEngines.h"
#include "core/store/SessionStore.h"
#include "core/store/TankLine.h"
#include "tests/support/Driver.h"
#include "tests/support/OfficeDatabase.h"
#include "tests/support/OfficeProxy.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iterator>

using namespace Registry;

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int jobCount = 20000;
constexpr int tanksEach = 5;

/// A step from the user's press to the screen that answers.
struct Step {
    const char* name;
    std::function<void(const QString& job)> prepare; // what the user types before, untimed
    std::function<void()> act;
};

void press(const char* screen, const char* button) {
    Driver::press(screen, button);
}

const std::vector<Step> screenSteps = {
    {"new job", [](const QString&) {}, [] { Driver::command("mnuNewJob"); }},
    {"job header, Next: save", [](const QString& job) { Driver::enter("frmJobHeader", "txtJobID", job); },
     [] { press("frmJobHeader", "cmdNext"); }},
    {"application", [](const QString&) {}, [] { press("frmClassSelect", "cmdEXP"); }},
    {"conditions, Next: new tank", [](const QString&) { Driver::enterConditions(); },
     [] { press("frmJobConditions", "cmdNext"); }},
    {"series, Next: save", [](const QString&) { press("frmTankSeries", "OptRCB"); },
     [] { press("frmTankSeries", "cmdNext"); }},
    {"models that fit, Next: save", [](const QString&) {}, [] { press("frmtankselection", "cmdNext"); }},
    {"job overview", [](const QString&) {}, [] { Driver::command("mnuOverview"); }},
    {"schedule", [](const QString&) {}, [] { Driver::command("mnuSchedule"); }},
    {"find a job: open", [](const QString&) {}, [] { Driver::command("mnuEditJob"); }},
    {"find a job: list", [](const QString& job) { Driver::enter("frmjobsearchdialog", "txtJobID", job); },
     [] { press("frmjobsearchdialog", "bttnFind"); }},
    {"find a job: take it", [](const QString&) {}, [] { press("frmjobsearchdialog", "bttnOK"); }},
    {"delete: find",
     [](const QString& job) {
         Driver::command("mnuDeleteJob");
         Driver::enter("frmjobsearchdialog", "txtJobID", job);
         press("frmjobsearchdialog", "bttnFind");
     },
     [] { press("frmjobsearchdialog", "bttnOK"); }},
    {"delete: a job with a tank", [](const QString&) { press("frmDelete", "optJob"); },
     [] { press("frmDelete", "bttnDelete"); }},
};
// Of the code's steps, which measure no session store.
QString job;
QString tank;

TankLine lineOf() {
    TankLine line;
    line.jobID = job;
    line.dateCreated = QDateTime::currentDateTime();
    line.totSysVolume = 500;
    line.sopMin = 12;
    line.sopMax = 30;
    return line;
}

void noPreparation(const QString& /*job*/) {}

/// The same without screens: the functions that they call.
const std::vector<Step> codeSteps = {
    {"add a job", [](const QString& next) { job = next; },
     [] {
         Records::addJobHeader({.jobID = job,
                                .jobDscrptn = "Description",
                                .engineer = {},
                                .contractor = {},
                                .jobInfo = {},
                                .dateCreated = QDateTime::currentDateTime()});
     }},
    {"add a tank", noPreparation, [] { tank = Records::addTankLines(job, {lineOf()}).value(0); }},
    {"read a tank", noPreparation, [] { (void)Records::findTankLine(tank); }},
    {"save a tank's sizes", noPreparation,
     [] {
         std::optional<TankLine> asRead;
         TankLine line = lineOf();
         line.requiredVolume = 37.5;
         Records::updateTankLine(tank, line, TankLine::sizes(), asRead, Record::IfChanged::Refuse);
     }},
    {"read a job's header", noPreparation, [] { (void)Records::readJobHeader(job); }},
    {"read five tanks of a job", noPreparation, [] { (void)Records::tankLinesOf("J777"); }},
    {"delete a job", noPreparation, [] { Deletion::deleteJob(job); }},
};

/// What a round of all steps has cost.
struct Round {
    std::vector<double> milliseconds;
    std::vector<int> roundTrips;
    std::vector<std::vector<SentStatement>> statements;
};

Round played(const std::vector<Step>& steps, const QString& jobID, OfficeProxy* proxy) {
    Round round;
    for (const Step& step : steps) {
        step.prepare(jobID);
        Driver::settle();
        if (proxy) {
            proxy->takeRoundTrips();
            proxy->takeStatements();
        }
        const auto start = std::chrono::steady_clock::now();
        step.act();
        round.milliseconds.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
        if (proxy) {
            round.roundTrips.push_back(proxy->takeRoundTrips());
            round.statements.push_back(proxy->takeStatements());
        }
        if (const QString report = Driver::report(); !report.isEmpty())
            throw std::runtime_error(std::string(step.name) + ": " + report.toStdString());
    }
    for (const QString& screen : Screens::loaded())
        Screens::unload(screen);
    Driver::settle();
    return round;
}

using Times = std::vector<double>;

/// The shortest time of each step in several rounds, after one that is not counted. The shortest, because
/// whatever else the machine does only makes them longer.
Times shortest(int rounds, const std::function<Times(int round)>& measure) {
    measure(0);
    Times best = measure(1);
    for (int round = 2; round <= rounds; ++round) {
        const Times times = measure(round);
        std::ranges::transform(times, best, best.begin(),
                               [](double one, double other) { return std::min(one, other); });
    }
    return best;
}

/// The program on some data: its own file if the address is empty.
class Program {
  public:
    explicit Program(const QString& address) {
        if (!address.isEmpty())
            SetRegValue(AppRegistryKey(), "UserDatabase", address, RegistryType::Text);
        ScriptedDialogs& dialogs = Driver::start();
        dialogs.rule = [](const Message& message) {
            return message.buttons & QMessageBox::Yes ? QMessageBox::Yes : ScriptedDialogs::decline(message);
        };
    }
    ~Program() {
        Driver::stop();
        Gateway::leaveOffices();
        removeRegValue(HKeyCurrentUser(), AppRegistryKey(), "UserDatabase");
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    static Times times(const std::vector<Step>& steps, const char* prefix, int rounds) {
        return shortest(rounds,
                        [&](int round) { return played(steps, jobID(prefix, round), nullptr).milliseconds; });
    }

    static QString jobID(const char* prefix, int round) {
        return QString("%1-%2").arg(prefix).arg(round, 6, 10, QChar('0'));
    }
};

/// Jobs of other users, so that the tables have a size.
void fill(Postgres::Connection& office) {
    office.runScript(
        QString("INSERT INTO tblJobHeader (JobID, JobDscrptn, DateCreated) SELECT 'J' || i, 'Job ' || i, "
                "timestamp '2020-01-01' + i * interval '1 hour' FROM generate_series(1, %1) AS i;"
                "INSERT INTO tblJobData (TankID, TankNo, JobID, TotSysVolume) SELECT 'J' || i || '.' || n, "
                "n, 'J' || i, i "
                "FROM generate_series(1, %1) AS i, generate_series(1, %2) AS n;")
            .arg(jobCount)
            .arg(tanksEach));
    office.runScript("ANALYZE tblJobHeader; ANALYZE tblJobData");
}

/// How long steps take: on the user's own file, as their SQL through libpq alone, in an office, and there
/// over a longer way.
struct Measured {
    Round noted;
    Times file;
    Times bare;
    Times office;
    Times far;
};

/// Screens have work of their own, which a file shows; `ideal` is the time of a step whose engine costs
/// nothing.
void print(const std::vector<Step>& steps, const Measured& measured, bool withScreens) {
    std::printf("\n| %-28s | %5s | %8s | %8s | %8s | %6s | %8s |\n", withScreens ? "screens, ms" : "code, ms",
                "trips", "file", "libpq", "office", "ratio", "far");
    std::printf("|%s|------:|---------:|---------:|---------:|-------:|---------:|\n",
                std::string(30, '-').c_str());
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const double ideal = measured.bare[i] + (withScreens ? measured.file[i] : 0);
        std::printf("| %-28s | %5d | %8.2f | %8.2f | %8.2f | %6.2f | %8.2f |\n", steps[i].name,
                    measured.noted.roundTrips[i], measured.file[i], measured.bare[i], measured.office[i],
                    measured.office[i] / ideal, measured.far[i]);
    }
}

void printStatements(const std::vector<Step>& steps, const Round& noted) {
    for (std::size_t i = 0; i < steps.size(); ++i) {
        std::printf("%s: %d round trips\n", steps[i].name, noted.roundTrips[i]);
        for (const SentStatement& statement : noted.statements[i])
            std::printf("  %s%s\n", statement.sql.simplified().constData(),
                        statement.endsBatch ? "" : " (not awaited)");
    }
}

/// All that an office with its proxy can tell of some steps.
class Course {
  public:
    explicit Course(int roundCount)
        : rounds(roundCount), server(OfficeServer::Of::Test), office(server), proxy(server.folder()) {
        Postgres::Connection keeper = office.connection();
        fill(keeper);
    }

    Round noted(const std::vector<Step>& steps) {
        proxy.setDelay(std::chrono::milliseconds(0));
        const Program program(through());
        played(steps, Program::jobID("W", 0), &proxy); // connects
        return played(steps, Program::jobID("N", 0), &proxy);
    }

    Measured measured(const std::vector<Step>& steps) {
        Measured all{.noted = noted(steps), .file = {}, .bare = {}, .office = {}, .far = {}};
        {
            const Program program({});
            all.file = Program::times(steps, "F", rounds);
        }
        {
            const Program program(office.address());
            all.office = Program::times(steps, "O", rounds);
        }
        OfficeReplay replay(office.address());
        all.bare = shortest(rounds, [&](int round) { return replayed(replay, all.noted, round); });
        constexpr auto longWay = std::chrono::milliseconds(20);
        proxy.setDelay(longWay);
        const Program program(through());
        all.far = Program::times(steps, "D", std::max(3, rounds / 4));
        return all;
    }

  private:
    QString through() const { return office.address().replace(server.folder(), proxy.folder()); }

    static Times replayed(OfficeReplay& replay, const Round& noted, int round) {
        Times times;
        for (const auto& statements : noted.statements) {
            const auto start = std::chrono::steady_clock::now();
            if (replay.run(statements, Program::jobID("N", 0).toUtf8(), Program::jobID("R", round).toUtf8()) >
                0)
                throw std::runtime_error("a statement failed through libpq alone");
            times.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
        }
        return times;
    }

    int rounds;
    OfficeServer server;
    OfficeDatabase office;
    OfficeProxy proxy;
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("OFFICE_FSYNC", "on"); // as users have it
    const DesktopApplication application(argc, argv);
    const Data data(0, jobCount * tanksEach); // the catalogue as shipped
    const bool onlyStatements = argc > 1 && QByteArrayView(argv[1]) == "--statements";
    constexpr int usualRounds = 20;
    Course course(argc > 1 && !onlyStatements ? QString(argv[1]).toInt() : usualRounds);
    for (const auto* steps : {&screenSteps, &codeSteps}) {
        if (onlyStatements)
            printStatements(*steps, course.noted(*steps));
        else
            print(*steps, course.measured(*steps), steps == &screenSteps);
    }
    return 0;
}
