#pragma once

#include "documents/report/Document.h"

#include <functional>
#include <optional>

/// All documents of a job as one.
namespace JobPackage {

/// What a package holds beside cover and schedule, and what its cover says.
struct Contents {
    bool submittals = true;
    bool calculations = false;
    bool specifications = false;
    bool drawings = false;
    QString revision{};
    QString note{};
};

/// Makes the package of a job: cover with contents, schedule, then the chosen documents of each tank line in
/// the order of the job's documents; a line without a model has a page that says so. `goOn` is told before
/// each line how many are done, and stops the work with false; then nothing is returned. The session's tank
/// line changes meanwhile. Throws DatabaseFault.
std::optional<Document> make(const QString& jobID, const Contents& contents,
                             const std::function<bool(int done, int all)>& goOn);

} // namespace JobPackage
