// Ten users of an office at once, the server killed and started again meanwhile: every save of which a user
// was told is there once, and the tanks of a job are numbered without a gap or a double.

#include "tests/support/OfficeDatabase.h"
#include "tests/support/Rounds.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHash>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

namespace {

const QStringList sharedJobs = {"S1", "S2", "S3"};

/// A running user and what the user was told.
class LoadUser {
  public:
    LoadUser(const OfficeDatabase& office, const QString& userName) : name(userName) {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationDirPath() + "/brennoval-office-user",
                      QStringList{folder.path(), office.address(name), name} + sharedJobs);
    }

    /// Takes what has been told since.
    void listen() {
        constexpr int patience = 20; // milliseconds, among many users
        process.waitForReadyRead(patience);
        while (process.canReadLine())
            take(QString::fromUtf8(process.readLine()).trimmed().split(' '));
    }

    /// Lets the user finish the save at work. Returns whether the program ended in order.
    bool finish() {
        process.closeWriteChannel();
        while (process.state() != QProcess::NotRunning || process.canReadLine())
            listen();
        return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    }

    QString name;
    QStringList jobs;
    QHash<QString, int> tanks;     // the volume of each that was added
    QHash<QString, int> sizes;     // the size of each that was sized
    QHash<QString, int> failures;  // how often each
    QStringList surprises;         // what should never be told
    std::vector<int> microseconds; // of each save
    int savesSince = 0;

  private:
    void take(const QStringList& words) {
        const QString& what = words[0];
        if (what == u"failed") {
            ++failures[words.sliced(1).join(' ').section(':', 0, 0)];
            return;
        }
        if (what == u"nothing")
            return;
        if (what == u"job")
            jobs.append(words[1]);
        else if (what == u"tank" && tanks.contains(words[1]))
            surprises.append("told twice: " + words.join(' '));
        else if (what == u"tank")
            tanks.insert(words[1], words[2].toInt());
        else if (what == u"sized")
            sizes.insert(words[1], words[2].toInt());
        else
            surprises.append(words.join(' '));
        microseconds.push_back(words.last().toInt());
        ++savesSince;
    }

    QTemporaryDir folder;
    QProcess process;
};

using Users = std::vector<std::unique_ptr<LoadUser>>;

/// Lets everybody work until each has saved some more, and for some time at least.
void letWork(const Users& users, int savesEach, int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    for (const auto& user : users)
        user->savesSince = 0;
    const auto hasSaved = [&](const auto& user) { return user->savesSince >= savesEach; };
    while (clock.elapsed() < milliseconds || !std::ranges::all_of(users, hasSaved))
        for (const auto& user : users)
            user->listen();
}

/// What is stored, as a user sees it.
class Stored {
  public:
    explicit Stored(const OfficeDatabase& office) : connection(office.connection()) {
        const Postgres::Result rows = connection.run(
            "SELECT TankID, SysFluidType, TotSysVolume, coalesce(RequiredVolume, -1), JobID FROM tblJobData");
        for (int row = 0; row < rows.rows(); ++row) {
            tanks.insert(rows.text(row, 0), {.user = rows.text(row, 1),
                                             .volume = rows.text(row, 2).toInt(),
                                             .size = rows.text(row, 3).toInt()});
        }
        const Postgres::Result headers = connection.run("SELECT JobID FROM tblJobHeader");
        for (int row = 0; row < headers.rows(); ++row)
            jobs.append(headers.text(row, 0));
    }

    std::string value(const QString& query) { return connection.run(query).text(0, 0).toStdString(); }

    struct Tank {
        QString user;
        int volume;
        int size;
    };
    QHash<QString, Tank> tanks;
    QStringList jobs;

  private:
    Postgres::Connection connection;
};

void expectKept(const LoadUser& user, const Stored& stored) {
    EXPECT_TRUE(user.surprises.isEmpty()) << user.surprises.join(", ").toStdString();
    for (const QString& job : user.jobs)
        EXPECT_EQ(stored.jobs.count(job), 1) << job.toStdString();
    for (auto told = user.tanks.cbegin(); told != user.tanks.cend(); ++told) {
        const Stored::Tank tank = stored.tanks.value(told.key());
        EXPECT_TRUE(tank.user == user.name && tank.volume == told.value())
            << told.key().toStdString() << " of " << user.name.toStdString() << " is lost";
        // A later size may be stored without its user being told, when the server died between the two.
        EXPECT_GE(tank.size, user.sizes.value(told.key(), -1)) << told.key().toStdString();
    }
}

void report(const Users& users, const Stored& stored, qint64 milliseconds) {
    std::vector<int> times;
    qsizetype told = 0;
    QHash<QString, int> failures;
    for (const auto& user : users) {
        times.insert(times.end(), user->microseconds.begin(), user->microseconds.end());
        told += user->tanks.size() + user->jobs.size();
        for (auto failure = user->failures.cbegin(); failure != user->failures.cend(); ++failure)
            failures[failure.key()] += failure.value();
    }
    std::ranges::sort(times);
    const auto at = [&](double part) {
        return double(times[size_t(part * double(times.size() - 1))]) / 1000;
    };
    std::cout << users.size() << " users, " << milliseconds / 1000 << " s: " << times.size()
              << " saves told, " << double(times.size()) * 1000 / double(milliseconds) << " a second; "
              << told << " jobs and tanks told, "
              << stored.tanks.size() + stored.jobs.size() - sharedJobs.size() << " stored; a save takes "
              << at(.5) << " ms in the median, " << at(.95) << " ms for 95 %, " << at(1) << " ms at most\n";
    for (auto failure = failures.cbegin(); failure != failures.cend(); ++failure)
        std::cout << "  " << failure.value() << " times told: " << failure.key().toStdString() << '\n';
}

} // namespace

TEST(OfficeLoad, TenUsersLoseNothingWhenTheServerIsKilled) {
    constexpr int userCount = 10;
    constexpr int savesEach = 15;
    const int half = roundCount(1500, 30000); // milliseconds before the kill, and after it
    OfficeServer server(OfficeServer::Of::Test);
    OfficeDatabase office(server);
    for (const QString& job : sharedJobs)
        office.connection().run("INSERT INTO tblJobHeader (JobID) VALUES ($1)", {job});
    for (int i = 1; i <= userCount; ++i)
        office.addUser(QString("user%1").arg(i));
    QElapsedTimer clock;
    clock.start();
    Users users;
    for (int i = 1; i <= userCount; ++i)
        users.push_back(std::make_unique<LoadUser>(office, QString("user%1").arg(i)));
    letWork(users, savesEach, half);
    server.kill();
    server.startAgain();
    letWork(users, savesEach, half);
    for (const auto& user : users)
        EXPECT_TRUE(user->finish());
    const qint64 milliseconds = clock.elapsed();

    Stored stored(office);
    int failures = 0;
    for (const auto& user : users) {
        expectKept(*user, stored);
        failures += int(user->failures.size());
    }
    EXPECT_GT(failures, 0) << "nobody was told that the server died";
    EXPECT_EQ(
        stored.value(
            "SELECT count(*) FROM (SELECT JobID FROM tblJobData GROUP BY JobID HAVING min(TankNo) <> 1 OR "
            "max(TankNo) <> count(*) OR count(DISTINCT TankNo) <> count(*)) AS bad"),
        "0")
        << "a number is missing or there twice";
    EXPECT_EQ(stored.value("SELECT count(*) FROM tblJobData WHERE TankID <> JobID::text || '.' || TankNo"),
              "0");
    EXPECT_EQ(
        stored.value("SELECT count(*) FROM tblJobData WHERE JobID NOT IN (SELECT JobID FROM tblJobHeader)"),
        "0");
    report(users, stored, milliseconds);
}
