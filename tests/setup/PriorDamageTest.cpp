// Files of the earlier program that are truncated, randomly damaged or malicious: every value is checked
// against a second reader, and so is the cost of reading them.

#include "core/base/Fault.h"
#include "setup/PriorFile.h"
#include "setup/prior/Confinement.h"
#include "tests/setup/JetMap.h"
#include "tests/support/Rounds.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>
#include <random>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using Cell = JetMap::Cell;

namespace {

const QString fixtures = QStringLiteral(SOURCE_FOLDER "/../shared/fixtures/prior/");
constexpr qsizetype pageSize = 4096;

QByteArray contents(const QString& name) {
    QFile file(fixtures + "prior-" + name + ".mdb");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

enum class Result { Refused, Equal, OneValue };

class PriorDamage : public testing::Test {
  protected:
    void SetUp() override {
        if (!QFileInfo::exists(fixtures))
            GTEST_SKIP() << "SKIPPED: there are no prior databases at " << fixtures.toStdString();
    }
    void TearDown() override { setPriorHelper({}); }

    /// Reads a file that begins with these bytes and continues with zeros, which take no disk space.
    PriorRows read(const QByteArray& bytes, qint64 size = 0) const {
        QFile file(folder.filePath("Data.mdb"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
                    file.resize(std::max<qint64>(bytes.size(), size)));
        file.close();
        PriorRows rows;
        readPriorFile(file.fileName(), rows);
        return rows;
    }

    /// Why a file is refused; empty if it is not.
    std::string refusal(const QByteArray& bytes, qint64 size) const {
        try {
            read(bytes, size);
            return {};
        } catch (const Fault& fault) {
            return fault.what();
        }
    }
    void expectRefused(const QByteArray& bytes, const char* reason, qint64 size = 0) const {
        const std::string found = refusal(bytes, size);
        EXPECT_NE(found, "");
        EXPECT_NE(found.find(reason), std::string::npos) << found << " instead of " << reason;
    }

    /// The result of reading a file that differs from the sound one in a few places.
    Result resultOf(const QByteArray& damaged, const QByteArray& sound, const JetMap& map,
                    const std::vector<qsizetype>& places) const {
        PriorRows rows;
        try {
            rows = read(damaged);
        } catch (const Fault&) {
            return Result::Refused;
        }
        const auto mayDiffer = [&](const Cell& cell) {
            return std::ranges::any_of(places, [&](qsizetype place) {
                return map.belongs(place, static_cast<unsigned char>(damaged[place] ^ sound[place]), cell);
            });
        };
        Result result = Result::Equal;
        for (int table = 0; table < PriorTables::Count; ++table) {
            const std::vector<QVariantList>& expected = map.rows()[size_t(table)];
            const std::vector<QVariantList>& found = rows.tables[size_t(table)].rows;
            EXPECT_EQ(found.size(), expected.size()) << PriorTables::all[size_t(table)].name;
            for (size_t row = 0; row < std::min(found.size(), expected.size()); ++row) {
                if (found[row] == expected[row])
                    continue;
                result = Result::OneValue;
                for (int column = 0; column < expected[row].size(); ++column)
                    EXPECT_TRUE(found[row][column] == expected[row][column] ||
                                mayDiffer({.table = table, .row = int(row), .column = column}))
                        << PriorTables::all[size_t(table)].name << ", row " << row << ", column " << column
                        << ": " << found[row][column].toString().toStdString() << " for "
                        << expected[row][column].toString().toStdString();
            }
        }
        return result;
    }

    QTemporaryDir folder;
};

template<typename Number>
void put(QByteArray& bytes, qsizetype at, Number number) {
    memcpy(bytes.data() + at, &number, sizeof number);
}

} // namespace

TEST_F(PriorDamage, AbsentLeavesEveryValueEqual) {
    for (const char* name : {"typical", "distinct", "worn", "large", "empty"}) {
        const QByteArray sound = contents(name);
        EXPECT_EQ(resultOf(sound, sound, JetMap(sound), {}), Result::Equal) << name;
    }
}

TEST_F(PriorDamage, EveryFileCutShortIsRefused) {
    for (const char* name : {"typical", "distinct", "worn"}) {
        const QByteArray sound = contents(name);
        for (qsizetype length = 0; length < sound.size(); length += 64) {
            const bool isWholePages = length % pageSize == 0;
            if (!isWholePages && length / 64 % roundCount(67, 1) != 0)
                continue;
            SCOPED_TRACE(std::string(name) + ", " + std::to_string(length));
            expectRefused(sound.first(length), isWholePages || length < pageSize ? "" : "cut short");
            if (isWholePages) // what a file system leaves of a partly written file
                expectRefused(sound.first(length) + QByteArray(sound.size() - length, '\0'), "");
        }
    }
}

TEST_F(PriorDamage, ChangesTheValuesThatItHitsOrEndsTheReading) {
    std::mt19937 random(21);
    const auto below = [&random](qsizetype limit) {
        return std::uniform_int_distribution<qsizetype>(0, limit - 1)(random);
    };
    struct File {
        QByteArray sound;
        JetMap map;
    };
    std::vector<File> files;
    for (const char* name : {"typical", "distinct", "worn", "large"})
        files.push_back({contents(name), JetMap(contents(name))});
    std::array<int, 3> counts{};
    const int rounds = roundCount(300, 10000);
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        const bool takesLarge = round % 20 == 0; // reading it takes a hundred times as long
        const auto& [sound, map] = files[takesLarge ? 3 : size_t(round % 3)];
        QByteArray damaged = sound;
        std::vector<qsizetype> places;
        for (qsizetype hits = below(3); hits >= 0; --hits)
            for (qsizetype at = below(sound.size()), left = below(4); left >= 0 && at < sound.size();
                 --left) {
                damaged[at] = static_cast<char>(random());
                places.push_back(at++);
            }
        SCOPED_TRACE(round);
        ++counts[size_t(resultOf(damaged, sound, map, places))];
    }
    RecordProperty("refused", counts[0]);
    RecordProperty("equal", counts[1]);
    RecordProperty("one value", counts[2]);
    std::printf("%d damages: %d refused, %d equal, %d with the values that were hit\n", rounds, counts[0],
                counts[1], counts[2]);
    for (const int count : counts)
        EXPECT_GT(count, rounds / 100);
}

TEST_F(PriorDamage, ToTheStructureIsDetected) {
    std::mt19937 random(22);
    const auto below = [&random](size_t limit) {
        return std::uniform_int_distribution<size_t>(0, limit - 1)(random);
    };
    std::array<int, 3> counts{};
    for (const char* name : {"typical", "distinct", "worn"}) {
        const QByteArray sound = contents(name);
        const JetMap map(sound);
        for (int round = 0; round < roundCount(150, 5000) && !HasFailure(); ++round) {
            const qsizetype place = map.structure()[below(map.structure().size())];
            QByteArray damaged = sound;
            damaged[place] = static_cast<char>(round % 2 == 0 ? random() : sound[place] + 1 + below(8));
            SCOPED_TRACE(std::string(name) + ", " + std::to_string(place));
            ++counts[size_t(resultOf(damaged, sound, map, {place}))];
        }
    }
    std::printf("%d refused, %d equal, %d with the values that were hit\n", counts[0], counts[1], counts[2]);
    EXPECT_GT(counts[0], counts[1]);
}

TEST_F(PriorDamage, HostileFilesCostLittle) {
    const QByteArray sound = contents("worn");
    const JetMap map(sound);
    const qsizetype definition = map.definition(PriorTables::JobHeader);
    const qsizetype memo = map.chainedMemos().front();
    const quint32 first = map.doubleWord(memo + 4);
    constexpr qsizetype lengthOfHead = 4;
    const auto changed = [&sound](const auto&... edits) {
        QByteArray file = sound;
        (put(file, edits.first, edits.second), ...);
        return file;
    };
    QByteArray shared = sound; // 70,000 characters each
    for (const qsizetype other : map.chainedMemos()) {
        put(shared, other, map.doubleWord(map.chainedMemos().back()));
        put(shared, other + lengthOfHead, map.doubleWord(map.chainedMemos().back() + lengthOfHead));
    }
    QByteArray nuls = sound;
    const qsizetype text = map.piece(first) + lengthOfHead;
    std::fill_n(nuls.begin() + text, pageSize / 2, '\0');
    const auto pageOfRow = [&map](int table) { return map.row(table, 0) / pageSize * pageSize; };
    const qsizetype tanks = map.definition(PriorTables::JobData);
    const qsizetype tankColumns = tanks + 63;
    constexpr qsizetype sizeOfColumn = 25;
    const struct {
        const char* reason;
        QByteArray file;
    } cases[] = {
        {"leads back", changed(std::pair(map.piece(first), first), std::pair(memo, quint32{0x3fffff}))},
        {"longer than any", changed(std::pair(memo, quint32{0x3fffffff}))},
        {"leads back", shared},
        {"a page for other things",
         changed(std::pair(memo + lengthOfHead, quint32(pageOfRow(PriorTables::User) >> 4)))},
        {"breaks off", changed(std::pair(memo, map.doubleWord(memo) + 2))},
        {"breaks off", changed(std::pair(memo, map.doubleWord(memo) - 2))},
        {"a null with a value", changed(std::pair(map.nulls(PriorTables::JobData, 7), char{0}))},
        {"goes on", changed(std::pair(memo, map.doubleWord(map.chainedMemos().front()) / 100))},
        {"NULs", nuls},
        {"leads back", changed(std::pair(definition + 4, quint32(definition / pageSize)),
                               std::pair(definition + 51, quint32{900}))},
        {"the columns",
         changed(std::pair(definition + 41, quint16{65535}), std::pair(definition + 45, quint16{65535}))},
        {"the columns", changed(std::pair(definition + 51, quint32{0x0fffffff}))},
        {"over each other", changed(std::pair(tankColumns + 3 * sizeOfColumn + 21, quint16{0}))},
        {"are missing", changed(std::pair(tanks + 43, quint16{6}))},
        {"of another kind", changed(std::pair(tankColumns + 3 * sizeOfColumn, char{8}))},
        {"longer than its column", changed(std::pair(tankColumns + sizeOfColumn + 23, quint16{2}))},
        {"other rows", changed(std::pair(definition + 16, quint32{0x7fff}))},
        {"other rows", changed(std::pair(definition + 16, quint32{1}))},
        {"Overflow", changed(std::pair(definition + 16, quint32{0xffffffff}))},
        {"without columns", changed(std::pair(map.row(PriorTables::JobData, 7), quint16{0}))},
        {"outside of its page", changed(std::pair(pageOfRow(PriorTables::JobData) + 14, quint16{0x0010}))},
    };
    const auto mostMemory =
        [] { // kilobytes, of the reader that took most; it counts the test's own when it begins
            rusage used{};
            getrusage(RUSAGE_CHILDREN, &used);
            return used.ru_maxrss;
        };
    read(sound);
    const long ordinary = mostMemory();
    for (const auto& row : cases)
        expectRefused(row.file, row.reason);
    constexpr qint64 largest = qint64{2} << 30;
    expectRefused(sound, "larger than any", largest + pageSize);
    expectRefused(sound.first(pageSize), "for other things", largest);
    EXPECT_LT(mostMemory(), ordinary + 32L * 1024);
}

TEST_F(PriorDamage, WhatTheHelperWritesHasLimits) {
    const QString helper = folder.filePath("helper");
    const struct {
        const char* name;
        const char* line;
        const char* reason = "damaged";
        int run = 60; // seconds at most
    } cases[] = {
        {"rows that nobody announced", "printf 'T\\001\\0\\0\\0'; yes RN | tr -d '\\n'"},
        {"a text of 4 GB", "printf 'T\\001\\0\\0\\0RS\\377\\377\\377\\377'; yes"},
        {"a text up to the limit and more", "printf 'T\\001\\0\\0\\0RS\\377\\377\\377\\003'; yes"},
        {"texts that are too much together", "printf 'T\\003\\0\\0\\0'; for row in 1 2 3; do printf "
                                             "'RS\\0\\0\\0\\2'; head -c 33554432 /dev/zero; done; "
                                             "exec sleep 60"},
        {"a text that comes for ever", "printf 'T\\001\\0\\0\\0RS\\0\\0\\0\\1'; while :; do printf x; done",
         "in time", 1},
        {"4 G rows", "printf 'T\\377\\377\\377\\377'; exec sleep 60", "Overflow"},
        {"a value without a row", "printf 'T\\001\\0\\0\\0N.'"},
        {"an end before all tables", "printf 'T\\0\\0\\0\\0.'"},
    };
    for (const auto& row : cases) {
        QFile file(helper);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("#!/bin/sh\n") + row.line + "\n");
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        file.close();
        setPriorHelper({.program = helper, .longestRun = std::chrono::seconds(row.run)});
        SCOPED_TRACE(row.name);
        expectRefused({}, row.reason);
    }
}

TEST(Confinement, LeavesReadingAndPipes) {
#if !defined(BRENNOVAL_SECCOMP) || defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "SKIPPED: this build has no filter of system calls";
#else
    const QTemporaryDir folder;
    const QByteArray file = QFile::encodeName(folder.filePath("file"));
    close(creat(file.constData(), 0600));
    const auto isRefused = [](auto result) { return result == decltype(result){-1} && errno == EPERM; };
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        confine();
        const int opened = open(file.constData(), O_RDONLY | O_CLOEXEC);
        const std::unique_ptr<void, decltype(&std::free)> memory(std::malloc(600 << 20), std::free);
        const bool confined = opened >= 0 && !memory && isRefused(socket(AF_INET, SOCK_STREAM, 0)) &&
                              isRefused(socket(AF_UNIX, SOCK_STREAM, 0)) &&
                              isRefused(open(file.constData(), O_WRONLY)) &&
                              isRefused(open(file.constData(), O_RDWR)) &&
                              isRefused(open(file.constData(), O_RDONLY | O_TRUNC)) &&
                              isRefused(creat((file + "2").constData(), 0600)) &&
                              isRefused(unlink(file.constData())) && isRefused(chmod(file.constData(), 0)) &&
                              isRefused(rename(file.constData(), (file + "2").constData())) &&
                              isRefused(mkdir((file + "2").constData(), 0700)) &&
                              isRefused(execl("/bin/true", "true", nullptr)) && isRefused(fork());
        confineToOpenFiles();
        const bool closed = isRefused(open(file.constData(), O_RDONLY));
        const char answer = confined && closed ? 'y' : 'n';
        _exit(write(pipe[1], &answer, 1) == 1 ? 0 : 1);
    }
    close(pipe[1]);
    char answer = '?';
    EXPECT_EQ(::read(pipe[0], &answer, 1), 1);
    close(pipe[0]);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(answer, 'y');
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
#endif
}
