#pragma once

#include "core/store/JobHeader.h"
#include "core/store/Representative.h"
#include "core/store/TankLine.h"
#include "extras/package/PackageContents.h"

#include <QList>

/// What a package will hold, known before its pages are made.
namespace JobPackage {

/// A line of the contents.
struct Entry {
    QString title;
    int depth = 0;
};

/// A document of a tank line.
struct Part {
    enum class Kind { Submittal, Calculation, Specification, Drawing, Nothing };
    Kind kind;
    std::size_t tank = 0; // among the tanks
    QString what;    // the submittal's report, the specification's text, the drawing's file, or why there is
                     // nothing
    int entries = 1; // in the contents; the tank's own leads to its first document, too
};

/// The user's records of a job, as they were read.
struct JobRecords {
    std::optional<JobHeader> header;
    std::vector<TankLine> tanks; // in the order of the documents
    std::vector<Representative> representatives;

    bool operator==(const JobRecords&) const = default;

    /// The company of the representative; empty if there is none.
    QString representative() const;
};

/// Throws DatabaseFault.
JobRecords readJobRecords(const QString& jobID);

/// The contents of a package and its parts in the same order; the schedule, which comes first, is no part.
struct Plan {
    QList<Entry> entries;
    std::vector<Part> parts;
};

/// Throws DatabaseFault.
Plan planOf(const JobRecords& job, const Contents& contents);

} // namespace JobPackage
