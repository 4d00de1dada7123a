#pragma once

#include "core/store/Gateway.h"
#include "core/store/SqliteLetters.h"
#include "tests/support/TemporaryHome.h"

#include <sqlite3.h>

#include <array>
#include <ctime>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <vector>

/// Processor time of this process, which other programs do not lengthen.
class ProcessorClock {
  public:
    /// Since it was made.
    double seconds() const { return now() - start; }

  private:
    static double now() {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
    }
    double start = now();
};

/// A direct connection to the engine, for the baselines.
class Bare {
  public:
    explicit Bare(const QString& file) {
        sqlite3_open_v2(file.toUtf8().constData(), &handle, SQLITE_OPEN_READWRITE, nullptr);
        SqliteLetters::add(handle);
        run("PRAGMA synchronous = EXTRA; PRAGMA schema_version;");
    }
    ~Bare() { sqlite3_close(handle); }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    void run(const QString& sql) {
        if (sqlite3_exec(handle, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(handle));
    }
    /// Reads every column of every row of a query; returns the first column of the first row.
    double query(const QByteArray& sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(handle, sql.constData(), -1, &statement, nullptr);
        double first = -1;
        while (sqlite3_step(statement) == SQLITE_ROW)
            first = first < 0 ? sqlite3_column_double(statement, 0) : first;
        sqlite3_finalize(statement);
        return first;
    }

    /// The given columns of all rows of a query, as text.
    template<std::size_t count>
    auto texts(const QByteArray& sql, const std::array<int, count>& columns) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(handle, sql.constData(), -1, &statement, nullptr);
        std::vector<std::array<QString, count>> rows;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            auto& row = rows.emplace_back();
            for (std::size_t i = 0; i < count; ++i)
                row[i] = QString::fromUtf8(
                    reinterpret_cast<const char*>(sqlite3_column_text(statement, columns[i])),
                    sqlite3_column_bytes(statement, columns[i]));
        }
        sqlite3_finalize(statement);
        return rows;
    }

    /// A statement to be run again and again.
    using Statement = std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)>;
    Statement prepared(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(handle, sql, -1, &statement, nullptr);
        return {statement, sqlite3_finalize};
    }
    /// Binds texts to a statement, and steps to its first row.
    static void start(sqlite3_stmt* statement, std::initializer_list<QString> texts) {
        sqlite3_reset(statement);
        int place = 0;
        for (const QString& text : texts)
            sqlite3_bind_text(statement, ++place, text.toUtf8().constData(), -1, SQLITE_TRANSIENT);
        sqlite3_step(statement);
    }

  private:
    sqlite3* handle = nullptr;
};

/// A temporary home with a catalogue and a user file of the given size.
class Data {
  public:
    Data(int models, int tankLines) {
        home.installData();
        Bare catalogue(file("Sys"));
        const QString more =
            QString("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                    "INSERT INTO tblModelMaster SELECT 'M ' || i, m.App, m.Class, m.Bladder, "
                    "m.ASME, m.NSF, m.IAPMO, 10 + i * .37, 8 + i * .33, m.TankOD, m.OAL, "
                    "m.SysConnStd, m.SysConnType, m.TankSysConn, m.TankWkPressure, "
                    "m.MinSysPressure, m.Precharge, m.ShipWeight, m.MakeUpCapacity, m.PumpHp, "
                    "m.Shell, m.Finish, m.MaxTemp, m.Clearance, m.TankDraw, m.Submittal "
                    "FROM n JOIN tblModelMaster m ON m.rowid = 1 + n.i % 200; ANALYZE;");
        if (models > 300)
            catalogue.run(more.arg(models));
        Bare user(file("User"));
        user.run(
            QString("BEGIN; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                    "INSERT INTO tblJobData (TankID, TankNo, JobID, TotSysVolume) SELECT 'J' || (i / 5) || "
                    "'.' || (i % 5), i % 5, 'J' || (i / 5), i FROM n; INSERT INTO tblJobHeader (JobID) "
                    "SELECT DISTINCT JobID FROM tblJobData; COMMIT; ANALYZE;")
                .arg(tankLines));
    }
    QString file(const QString& name) const { return Gateway::dbConnection(name).dataSource(); }

  private:
    TemporaryHome home;
};

/// Stores a new tank line of a job as a screen does.
inline void saveNewLine(int number) {
    Connection connection = Gateway::openDatabase("User");
    Recordset tank;
    tank.Open("tblJobData", connection, CursorType::Keyset, CommandType::Table);
    tank.AddNew();
    tank["TankID"] = "N." + QString::number(number);
    tank["TankNo"] = number;
    tank["JobID"] = "N";
    tank["TotSysVolume"] = "1,234.5";
    tank.Update();
}

/// Adds jobs with contractors, engineers and dates.
inline void addJobs(const Data& data, int jobs) {
    Bare user(data.file("User"));
    user.run(
        QString("BEGIN; WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                "INSERT INTO tblJobHeader (JobID, Contractor, Engineer, DateCreated) SELECT 'Job ' || i, "
                "'Contractor ' || (i % 97), 'Engineer ' || (i % 41), "
                "datetime('2020-01-01', (i % 2000) || ' days') FROM n; COMMIT; ANALYZE;")
            .arg(jobs));
}
