#include "app/office/Import.h"

#include "app/office/FileRows.h"
#include "core/postgres/OfficeSchema.h"
#include "core/store/JobHeader.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <algorithm>
#include <utility>
#include <vector>

using FileRows::folded;
using FileRows::StoredRows;
using Postgres::quotedName;
using Postgres::Result;

namespace Office {

namespace {

QString counted(qint64 count, const char* one, const char* many) {
    return QString("%1 %2").arg(count).arg(count == 1 ? one : many);
}

QString jsonOf(const StoredRows& rows) {
    return QString::fromUtf8(FileRows::json(rows, 0, rows.rows.size()));
}

QString jsonOf(const QStringList& texts) {
    return QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(texts)).toJson(QJsonDocument::Compact));
}

/// Adds rows to a table of the office, in their order. The server reads each value by the type of its column.
void addRows(Postgres::Connection& office, const QString& schema, const StoredRows& rows) {
    constexpr qsizetype batch = 1000; // rows a statement, which keeps each below a megabyte
    QStringList names;
    for (const QString& column : rows.columns)
        names.append(quotedName(column.toLower()));
    const QString table = quotedName(schema) + u'.' + rows.table;
    const QString statement =
        QString("INSERT INTO %1 (%2) SELECT %2 FROM json_populate_recordset(NULL::%1, $1::json)")
            .arg(table, names.join(u','));
    for (qsizetype first = 0; first < rows.rows.size(); first += batch)
        office.run(statement, {QString::fromUtf8(
                                  FileRows::json(rows, first, std::min(batch, rows.rows.size() - first)))});
}

QString textOf(const StoredRows& rows, const QVariantList& row, const char* column) {
    return row[rows.columns.indexOf(column)].toString();
}

/// A job of the file, with its tank lines.
struct Job {
    QString jobID;
    StoredRows header;
    StoredRows lines;
};

/// A job under another ID.
Job renumbered(Job job, const QString& newID) {
    JobCopies::giveID(job.header, job.lines, job.jobID, newID);
    job.jobID = newID;
    return job;
}

/// The data of one file on their way into the office, within the caller's transaction.
class Takeover {
  public:
    Takeover(Postgres::Connection& connection, const JobCopies::Source& source)
        : office(connection), file(source), newHeaders(FileRows::read(file, "tblJobHeader")),
          newLines(FileRows::read(file, "tblJobData")) {
        const auto emptied = [](StoredRows& rows) { return std::exchange(rows.rows, {}); };
        const QList<QVariantList> headers = emptied(newHeaders);
        const QList<QVariantList> lines = emptied(newLines);
        orphans = newLines;
        QHash<QString, std::size_t> places; // by ID, folded
        for (const QVariantList& header : headers) {
            const QString jobID = textOf(newHeaders, header, "JobID");
            places.insert(folded(jobID), jobs.size());
            jobs.push_back({.jobID = jobID, .header = newHeaders, .lines = newLines});
            jobs.back().header.rows.append(header);
        }
        for (const QVariantList& line : lines) {
            const auto place = places.constFind(folded(textOf(newLines, line, "JobID")));
            (place == places.cend() ? orphans : jobs[*place].lines).rows.append(line);
        }
        for (const Job& job : jobs)
            known.insert(folded(job.jobID));
    }

    /// Jobs and their tanks.
    Report takeJobs(Collisions collisions) {
        const QSet<QString> inUse = idsInUse();
        Report report;
        QStringList refused;
        qsizetype same = 0;
        for (const Job& job : jobs) {
            if (!inUse.contains(folded(job.jobID)))
                add(job);
            else if (isThere(job))
                ++same;
            else if (job.jobID == Records::reservedJob())
                report += takeConversions(job);
            else if (collisions == Collisions::Refuse)
                refused += job.jobID;
            else
                same += takeRenumbered(job, report);
        }
        if (!refused.isEmpty())
            refuse("The office has other jobs with these numbers: " + refused.join(", ") +
                   ". Nothing was taken over. With --new-numbers they get others.");
        addRows(office, "office", newHeaders);
        addRows(office, "office", newLines);
        return report + counts(same);
    }

    /// Engineers and contractors that the office does not have.
    Report takeNames() {
        qint64 added = 0;
        for (const char* table : {"tblEngineer", "tblContractor"})
            added += office
                         .run(QString("INSERT INTO office.%1 (fldName) SELECT DISTINCT ON (fldName) fldName "
                                      "FROM json_populate_recordset(NULL::office.%1, $1::json) WHERE fldName "
                                      "IS NOT NULL "
                                      "AND NOT EXISTS (SELECT 1 FROM office.%1 e "
                                      "WHERE e.fldName = json_populate_recordset.fldName)")
                                  .arg(table),
                              {jsonOf(FileRows::read(file, table))})
                         .changedRows();
        return {counted(added, "engineer or contractor is", "engineers and contractors are") +
                " new to the office."};
    }

    /// The user's own tables, unless the user has stored anything in them. The schedule is built anew for
    /// every use, so nothing is taken of it.
    Report takeOwn(const QString& user) {
        const QString schema = quotedName(user);
        if (!OfficeSchema::users(office).contains(user))
            refuse("The office has no user " + user + ". \"brennoval-office add-user\" lets a user in.");
        QList<StoredRows> own;
        for (const char* table : {"tblUser", "tblRepMaster", "tblOwn", "tblFirstTime"})
            own.append(FileRows::read(file, table));
        if (!holdsSettings(own))
            return {"The file holds no settings of a user."};
        const bool untouched =
            office
                .run(QString("SELECT 1 WHERE EXISTS (SELECT 1 FROM %1.tblUser) OR EXISTS (SELECT 1 FROM "
                             "%1.tblRepMaster) "
                             "OR EXISTS (SELECT 1 FROM %1.tblOwn) OR EXISTS (SELECT 1 FROM %1.tblFirstTime "
                             "WHERE FirstTime <> 0 OR \"convert\" <> 0)")
                         .arg(schema))
                .rows() == 0;
        if (!untouched)
            return {"The user " + user +
                    " has stored settings in the office already; those of the file are left out."};
        office.run(QString("DELETE FROM %1.tblFirstTime").arg(schema));
        for (const StoredRows& rows : own)
            addRows(office, user, rows);
        return {"The defaults, representative and details are now those of " + user + "."};
    }

  private:
    void add(const Job& job) {
        newHeaders.rows += job.header.rows;
        newLines.rows += job.lines.rows;
    }

    /// Takes a job over under a free number. Returns 1 if that was done before, or else 0.
    int takeRenumbered(const Job& job, Report& report) {
        const Job renamed = withFreeNumber(job);
        if (isThere(renamed))
            return 1;
        add(renamed);
        report +=
            "Job " + job.jobID + " is taken over as " + renamed.jobID + ", because its number is in use.";
        return 0;
    }

    /// What has become of the file's jobs and tanks.
    Report counts(qsizetype same) const {
        Report report{QString("%1 with %2 taken over.")
                          .arg(counted(newHeaders.rows.size(), "job", "jobs"),
                               counted(newLines.rows.size(), "tank", "tanks"))};
        if (same > 0)
            report += counted(same, "job was", "jobs were") +
                      " in the office already, in the same words and figures.";
        if (!orphans.rows.isEmpty())
            report += counted(orphans.rows.size(), "tank", "tanks") +
                      " without a job left out: " + tanksOf(orphans);
        return report;
    }

    static QString tanksOf(const StoredRows& lines) {
        constexpr qsizetype most = 10;
        QStringList ids;
        for (const QVariantList& row : lines.rows.first(std::min(most, lines.rows.size())))
            ids += textOf(lines, row, "TankID");
        return ids.join(", ") + (lines.rows.size() > most ? ", and more." : ".");
    }

    /// Whether a user has stored anything in tables of the user's own, the last of which holds flags.
    static bool holdsSettings(const QList<StoredRows>& own) {
        const auto isSet = [](const QVariant& flag) { return flag.toDouble() != 0; };
        return std::any_of(own.begin(), own.end() - 1,
                           [](const StoredRows& rows) { return !rows.rows.isEmpty(); }) ||
               std::ranges::any_of(own.last().rows,
                                   [&](const QVariantList& row) { return std::ranges::any_of(row, isSet); });
    }

    /// The IDs of the file, folded, that the office uses for a job, or for whose tanks it uses a key.
    QSet<QString> idsInUse() {
        QSet<QString> inUse;
        QStringList jobIDs;
        QStringList tankIDs;
        QStringList jobsOfTanks;
        for (const Job& job : jobs) {
            jobIDs += job.jobID;
            for (const QVariantList& line : job.lines.rows) {
                tankIDs += textOf(job.lines, line, "TankID");
                jobsOfTanks += job.jobID;
            }
        }
        const auto found =
            office.run("SELECT id FROM json_array_elements_text($1::json) AS id WHERE EXISTS "
                       "(SELECT 1 FROM office.tblJobHeader WHERE JobID = id::citext) OR EXISTS "
                       "(SELECT 1 FROM office.tblJobData WHERE JobID = id::citext)",
                       {jsonOf(jobIDs)});
        for (int row = 0; row < found.rows(); ++row)
            inUse.insert(folded(found.text(row, 0)));
        const auto tanks =
            office.run("SELECT n FROM json_array_elements_text($1::json) WITH ORDINALITY AS t(id, n) "
                       "WHERE EXISTS (SELECT 1 FROM office.tblJobData WHERE TankID = id::citext)",
                       {jsonOf(tankIDs)});
        for (int row = 0; row < tanks.rows(); ++row)
            inUse.insert(folded(jobsOfTanks[tanks.text(row, 0).toInt() - 1]));
        return inUse;
    }

    /// Whether the office has a job with the same words and figures.
    bool isThere(const Job& job) {
        const auto same = [&](const StoredRows& rows) {
            return office
                       .run(QString("SELECT 1 WHERE (SELECT jsonb_agg(to_jsonb(t) - 'office_row' ORDER BY "
                                    "to_jsonb(t) - "
                                    "'office_row') FROM office.%1 t WHERE JobID = $1::citext) IS NOT "
                                    "DISTINCT FROM "
                                    "(SELECT jsonb_agg(to_jsonb(t) - 'office_row' ORDER BY to_jsonb(t) - "
                                    "'office_row') "
                                    "FROM json_populate_recordset(NULL::office.%1, $2::json) t)")
                                .arg(rows.table),
                            {job.jobID, jsonOf(rows)})
                       .rows() > 0;
        };
        return same(job.header) && same(job.lines);
    }

    /// The job under the first number that nobody uses, or under which it was taken over before.
    Job withFreeNumber(const Job& job) {
        constexpr int mostCopies = 1000;
        for (int number = 2; number < mostCopies; ++number) {
            Job candidate = renumbered(job, QString("%1-%2").arg(job.jobID).arg(number));
            if (known.contains(folded(candidate.jobID)))
                continue;
            if (isThere(candidate) || isFree(candidate))
                return candidate;
        }
        refuse("There is no free number for the job " + job.jobID + ". Nothing was taken over.");
    }

    bool isFree(const Job& job) {
        QStringList tankIDs;
        for (const QVariantList& row : job.lines.rows)
            tankIDs += textOf(job.lines, row, "TankID");
        return office
                   .run("SELECT 1 WHERE EXISTS (SELECT 1 FROM office.tblJobHeader WHERE JobID = $1::citext) "
                        "OR EXISTS (SELECT 1 FROM office.tblJobData WHERE JobID = $1::citext) "
                        "OR EXISTS (SELECT 1 FROM json_array_elements_text($2::json) AS id "
                        "JOIN office.tblJobData ON TankID = id::citext)",
                        {job.jobID, jsonOf(tankIDs)})
                   .rows() == 0;
    }

    /// Conversions of steel tanks are lines of one job that every user has. Those of the file join those of
    /// the office under new numbers.
    Report takeConversions(const Job& job) {
        const Result missing =
            office.run("SELECT n FROM json_array_elements($1::json) WITH ORDINALITY AS e(line, n), "
                       "LATERAL json_populate_record(NULL::office.tblJobData, line) AS r WHERE NOT EXISTS "
                       "(SELECT 1 FROM office.tblJobData d WHERE JobID = $2::citext AND "
                       "to_jsonb(d) - ARRAY['office_row', 'tankid', 'tankno', 'jobid'] = "
                       "to_jsonb(r) - ARRAY['office_row', 'tankid', 'tankno', 'jobid']) ORDER BY n",
                       {jsonOf(job.lines), job.jobID});
        int number =
            office
                .run("SELECT coalesce(max(TankNo), 0) FROM office.tblJobData WHERE JobID = $1::citext",
                     {job.jobID})
                .text(0, 0)
                .toInt();
        StoredRows added{.table = job.lines.table, .columns = job.lines.columns, .rows = {}};
        for (int row = 0; row < missing.rows(); ++row) {
            QVariantList line = job.lines.rows[missing.text(row, 0).toInt() - 1];
            ++number;
            line[added.columns.indexOf("TankNo")] = number;
            line[added.columns.indexOf("TankID")] = QString("%1.%2").arg(job.jobID).arg(number);
            added.rows.append(line);
        }
        addRows(office, "office", added);
        return {counted(added.rows.size(), "conversion of a steel tank joins",
                        "conversions of steel tanks join") +
                " those of the office."};
    }

    Postgres::Connection& office;
    const JobCopies::Source& file;
    std::vector<Job> jobs;
    QSet<QString> known;   // their IDs, folded
    StoredRows orphans;    // lines without a job
    StoredRows newHeaders; // what the office gets
    StoredRows newLines;
};

} // namespace

Report import(const QString& address, const QString& file, const QString& user, Collisions collisions,
              Mode mode) {
    const JobCopies::Source source = FileRows::open(file);
    Postgres::Connection office = connectToCurrent(address);
    Report report;
    Postgres::Transaction transaction(office);
    office.runScript("SET LOCAL search_path = office");
    lock(office);
    Takeover takeover(office, source);
    // Nobody adds a job while the numbers are compared; everybody can read.
    office.runScript(
        "LOCK TABLE office.tblJobHeader, office.tblJobData, office.tblEngineer, office.tblContractor "
        "IN SHARE ROW EXCLUSIVE MODE");
    report += takeover.takeJobs(collisions);
    report += takeover.takeNames();
    report += takeover.takeOwn(user.isEmpty() ? office.role() : user);
    finish(transaction, mode, report);
    return report;
}

} // namespace Office
