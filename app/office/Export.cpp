#include "app/office/Import.h"

#include "app/office/Terminal.h"
#include "core/store/JobCopies.h"
#include "core/store/OfficeEngines.h"
#include "core/store/Schema.h"
#include "core/store/StoredRows.h"

namespace Office {

Report exportJob(const QString& address, const QString& jobID, const QString& file, Mode mode) {
    Gateway::onPasswordNeeded([](const QString&, const QString&) {
        return Terminal::readPassword("Password for the server: ").value_or(QString());
    });
    Connection office;
    office.setProperty("Data Source", address);
    office.Open();
    Schema::upgrade(office); // only refuses an office of another version
    if (!Gateway::hasRow(office, "tblJobHeader", "JobID", jobID))
        throw RecordGone("The office has no job " + jobID.toStdString() + ". Nothing was written.");
    Report report{QString("The job %1 with its tanks is written to %2.").arg(jobID, file)};
    if (mode == Mode::DryRun)
        report += "Dry run: nothing was written.";
    else
        JobCopies::Export(office, jobID, file);
    return report;
}

} // namespace Office
