// The steps of the ordinary workflow in an office: how long they take next to a user's own file, next to
// their SQL through libpq alone, and over a longer way, and how often each asks the server. Usage:
// brennoval-office-bench [ROUNDS]

#include "bench/BenchData.h"
#include "bench/OfficeProxy.h"
#include "bench/OfficeReplay.h"
#include "core/shell/DesktopApplication.h"
#include "core/shell/Screens.h"
#include "core/store/OfficeEngines.h"
#include "core/store/SessionStore.h"
#include "tests/support/Driver.h"
#include "tests/support/OfficeDatabase.h"

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

const Step steps[] = {
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
constexpr std::size_t stepCount = std::size(steps);

/// What a round of all steps has cost.
struct Round {
    std::array<double, stepCount> milliseconds{};
    std::array<int, stepCount> roundTrips{};
    std::array<std::vector<SentStatement>, stepCount> statements;
};

Round played(const QString& job, OfficeProxy* proxy) {
    Round round;
    for (std::size_t i = 0; i < stepCount; ++i) {
        steps[i].prepare(job);
        Driver::settle();
        if (proxy) {
            proxy->takeRoundTrips();
            proxy->takeStatements();
        }
        const auto start = std::chrono::steady_clock::now();
        steps[i].act();
        round.milliseconds[i] = Milliseconds(std::chrono::steady_clock::now() - start).count();
        if (proxy) {
            round.roundTrips[i] = proxy->takeRoundTrips();
            round.statements[i] = proxy->takeStatements();
        }
        if (const QString report = Driver::report(); !report.isEmpty())
            throw std::runtime_error(std::string(steps[i].name) + ": " + report.toStdString());
    }
    for (const QString& screen : Screens::loaded())
        Screens::unload(screen);
    Driver::settle();
    return round;
}

using Medians = std::array<double, stepCount>;

/// The median of several rounds, after one that is not counted.
Medians medianOf(int rounds, const std::function<std::array<double, stepCount>(int round)>& measure) {
    std::vector<std::array<double, stepCount>> all;
    measure(0);
    for (int round = 1; round <= rounds; ++round)
        all.push_back(measure(round));
    Medians medians{};
    for (std::size_t i = 0; i < stepCount; ++i) {
        std::vector<double> times;
        for (const auto& one : all)
            times.push_back(one[i]);
        std::ranges::sort(times);
        medians[i] = times[times.size() / 2];
    }
    return medians;
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

    Medians times(const char* prefix, int rounds) {
        return medianOf(rounds, [&](int round) { return played(job(prefix, round), nullptr).milliseconds; });
    }

    static QString job(const char* prefix, int round) {
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

void print(const Round& noted, const Medians& file, const Medians& office, const Medians& bare,
           const Medians& far) {
    std::printf("| %-28s | %5s | %8s | %8s | %8s | %6s | %8s |\n", "step, ms", "trips", "file", "libpq",
                "office", "ratio", "far");
    std::printf("|%s|------:|---------:|---------:|---------:|-------:|---------:|\n",
                std::string(30, '-').c_str());
    for (std::size_t i = 0; i < stepCount; ++i)
        std::printf("| %-28s | %5d | %8.2f | %8.2f | %8.2f | %6.2f | %8.2f |\n", steps[i].name,
                    noted.roundTrips[i], file[i], bare[i], office[i], office[i] / (file[i] + bare[i]),
                    far[i]);
}

void printStatements(const Round& noted) {
    for (std::size_t i = 0; i < stepCount; ++i) {
        std::printf("%s: %d round trips\n", steps[i].name, noted.roundTrips[i]);
        for (const SentStatement& statement : noted.statements[i])
            std::printf("  %s%s\n", statement.sql.simplified().constData(),
                        statement.endsBatch ? "" : " (not awaited)");
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("OFFICE_FSYNC", "on"); // as users have it
    const DesktopApplication application(argc, argv);
    const int rounds = argc > 1 ? QString(argv[1]).toInt() : 21;
    const Data data(0, jobCount * tanksEach); // the catalogue as shipped
    OfficeServer server(OfficeServer::Of::Test);
    OfficeDatabase office(server);
    {
        Postgres::Connection keeper = office.connection();
        fill(keeper);
    }
    OfficeProxy proxy(server.folder());
    const QString straight = office.address();
    const QString through = QString(straight).replace(server.folder(), proxy.folder());
    Round noted;
    {
        Program program(through);
        played(Program::job("W", 0), &proxy); // connects
        noted = played(Program::job("N", 0), &proxy);
    }
    if (argc > 1 && QByteArrayView(argv[1]) == "--statements") {
        printStatements(noted);
        return 0;
    }
    const Medians file = Program({}).times("F", rounds);
    const Medians near = Program(straight).times("O", rounds);
    OfficeReplay replay(straight);
    int failed = 0;
    const Medians bare = medianOf(rounds, [&](int round) {
        std::array<double, stepCount> times{};
        for (std::size_t i = 0; i < stepCount; ++i) {
            const auto start = std::chrono::steady_clock::now();
            failed += replay.run(noted.statements[i], Program::job("N", 0).toUtf8(),
                                 Program::job("R", round).toUtf8());
            times[i] = Milliseconds(std::chrono::steady_clock::now() - start).count();
        }
        return times;
    });
    constexpr auto longWay = std::chrono::milliseconds(20);
    proxy.setDelay(longWay);
    const Medians far = Program(through).times("D", std::max(3, rounds / 4));
    print(noted, file, near, bare, far);
    std::printf("%d statements failed through libpq alone\n", failed);
    return 0;
}
