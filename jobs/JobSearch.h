#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <optional>
#include <vector>

/// Searches the job headers.
namespace JobSearch {

/// The comparisons offered for text and for dates.
QStringList comparisonsOfTexts();
QStringList comparisonsOfDates();

/// One criterion. It counts only if both its text and its comparison are filled in.
struct Criterion {
    QString text;
    QString comparison;

    bool counts() const { return !text.isEmpty() && !comparison.isEmpty(); }
};

struct Criteria {
    Criterion jobID = {};
    Criterion contractor = {};
    Criterion engineer = {};
    Criterion created = {};
    QString createdUntil = {}; // the second date of a range
};

/// The statement that finds the jobs matching all criteria; nothing if a date that counts is not valid.
std::optional<QString> Query(const Criteria& criteria);

struct Job {
    QString jobID;
    QString contractor;
    QString engineer;
    QDate created;            // invalid for a job without a date
    QString description = {}; // read for the newest jobs only
};

/// The jobs that a statement finds in the user database, in order. Throws DatabaseFault.
std::vector<Job> Find(const QString& query);

/// The most recently created jobs, newest first, without the reserved one. Of those, only jobs in which each
/// of some words occurs in ID, description, engineer or contractor, regardless of case. Throws DatabaseFault,
/// and NoDatabaseFile when there are no data.
std::vector<Job> newest(std::size_t most, const QString& words = {});

/// The screen on which a job is edited: the reserved job of the steel conversions has no header.
QString editScreenOf(const QString& jobID);

} // namespace JobSearch
