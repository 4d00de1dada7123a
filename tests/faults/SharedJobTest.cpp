// Two copies of the program do various things to one job, at the same time and across each other's open
// windows: no line exists without its job, no line is lost, and each save is there or its user was told why
// not.

#include "core/store/Database.h"
#include "tests/support/BothEngines.h"
#include "tests/support/Rounds.h"
#include "tests/support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QRandomGenerator>

namespace {

/// A copy of the program on the files of a home, with its own session store.
class Copy {
  public:
    Copy(const TemporaryHome& home, const QString& name, unsigned seed) {
        QDir(sessionFolder.path()).mkpath("Fennerbrooke");
        QFile::copy(home.sessionFile(), sessionFolder.filePath("Fennerbrooke/Brennoval.ini"));
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationDirPath() + "/brennoval-shared-job",
                      {sessionFolder.path(), name, QString::number(seed)});
    }

    void step() {
        process.write("\n");
        process.waitForBytesWritten();
    }

    /// What it reported about its step, split into words; an empty list if it ended first.
    QList<QStringList> told() {
        QList<QStringList> lines;
        while (true) {
            while (!process.canReadLine())
                if (!process.waitForReadyRead(60000))
                    return {};
            lines.append(QString::fromUtf8(process.readLine()).trimmed().split(' '));
            if (lines.last().first() == "ready")
                return lines;
        }
    }

    int finish() {
        process.closeWriteChannel();
        process.waitForFinished(60000);
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

  private:
    QTemporaryDir sessionFolder;
    QProcess process;
};

class SharedJobTest : public BothEngines {};
ON_BOTH_ENGINES(SharedJobTest);

using Line = QMap<QString, QString>; // by column

/// All tank lines by key.
QMap<QString, Line> storedLines(Connection& user) {
    QMap<QString, Line> lines;
    Recordset rows;
    for (rows.Open("SELECT * FROM tblJobData", user); !rows.atEnd(); rows.moveNext())
        for (const char* column : {"JobID", "TankNo", "TotSysVolume", "SOPMax", "TagID01"})
            lines[rows["TankID"].text()][column] = rows[column].text();
    return lines;
}

int count(Connection& user, const QString& sql) {
    Recordset rows;
    rows.Open(sql, user);
    return rows["V"].text().toInt();
}

/// Checks what two copies report about a step, in which neither could know of the other's, against what is
/// stored.
class Referee {
  public:
    explicit Referee(Connection& connection) : user(connection) {}

    void check(const QList<QStringList>& told) {
        QCoreApplication::processEvents(); // what was read for the last event is old
        const QMap<QString, Line> after = storedLines(user);
        EXPECT_EQ(count(user, "SELECT COUNT(*) AS V FROM tblJobData WHERE JobID NOT IN (SELECT JobID FROM "
                              "tblJobHeader)"),
                  0);
        for (const QString& tank : after.keys())
            EXPECT_EQ(tank, after[tank]["JobID"] + "." + after[tank]["TankNo"]);
        QSet<QString> touched;
        for (const QStringList& words : told) {
            if (words[0] == "deleted" || words[0] == "saved")
                touched.insert(words[1]);
            if (words[0] == "saved")
                checkSaved(words, told, after);
            const bool sameNewJob =
                words.contains("tblJobHeader.JobID") || words.contains("\"tbljobheader_pkey\"");
            if (words[0] == "failed" && !sameNewJob)
                ADD_FAILURE() << words.join(' ').toStdString();
            ++tellings[words[0]];
        }
        for (const QString& tank : before.keys() + after.keys())
            EXPECT_TRUE(touched.contains(tank) || touched.contains("S") ||
                        before.value(tank) == after.value(tank))
                << tank.toStdString() << " changed in silence";
        before = after;
    }

    QMap<QString, int> tellings;

  private:
    /// A save is stored unless the other copy reports having removed it, and it wrote over what its user had
    /// seen, unless the user was asked.
    void checkSaved(const QStringList& words, const QList<QStringList>& told,
                    const QMap<QString, Line>& after) {
        const QString& tank = words[1];
        const QString& column = words[2];
        const bool asked = words[5] == "asked";
        bool deleted = false;
        bool saved = false;       // by the other copy too
        bool overwritten = false; // after asking
        for (const QStringList& other : told) {
            deleted = deleted || (other[0] == "deleted" && (other[1] == tank || other[1] == "S"));
            if (other[0] == "saved" && other[1] == tank && other != words && other[2] == column) {
                saved = true;
                overwritten = overwritten || other[5] == "asked";
            }
        }
        const QString stored = after.value(tank).value(column);
        const std::string what = words.join(' ').toStdString();
        EXPECT_TRUE(stored == words[4] || deleted || overwritten) << what << ", but " << stored.toStdString();
        EXPECT_TRUE(!saved || asked || overwritten || deleted) << what << ": the other copy's save is lost";
        const QString seen = words[3] == "nothing" ? QString() : words[3];
        QString present = before.value(tank).value(column);
        if (present == "-")
            present.clear();
        EXPECT_TRUE(present == seen || asked || deleted || saved)
            << what << ": wrote over " << present.toStdString() << " without a question";
    }

    Connection& user;
    QMap<QString, Line> before;
};

} // namespace

TEST_P(SharedJobTest, TwoCopiesDoDifferentThingsToOneJob) {
    const int seed = roundCount(5, int(QRandomGenerator::global()->bounded(1000)));
    SCOPED_TRACE("seed " + std::to_string(seed));
    Copy first(home, "A", unsigned(seed));
    Copy second(home, "B", unsigned(seed) + 1000);
    Connection user = Gateway::openDatabase("User");
    Referee referee(user);
    constexpr int rounds = 200;
    for (int round = 0; round < 2 * rounds && !testing::Test::HasFailure();
         ++round) { // a round begins and ends
        SCOPED_TRACE("step " + std::to_string(round));
        first.step();
        second.step();
        const auto told = first.told() + second.told();
        ASSERT_EQ(std::ranges::count(told, QStringList{"ready"}), 2);
        referee.check(told);
    }
    EXPECT_EQ(first.finish(), 0);
    EXPECT_EQ(second.finish(), 0);
    EXPECT_EQ(user.engine().findDamage(Engine::Check::Thorough), "");
    // Every kind of event has occurred.
    for (const char* kind : {"saved", "deleted", "told"})
        EXPECT_GT(referee.tellings[kind], rounds / 20) << kind;
}
