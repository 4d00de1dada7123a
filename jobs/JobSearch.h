#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <optional>
#include <vector>

/// The search among the job headers.
namespace JobSearch {

/// The words by which a text, or a date, can be compared.
QStringList TextComparisons();
QStringList DateComparisons();

/// One criterion. It counts only when both its text and its comparison are filled in.
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

/// The statement that finds the jobs of all criteria; nothing when a date that counts is no date.
std::optional<QString> Query(const Criteria& criteria);

struct Job {
    QString jobID;
    QString contractor;
    QString engineer;
    QDate created; // invalid for a job without a date
};

/// The jobs that a statement finds in the user database, in its order. Throws DatabaseFault.
std::vector<Job> Find(const QString& query);

/// The jobs that were created last, the newest first. Throws DatabaseFault, and NoDatabaseFile without data.
std::vector<Job> Newest(std::size_t most);

/// The screen at which a job is edited: the reserved job of the steel conversions has no header.
QString EditScreenOf(const QString& jobID);

} // namespace JobSearch
