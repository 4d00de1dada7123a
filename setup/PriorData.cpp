#include "setup/PriorData.h"

#include "core/base/Numbers.h"
#include "core/base/Text.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Status.h"
#include "core/shell/Trap.h"
#include "core/store/Backup.h"
#include "core/store/Gateway.h"
#include "core/store/JobCopies.h"
#include "core/store/Model.h"
#include "setup/InstallerFiles.h"
#include "setup/PriorFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSet>

#include <cmath>
#include <optional>

using namespace Catalogue;
using namespace Faults;
using namespace Gateway;
using namespace InstallerFiles;
using namespace StatusBar;

namespace {

const QString converting = QStringLiteral("Converting Prior Data...");
constexpr double standardAtmosphere = 14.7; // psia

/// The numbers of jobs and tanks. They have 16 bits; a larger file is rejected.
struct Counts {
    std::int16_t jobs = 0;
    std::int16_t tanks = 0;
    bool operator==(const Counts&) const = default;
};

Counts countsOf(const PriorRows& rows) {
    return {ToInt16(rows.tables[PriorTables::JobHeader].announced),
            ToInt16(rows.tables[PriorTables::JobData].announced)};
}

Counts countsOf(const Connection& user) {
    const auto count = [&user](const QString& table) {
        Recordset rows;
        rows.Open("SELECT * FROM " + table, user);
        return ToInt16(rows.RecordCount());
    };
    return {count("tblJobHeader"), count("tblJobData")};
}

/// Shows progress in the status bar and lets the windows repaint. Input stays blocked: it could start
/// something that would interfere with the open transaction.
class Progress {
  public:
    Progress(QString what, size_t rows) : things(std::move(what)), total(rows) { clock.start(); }
    void step() {
        ++done;
        if (clock.elapsed() < 40) // milliseconds; beyond that a window appears frozen
            return;
        clock.restart();
        const QLocale english(QLocale::English);
        setStatusText(QStringLiteral("%1 %2 of %3 %4")
                          .arg(converting, english.toString(done), english.toString(total), things));
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }

  private:
    QString things;
    qulonglong total;
    qulonglong done = 0;
    QElapsedTimer clock;
};

/// Converts a moment stored in days since the end of 1899. The fraction counts forward even on days before
/// that. Uses UTC, because the missing hour of a summer time change would shift stored values.
QDateTime momentOf(double days) {
    constexpr double first = -657434; // year 100
    constexpr double end = 2958466;   // year 9999
    if (days < first || days >= end)
        throw DatabaseFault(
            DatabaseFault::Unspecified,
            QCoreApplication::translate("PriorData", "The prior database holds a date that is none.")
                .toStdString());
    const double whole = std::trunc(days);
    const auto seconds = static_cast<qint64>(std::round(std::abs(days - whole) * 86400));
    const QDateTime origin(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC);
    return origin.addDays(static_cast<qint64>(whole)).addSecs(seconds);
}

QString textOf(const QVariant& value) {
    return value.typeId() == QMetaType::Double ? shownNumber(value.toDouble()) : value.toString();
}

/// A job ID in the form in which equal IDs are the same.
QString keyOf(const QVariant& job) {
    return withoutTrailingBlanks(textOf(job)).toCaseFolded();
}

/// Copies an earlier value to a column; a null leaves the column unchanged.
void take(Recordset::Field column, const QVariant& value) {
    if (value.typeId() == QMetaType::Double)
        column = value.toDouble();
    else if (value.isValid())
        column = value.toString();
}

/// The amounts taken over at the user's request.
struct TakenOver {
    qsizetype jobs = 0;
    qsizetype tanks = 0;
    qsizetype names = 0;
};

/// Writes the rows of one file into the user's data.
class Conversion {
  public:
    Conversion(const Connection& target, const PriorRows& source) : user(target), prior(source) {}

    void run() {
        convertNames(PriorTables::Contractor, {});
        convertNames(PriorTables::Engineer, {});
        convertUser();
        convertJobs();
        convertTanks();
        setClasses();
    }

    /// The same for a user who already has data: their defaults are kept, as are the names and jobs that they
    /// already have.
    TakenOver addToExisting(const QSet<QString>& existingJobs) {
        hasOwnData = true;
        skippedJobs = existingJobs;
        for (const auto table : {PriorTables::Contractor, PriorTables::Engineer})
            convertNames(table, namesIn(table));
        convertJobs();
        convertTanks();
        setClasses();
        return taken;
    }

  private:
    QSet<QString> namesIn(PriorTables::Index index) const {
        QSet<QString> found;
        Recordset names;
        for (openTable(names, index); !names.atEnd(); names.moveNext())
            found.insert(names["fldName"].text().toCaseFolded());
        return found;
    }

    bool isSkipped(const QVariant& job) const { return skippedJobs.contains(keyOf(job)); }

    const std::vector<QVariantList>& rowsOf(PriorTables::Index table) const {
        return prior.tables[table].rows;
    }

    void openTable(Recordset& table, PriorTables::Index index) const {
        table.Open(PriorTables::all[index].name, user, CursorType::Keyset, CommandType::Table);
    }

    /// Skips names already present.
    void convertNames(PriorTables::Index index, const QSet<QString>& present) {
        Recordset names;
        openTable(names, index);
        for (const QVariantList& row : rowsOf(index)) {
            const QString name = textOf(row[0]).toCaseFolded();
            if (present.contains(name))
                continue;
            ++taken.names;
            names.AddNew();
            names["fldName"] = textOf(row[0]);
            names.Update();
        }
    }

    void convertUser() {
        if (rowsOf(PriorTables::User).empty())
            return;
        const QVariantList& row = rowsOf(PriorTables::User).front();
        const QVariant& contractor = row[0];
        const QVariant& engineer = row[1];
        const QVariant& pressure = row[2];
        Recordset defaults;
        openTable(defaults, PriorTables::User);
        if (defaults.atEnd())
            defaults.AddNew();
        take(defaults["DefaultContractor"], contractor);
        // The earlier program never took over the engineer's name: both columns get the contractor's.
        if (engineer.isValid())
            take(defaults["DefaultEngineer"], contractor);
        take(defaults["DefaultPSIa"], pressure.isValid() ? pressure : standardAtmosphere);
        defaults.Update();
    }

    void convertJobs() {
        Recordset jobs;
        openTable(jobs, PriorTables::JobHeader);
        Progress progress("jobs", rowsOf(PriorTables::JobHeader).size());
        for (const QVariantList& row : rowsOf(PriorTables::JobHeader)) {
            if (isSkipped(row[0]))
                continue;
            ++taken.jobs;
            jobs.AddNew();
            for (qsizetype i = 0; i < row.size(); ++i) {
                const QString column = PriorTables::jobHeader[i].target;
                if (column == "DateCreated" && row[i].isValid())
                    jobs[column] =
                        momentOf(row[i].typeId() == QMetaType::Double ? row[i].toDouble()
                                                                      : toNumber(row[i].toString()));
                else
                    take(jobs[column], row[i]);
            }
            jobs.Update();
            progress.step();
        }
    }

    void convertTanks() {
        Recordset tanks;
        openTable(tanks, PriorTables::JobData);
        const QDateTime now = QDateTime::currentDateTime();
        Progress progress("tanks", rowsOf(PriorTables::JobData).size());
        int runningNumber = 1; // across the whole table; a job's tanks may be 7 and 8
        for (const QVariantList& row : rowsOf(PriorTables::JobData)) {
            if (isSkipped(row[0])) {
                ++runningNumber;
                continue;
            }
            ++taken.tanks;
            const QString tankID = textOf(row[0]) + u'.' + QString::number(runningNumber);
            added.insert(tankID);
            tanks.AddNew();
            tanks["TankID"] = tankID;
            tanks["TankNo"] = runningNumber;
            tanks["TankClass"] = "";
            tanks["DateCreated"] = now;
            for (qsizetype i = 0; i < row.size(); ++i)
                take(tanks[PriorTables::jobData[i].target], row[i]);
            tanks.Update();
            ++runningNumber;
            progress.step();
        }
    }

    /// The series of a model, cached; empty if the catalogue does not have the model.
    QString classOf(const QString& model) {
        if (!classes.contains(model)) {
            const auto found = findModel(model);
            classes.insert(model, found ? found->series.value_or(QString()) : QString());
        }
        return classes[model];
    }

    /// The second pass: gives every tank line its model's series; for a user who already has data, only the
    /// added lines.
    void setClasses() {
        QList<std::pair<QString, QString>> tanks; // key and series, read completely before the first change
        Recordset lines;
        for (lines.Open("tblJobData", user, CursorType::ForwardOnly, CommandType::Table); !lines.atEnd();
             lines.moveNext())
            if (const QString series = classOf(lines["ModelNo"].text());
                !series.isEmpty() && (!hasOwnData || added.contains(lines["TankID"].text())))
                tanks.append({lines["TankID"].text(), series});
        lines.Close();
        Progress progress("models", static_cast<size_t>(tanks.size()));
        for (const auto& [tankID, series] : tanks) {
            Recordset line;
            line.Open("SELECT * FROM tblJobData WHERE TankID = ?", user, {tankID}, CursorType::Keyset);
            line["TankClass"] = series;
            line.Update();
            progress.step();
        }
    }

    const Connection& user;
    const PriorRows& prior;
    QHash<QString, QString> classes; // by model
    QSet<QString> skippedJobs;       // case-folded
    QSet<QString> added;             // keys of the tank lines
    bool hasOwnData = false;         // whether the user already has data
    TakenOver taken;
};

/// Marks the conversion as done; it is only attempted once.
void setConverted(const Connection& user) {
    Recordset flags;
    flags.Open("tblFirstTime", user, CursorType::Keyset, CommandType::Table);
    if (flags.atEnd())
        return;
    flags["Convert"] = 1;
    flags.Update();
}

/// The earlier program's file.
struct Source {
    QString path;
    bool namedByInstaller = false; // the installer also wants it deleted
};

/// Asks the user for the file when no datasource.ini names one; nothing if they have none.
std::optional<Source> askForFile() {
    const auto answer = Dialogs::current().show({.text = "Prior database not found!\n\r"
                                                         "Do you have prior data to convert?",
                                                 .title = "Convert Data?",
                                                 .icon = QMessageBox::Question,
                                                 .buttons = QMessageBox::Yes | QMessageBox::No,
                                                 .defaultButton = QMessageBox::No});
    if (answer != QMessageBox::Yes)
        return std::nullopt;
    // The dialog starts where no earlier program kept its data, so an unchanged name means none.
    const QString unchanged =
        QFileInfo(dbConnection("Sys").dataSource()).absoluteDir().filePath(QStringLiteral("Data.mdb"));
    const QString file =
        Dialogs::current().openFile("*.mdb (*.mdb)", unchanged, "Convert Prior Version Data");
    if (file.isEmpty() || file == "Data.mdb" || QFileInfo(file).absoluteFilePath() == unchanged)
        return std::nullopt;
    return Source{file};
}

std::optional<Source> priorFile() {
    try {
        return Source{readInstallerFile("datasource.ini"), true};
    } catch (const Fault& fault) {
        if (fault.number() != Fault::FileNotFound && fault.number() != Fault::PathNotFound)
            throw;
    }
    return askForFile();
}

/// False, with the reason, for a file that the provider cannot read.
bool readPrior(const QString& path, PriorRows& rows, QString* why = nullptr) {
    try {
        readPriorFile(path, rows);
        return true;
    } catch (const DatabaseFault& fault) {
        if (fault.number() != DatabaseFault::Unspecified &&
            fault.number() != DatabaseFault::InvalidConnection)
            throw;
        if (why)
            *why = QString::fromUtf8(fault.what());
        return false;
    }
}

/// The first numbered name not used in the folder, not even by a dangling link.
QString freeName(const QDir& folder, const QString& name) {
    for (int number = 1;; ++number) {
        const QFileInfo candidate(folder.filePath(QStringLiteral("%1.unread%2").arg(name).arg(number)));
        if (!candidate.exists() && !candidate.isSymLink())
            return candidate.filePath();
    }
}

/// A file that could not be read counts as converted and would be deleted. Renames it, so that somebody may
/// still repair it. False if that fails, in which case it must not be deleted.
bool putAside(const QString& path) {
    if (!isInstallersToTake(path))
        return true;
    const QFileInfo file(path);
    for (QString name = file.fileName(); !name.isEmpty();
         name.truncate(name.size() / 2)) // too long to add a number
        if (QFile::rename(path, freeName(file.dir(), name)))
            return true;
    return false;
}

bool convert(const Source& source) {
    const Connection user = openDatabase("User");
    PriorRows rows;
    bool complete = false;
    if (readPrior(source.path, rows)) {
        const Counts expected = countsOf(rows);
        Backup::makeIfPossible(user, Backup::Reason::Conversion);
        Transaction transaction(user);
        Conversion(user, rows).run();
        complete = countsOf(user) == expected;
        setConverted(user);
        transaction.commit();
    } else {
        complete = countsOf(rows) == Counts{};
        if (complete && source.namedByInstaller)
            complete = putAside(source.path);
        setConverted(user);
    }
    setStatusText("Finished!");
    return complete;
}

const QString takeOverTitle = QStringLiteral("Take over prior data");

/// The jobs in a file that the user's data already has, as the file spells them. Tank lines without a header
/// count too: they would become part of the user's job.
QStringList equalJobs(const PriorRows& rows, const Connection& user) {
    QStringList jobs;
    QSet<QString> seen;
    for (const auto table : {PriorTables::JobHeader, PriorTables::JobData})
        for (const QVariantList& row : rows.tables[table].rows)
            if (const QString key = keyOf(row[0]); !seen.contains(key)) {
                seen.insert(key);
                jobs.append(withoutTrailingBlanks(textOf(row[0])));
            }
    return JobCopies::existing(jobs, user);
}

bool confirmWithout(const QStringList& equal) {
    return Dialogs::current().show({.text = "These jobs are in your data already:\n" + equal.join(", ") +
                                            "\nDo you want to take over the others without them?",
                                    .title = takeOverTitle,
                                    .icon = QMessageBox::Question,
                                    .buttons = QMessageBox::Yes | QMessageBox::No,
                                    .defaultButton = QMessageBox::No}) == QMessageBox::Yes;
}

void report(const QString& text) {
    Dialogs::current().show({.text = text, .title = takeOverTitle, .icon = QMessageBox::Information});
}

void takeOver(const QString& path) {
    PriorRows rows;
    QString why;
    setStatusText(converting);
    if (!readPrior(path, rows, &why)) {
        SetStatusBarText();
        return report("Nothing was taken over, as the file cannot be read.\n" + why);
    }
    const Connection user = openDatabase("User");
    const QStringList equal = equalJobs(rows, user);
    if (!equal.isEmpty() && !confirmWithout(equal))
        return SetStatusBarText();
    Backup::makeIfPossible(user, Backup::Reason::Conversion);
    QSet<QString> skipped;
    for (const QString& job : equal)
        skipped.insert(keyOf(job));
    Transaction write(user);
    const TakenOver taken = Conversion(user, rows).addToExisting(skipped);
    write.commit();
    setStatusText("Finished!");
    report(QStringLiteral("Taken over: %1 jobs, %2 tanks, %3 names of engineers and contractors.")
               .arg(taken.jobs)
               .arg(taken.tanks)
               .arg(taken.names) +
           (equal.isEmpty() ? QString()
                            : "\nLeft out, as they are in your data already: " + equal.join(", ") + "."));
}

} // namespace

void PriorData::takeOverPriorData() {
    const QString path = Dialogs::current().openFile("*.mdb (*.mdb)", {}, takeOverTitle);
    if (path.isEmpty())
        return;
    const Hourglass hourglass;
    underName("TakeOverPriorData", [&path] { takeOver(path); });
}

bool PriorData::ConvertPriorData() {
    const Hourglass hourglass;
    setStatusText(converting);
    bool complete = false;
    runTrapped("ConvertPriorData", [&] {
        if (const auto source = priorFile())
            complete = convert(*source);
        else
            SetStatusBarText();
    });
    return complete;
}
