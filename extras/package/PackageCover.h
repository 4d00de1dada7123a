#pragma once

#include "documents/report/Document.h"
#include "extras/package/PackagePlan.h"

namespace JobPackage {

/// The cover of a package with its contents, whose page numbers are still unknown. Throws DatabaseFault.
Pages coverPages(const QString& jobID, const JobRecords& job, const Contents& contents,
                 const QList<Entry>& entries);

/// Writes the page number of an entry, counted from 0, into the contents on the first pages of a document.
void writePageNumber(Pages& pages, qsizetype coverSize, qsizetype entry, int number);

/// The places of the titles in the contents, in the order of the entries, without targets.
QList<PageLink> titlesOf(const Pages& pages, qsizetype coverSize);

} // namespace JobPackage
