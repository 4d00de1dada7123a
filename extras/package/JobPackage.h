#pragma once

#include "documents/report/DocumentMaker.h"
#include "extras/package/PackageContents.h"

#include <memory>

/// All documents of a job as one.
namespace JobPackage {

/// Begins the package of a job with its cover and schedule. The parts that follow are the chosen documents of
/// each tank line, in the order of the job's documents; a line without a model has a page that says so. The
/// numbers of the cover's contents are filled in as their pages are made. A change of the job meanwhile
/// begins the package anew; the session's values stay as they are. Throws DatabaseFault, and so does making
/// the parts, which throws RecordGone when the job is gone.
std::unique_ptr<DocumentMaker> begin(const QString& jobID, const Contents& contents);

} // namespace JobPackage
