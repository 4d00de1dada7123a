#include "jobs/JobSearch.h"

#include "core/store/Gateway.h"
#include "core/store/JetSql.h"
#include "core/store/JobHeader.h"
#include "core/store/SqlText.h"

#include <algorithm>
#include <limits>
#include <span>

using namespace Gateway;

namespace {

/// A comparison: its name, and what goes around the text in a statement.
struct Comparison {
    const char* word;
    const char* before;
    const char* after;
};

constexpr Comparison jobComparisons[] = {
    {"Equals", " = '", "'"},
    {"Starts With", " LIKE '", "%'"},
    {"Ends With", " LIKE '%", "'"},
    {"Contains", " LIKE '%", "%'"},
};

constexpr Comparison nameComparisons[] = {
    {"Equals", " = '", "'"},
    {"Starts With", " LIKE '", "%'"},
    {"Ends With", " LIKE '%", "%'"}, // anywhere in a name, like "Contains"; deliberate
    {"Contains", " LIKE '%", "%'"},
};

constexpr const char* range = "Range";

constexpr Comparison dateComparisons[] = {
    // each includes the day itself
    {"Equals", "DateValue(DateCreated) = #", "#"},
    {"Later than", "DateValue(DateCreated) >= #", "#"},
    {"Earlier than", "DateValue(DateCreated) <= #", "#"},
    {range, "DateValue(DateCreated) >= #", "#"}, // the second date follows
};

QStringList words(std::span<const Comparison> comparisons) {
    QStringList found;
    for (const Comparison& comparison : comparisons)
        found.append(comparison.word);
    return found;
}

/// The condition of one criterion, or an empty text when it does not count.
QString condition(const QString& column, const JobSearch::Criterion& criterion,
                  std::span<const Comparison> comparisons) {
    if (!criterion.counts())
        return {};
    const auto comparison = std::ranges::find_if(
        comparisons, [&](const Comparison& c) { return criterion.comparison == QLatin1String(c.word); });
    if (comparison == comparisons.end())
        return {};
    return column + comparison->before + SqlEscape(criterion.text) + comparison->after;
}

/// The first jobs among a search's rows, with the description where it is asked for.
std::vector<JobSearch::Job> jobsOf(Recordset& rows, std::size_t most,
                                   const Recordset::Field* description = nullptr) {
    const Recordset::Field jobID = rows["JobID"];
    const Recordset::Field contractor = rows["Contractor"];
    const Recordset::Field engineer = rows["Engineer"];
    const Recordset::Field created = rows["DateCreated"];
    std::vector<JobSearch::Job> jobs;
    for (; !rows.atEnd() && jobs.size() < most; rows.moveNext())
        jobs.push_back({.jobID = jobID.text(),
                        .contractor = contractor.text(),
                        .engineer = engineer.text(),
                        .created = created.date(),
                        .description = description ? description->text() : QString()});
    return jobs;
}

} // namespace

namespace JobSearch {

QStringList comparisonsOfTexts() {
    return words(jobComparisons);
}

QStringList comparisonsOfDates() {
    return words(dateComparisons);
}

std::optional<QString> Query(const Criteria& criteria) {
    QStringList conditions = {condition("JobID", criteria.jobID, jobComparisons),
                              condition("Contractor", criteria.contractor, nameComparisons),
                              condition("Engineer", criteria.engineer, nameComparisons)};
    if (criteria.created.counts()) {
        const bool isRange = criteria.created.comparison == QLatin1String(range);
        if (!readDate(criteria.created.text) || (isRange && !readDate(criteria.createdUntil)))
            return std::nullopt;
        conditions.append(condition("", criteria.created, dateComparisons));
        if (isRange)
            conditions.append("DateValue(DateCreated) <= #" + criteria.createdUntil + "#");
    }
    conditions.removeAll(QString());
    return "SELECT * FROM tblJobHeader" +
           (conditions.isEmpty() ? QString() : " WHERE " + conditions.join(" AND "));
}

std::vector<Job> Find(const QString& query) {
    Rows rows("User", query);
    return jobsOf(*rows, std::numeric_limits<std::size_t>::max());
}

std::vector<Job> newest(std::size_t most, const QString& text) {
    constexpr int longestWait = 100; // milliseconds to wait for a lock: nobody asked for these jobs
    Connection user = dbConnection("User");
    user.setBusyTimeout(longestWait);
    user.Open();
    QString conditions = "JobID <> ?";
    QVariantList values = {Records::reservedJob()};
    for (QString word : text.split(u' ', Qt::SkipEmptyParts)) {
        for (const QChar sign : {u'!', u'%', u'_'}) // wildcards, which a user means literally
            word.replace(sign, QString(u'!') + sign);
        QStringList columns = {"JobID", "JobDscrptn", "Engineer", "Contractor"};
        for (QString& column : columns) {
            column += " LIKE ? ESCAPE '!'";
            values.append(u'%' + word + u'%');
        }
        conditions += " AND (" + columns.join(" OR ") + ")";
    }
    Recordset rows;
    rows.Open("SELECT JobID, JobDscrptn, Contractor, Engineer, DateCreated FROM tblJobHeader WHERE " +
                  conditions + " ORDER BY DateCreated DESC LIMIT " + QString::number(most),
              user, values); // an office would send all that follow, too
    const Recordset::Field description = rows["JobDscrptn"];
    return jobsOf(rows, most, &description);
}

QString editScreenOf(const QString& jobID) {
    return jobID == Records::reservedJob() ? "frmTankIDSearch" : "frmJobHeader";
}

} // namespace JobSearch
