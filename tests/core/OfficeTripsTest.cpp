// How often the program asks the server of an office, which is a way off.

#include "core/store/DataState.h"
#include "core/store/Deletion.h"
#include "core/store/NewTankLines.h"
#include "tests/support/OfficeProxy.h"
#include "tests/support/OnOffice.h"

#include <QFile>

#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

using namespace Gateway;

using OfficeTrips = OnOffice;

// What a screen asks for again before the event is over is known: the way to a server is long.
TEST_F(OfficeTrips, AnEventAsksForNothingTwice) {
    Records::addJobHeader(headerOf("A"));
    Postgres::Connection elsewhere = office.connection();
    const auto write = [&](const QString& text) {
        elsewhere.run("UPDATE tblJobHeader SET JobInfo = $1", {text});
    };
    const QString info = "SELECT JobInfo AS V FROM tblJobHeader";
    const auto version = [] { return readDataState("A", {}).value_or(DataState()).version; };
    write("first");
    const quint32 before = version();
    EXPECT_EQ(value(info), "first");
    write("second");
    EXPECT_EQ(value(info), "first") << "known in this event";
    EXPECT_EQ(version(), before);
    std::thread([&] { EXPECT_EQ(value(info), "second") << "no event"; }).join();
    QCoreApplication::processEvents();
    EXPECT_NE(version(), before) << "the next event learns of it";
    EXPECT_EQ(value(info), "second");
    write("third");
    Records::addJobHeader(headerOf("B"));
    EXPECT_EQ(value(info + " WHERE JobID = 'A'"), "third");
    write("fourth");
    Connection user = openDatabase("User");
    const Transaction saving(user);
    Recordset job;
    job.Open(info + " WHERE JobID = 'A'", user);
    EXPECT_EQ(job["V"].text(), "fourth") << "what is to be saved is compared with what is stored now";
}

// Or a screen would take an older answer for the data of that counter, and never learn of the change.
TEST_F(OfficeTrips, NothingIsShownThatIsOlderThanTheCounterOfChanges) {
    Records::addJobHeader(headerOf("A"));
    Postgres::Connection elsewhere = office.connection();
    const QString info = "SELECT JobInfo AS V FROM tblJobHeader";
    const auto write = [&](const QString& text) {
        elsewhere.run("UPDATE tblJobHeader SET JobInfo = $1", {text});
    };
    write("first");
    EXPECT_EQ(value(info), "first");
    write("second");
    readDataState("A", {});
    EXPECT_EQ(value(info), "second");
    QCoreApplication::processEvents();
    ASSERT_TRUE(readDataState("A", {})->jobExists);
    for (int other = 0; other < 15; ++other) // so many that the counter is not kept any more, but the job is
        value(info + " WHERE JobInfo <> '" + QString::number(other) + '\'');
    elsewhere.run("DELETE FROM tblJobHeader");
    EXPECT_FALSE(readDataState("A", {})->jobExists);
}

TEST_F(OfficeTrips, AsksTheServerAsSeldomAsItCan) {
    const QString folder = OfficeServer::shared().folder();
    OfficeProxy proxy(folder);
    useAddress(office.address().replace(folder, proxy.folder()));
    openDatabase("User"); // connects
    const std::pair<int, std::function<void()>> cases[] = {
        {0, [] { Records::jobHeaderSizes(); }},
        {3, [] { Records::addJobHeader(headerOf("A")); }}, // compared at once, added, stored
        {4, [] { Records::addTankLines("A", {TankLine()}); }},
        {1, [] { readDataState("A", "A.1"); }},
        {0, [] { readDataState("A", "A.1"); }},
        {1, [] { Records::findTankLine("A.1"); }},
        {0, [] { Records::findTankLine("A.1"); }},
        {0,
         [] {
             const Connection user = openDatabase("User");
             const Transaction nothing(user);
         }},
        {5, [] { Deletion::deleteJob("A"); }},
        {1, [] { readDataState("A", "A.1"); }},
    };
    int number = 0;
    for (const auto& [trips, act] : cases) {
        proxy.takeRoundTrips();
        act();
        EXPECT_EQ(proxy.takeRoundTrips(), trips) << "case " << number;
        ++number;
    }
    EXPECT_EQ(value("SELECT COUNT(*) AS V FROM tblJobHeader"), "0");
}

TEST_F(OfficeTrips, AServerThatDoesNotAnswerIsWaitedForOnce) {
    const QTemporaryDir folder;
    const int silent = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0);
    sockaddr_un place = {.sun_family = AF_UNIX, .sun_path = {}};
    qstrncpy(place.sun_path, QFile::encodeName(folder.filePath(".s.PGSQL.5432")), sizeof place.sun_path);
    ASSERT_EQ(bind(silent, reinterpret_cast<sockaddr*>(&place), sizeof place), 0);
    ASSERT_EQ(listen(silent, 5), 0);
    const auto hasBeenAsked = [&] {
        const int connection = accept(silent, nullptr, nullptr);
        close(connection);
        return connection >= 0;
    };
    useAddress("postgresql:///office?connect_timeout=2&host=" + folder.path());
    const QString first = failureOf([] { openDatabase("User"); });
    EXPECT_NE(first, "");
    while (hasBeenAsked()) {
    }
    EXPECT_EQ(failureOf([] { openDatabase("User"); }), first);
    EXPECT_FALSE(hasBeenAsked());
    office.use();
    EXPECT_NO_THROW(openDatabase("User"));
    close(silent);
}
