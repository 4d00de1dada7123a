#include "core/store/JobHeader.h"

#include "core/base/Fault.h"
#include "core/store/Gateway.h"

using namespace Gateway;

using Record::column;

namespace {

using HeaderColumn = Record::Column<JobHeader>;

constexpr HeaderColumn allColumns[] = {
    column<&JobHeader::jobDscrptn>("JobDscrptn"), column<&JobHeader::engineer>("Engineer"),
    column<&JobHeader::contractor>("Contractor"), column<&JobHeader::jobInfo>("JobInfo"),
    column<&JobHeader::jobID>("JobID"),           column<&JobHeader::dateCreated>("DateCreated")};
constexpr std::size_t entryColumns = 4;

const char* const byKey = "SELECT * FROM tblJobHeader WHERE JobID = ?";

} // namespace

JobHeader::Columns JobHeader::all() {
    return allColumns;
}

JobHeader::Columns JobHeader::entries() {
    return std::span(allColumns).first<entryColumns>();
}

namespace Records {

QString reservedJob() {
    return QStringLiteral("CONVERT");
}

QString objectionToNewJob(const QString& jobID) {
    const int longest = jobHeaderSizes().jobID;
    if (jobID == reservedJob())
        return QStringLiteral("This JobID is reserved for system use!\nPlease enter another value.");
    if (jobID.size() > longest)
        return QStringLiteral("A job ID has no more than %1 characters.").arg(longest);
    return readJobHeader(jobID) ? QString(jobExists) : QString();
}

std::optional<JobHeader> readJobHeader(const QString& jobID) {
    Rows job("User", byKey, {jobID});
    return job.atEnd() ? std::nullopt : std::optional(Record::read(*job, JobHeader::all()));
}

JobHeader::Sizes jobHeaderSizes() {
    Rows table("User", "tblJobHeader", CursorType::ForwardOnly, CommandType::Table);
    return {.jobID = table["JobID"].DefinedSize(),
            .jobDscrptn = table["JobDscrptn"].DefinedSize(),
            .engineer = table["Engineer"].DefinedSize(),
            .contractor = table["Contractor"].DefinedSize()};
}

/// The check and the write share a transaction, so that no other instance can get in between.
bool addJobHeader(const JobHeader& header) {
    const Connection connection = openDatabase("User");
    Transaction write(connection);
    if (!addJobHeader(header, connection))
        return false;
    write.commit();
    return true;
}

bool addJobHeader(const JobHeader& header, const Connection& user) {
    Recordset same;
    same.Open(byKey, user, {header.jobID.value_or(QString())});
    if (!same.atEnd())
        return false;
    same.Close();
    Recordset job;
    job.Open("tblJobHeader", user, CursorType::Keyset, CommandType::Table);
    job.AddNew();
    Record::write(job, header, JobHeader::all());
    job.Update();
    return true;
}

void updateJobHeader(const JobHeader& header, const std::optional<JobHeader>& asRead,
                     Record::IfChanged ifChanged) {
    const Connection connection = openDatabase("User");
    Transaction write(connection);
    Recordset job;
    job.Open(byKey, connection, {header.jobID.value_or(QString())}, CursorType::Keyset);
    if (job.atEnd())
        throw RecordGone("This job has been deleted.");
    if (ifChanged == Record::IfChanged::Refuse && asRead &&
        !Record::agree(Record::read(job, JobHeader::entries()), *asRead, JobHeader::entries()))
        throw RecordChanged("This job has been changed since it was opened. Save anyway?");
    Record::write(job, header, JobHeader::entries());
    Record::assign(job["DateCreated"], header.dateCreated);
    job.Update();
    job.Close();
    write.commit();
}

void addReservedJob() {
    if (readJobHeader(reservedJob()))
        return;
    addJobHeader({.jobID = reservedJob(),
                  .jobDscrptn = "Convert Plain Steel to Bladder Tank",
                  .engineer = "",
                  .contractor = "",
                  .jobInfo = {},
                  .dateCreated = QDateTime::currentDateTime()});
}

} // namespace Records
