#include "app/office/Import.h"

#include "core/store/PartFile.h"
#include "core/store/Schema.h"
#include "core/store/StoredRows.h"

#include <QFileInfo>

#include <algorithm>
#include <array>

using Gateway::StoredRows;
using Postgres::Result;

namespace Office {

namespace {

[[noreturn]] void refuse(const QString& why) {
    throw DatabaseFault(DatabaseFault::Unspecified, why.toStdString());
}

/// A value of the server's as the program's own file holds it.
QVariant storedValue(const Result& rows, int row, int column) {
    constexpr quint32 doubleType = 701;
    constexpr std::array<quint32, 3> wholeTypes = {20, 21, 23};
    if (rows.isNull(row, column))
        return {};
    const QByteArrayView text = rows.bytes(row, column);
    if (rows.type(column) == doubleType)
        return text.toDouble();
    if (std::ranges::find(wholeTypes, rows.type(column)) != wholeTypes.end())
        return text.toLongLong();
    return QString::fromUtf8(text);
}

/// The rows of a job without the key that only the office has.
StoredRows rowsOf(Postgres::Connection& office, const QString& table, const QString& jobID) {
    const Result found = office.run(
        "SELECT * FROM office." + table + " WHERE JobID = $1::citext ORDER BY office_row", {jobID});
    StoredRows all{.table = table, .columns = {}, .rows = QList<QVariantList>(found.rows())};
    for (int column = 0; column < found.columns(); ++column) {
        if (found.name(column) == u"office_row")
            continue;
        all.columns.append(found.name(column));
        for (int row = 0; row < found.rows(); ++row)
            all.rows[row].append(storedValue(found, row, column));
    }
    return all;
}

/// The file appears once it is complete.
void write(const QString& file, const StoredRows& header, const StoredRows& lines) {
    const QFileInfo target(file);
    PartFile part(target.absoluteDir(), target.completeBaseName());
    {
        Connection data;
        data.setProperty("Data Source", part.path());
        data.Open();
        Schema::create(data);
        Transaction rows(data);
        Gateway::addStoredRows(data, header);
        Gateway::addStoredRows(data, lines);
        rows.commit();
    }
    QFile::setPermissions(part.path(),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    part.replace(file);
}

} // namespace

Report exportJob(const QString& address, const QString& jobID, const QString& file, Mode mode) {
    const QFileInfo target(file);
    if (target.exists() && target.suffix().compare("mdb", Qt::CaseInsensitive) == 0)
        refuse(file + " is a database. It was not replaced.");
    Postgres::Connection office = connectToCurrent(address);
    Postgres::Transaction moment(office); // header and lines as they are at one moment
    office.runScript(
        "SET TRANSACTION ISOLATION LEVEL REPEATABLE READ, READ ONLY; SET LOCAL search_path = office");
    const StoredRows header = rowsOf(office, "tblJobHeader", jobID);
    const StoredRows lines = rowsOf(office, "tblJobData", jobID);
    moment.commit();
    if (header.rows.isEmpty())
        refuse("The office has no job " + jobID + ". Nothing was written.");
    Report report{QString("The job %1 with %2 tanks is written to %3.")
                      .arg(jobID, QString::number(lines.rows.size()), file)};
    if (mode == Mode::DryRun)
        report += "Dry run: nothing was written.";
    else
        write(file, header, lines);
    return report;
}

} // namespace Office
