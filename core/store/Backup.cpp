#include "core/store/Backup.h"

#include "core/base/Fault.h"
#include "core/store/PartFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace Backup {

namespace {

/// The reasons as they appear in file names.
constexpr std::pair<Reason, const char*> reasonWords[] = {{Reason::Daily, "daily"},
                                                          {Reason::ByHand, "by hand"},
                                                          {Reason::Upgrade, "before upgrade"},
                                                          {Reason::Conversion, "before conversion"},
                                                          {Reason::Deletion, "before deletion"},
                                                          {Reason::Restore, "before restore"}};

const QString momentFormat = QStringLiteral("yyyy-MM-dd hh.mm.ss");

QString wordOf(Reason reason) {
    return QLatin1String(
        std::ranges::find(reasonWords, reason, [](const auto& row) { return row.first; })->second);
}

[[noreturn]] void fail(const QString& what) {
    throw DatabaseFault(DatabaseFault::Unspecified, what.toStdString());
}

/// The number of rows in each table.
QList<std::pair<QString, double>> rowsOf(const Connection& data) {
    QStringList tables;
    Recordset names;
    for (names.Open("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name", data);
         !names.atEnd(); names.moveNext())
        tables.append(names["name"].text());
    names.Close();
    QList<std::pair<QString, double>> counts;
    for (const QString& table : tables) {
        Recordset rows;
        rows.Open("SELECT COUNT(*) AS N FROM [" + table + "]", data);
        counts.append({table, rows["N"].number()});
    }
    return counts;
}

void check(const QString& path, const QList<std::pair<QString, double>>& rows) {
    Connection copy;
    copy.setProperty("Data Source", path);
    copy.setReadOnly();
    copy.Open();
    if (const QString damage = copy.engine().findDamage(Engine::Check::Thorough); !damage.isEmpty())
        fail("The copy of the data is not sound: " + damage);
    if (rowsOf(copy) != rows)
        fail("The copy of the data lacks some rows.");
}

/// The copy that a file is, judging by its name; nothing if it is not one.
std::optional<Copy> copyOf(const QFileInfo& file, const QString& base) {
    static const QRegularExpression pattern(
        QStringLiteral(R"(^(.*) (\d{4}-\d\d-\d\d \d\d\.\d\d\.\d\d) ([a-z ]+?)(?: \(\d+\))?\.mdb$)"));
    const auto match = pattern.match(file.fileName());
    if (!match.hasMatch() || match.captured(1) != base || !file.isFile() || file.isSymLink())
        return std::nullopt;
    const auto* reason = std::ranges::find_if(
        reasonWords, [&](const auto& row) { return match.captured(3) == QLatin1String(row.second); });
    const QDateTime made = QDateTime::fromString(match.captured(2), momentFormat);
    if (reason == std::end(reasonWords) || !made.isValid())
        return std::nullopt;
    return Copy{.path = file.filePath(), .made = made, .reason = reason->first, .size = file.size()};
}

/// Deletes the copies that are neither kept nor in use, and leftovers of an interrupted one.
void prune(const QString& userFile, const QString& inUse) {
    const QList<Copy> copies = copiesOf(userFile);
    QList<QDateTime> moments;
    for (const Copy& copy : copies)
        moments.append(copy.made);
    const QList<bool> kept = keptOf(moments, QDate::currentDate());
    for (qsizetype i = 0; i < copies.size(); ++i)
        if (!kept[i] && copies[i].path != inUse)
            QFile::remove(copies[i].path);
    constexpr int hour = 3600; // seconds; by then nobody is still writing it
    const QDir folder(folderOf(userFile));
    for (const QFileInfo& file : folder.entryInfoList({u'*' + PartFile::ending() + u'*'}, QDir::Files))
        if (file.lastModified().secsTo(QDateTime::currentDateTime()) > hour)
            QFile::remove(file.filePath());
}

std::function<void(const QString&)>& failureListener() {
    static std::function<void(const QString&)> listener = [](const QString&) {};
    return listener;
}

/// Makes a copy and reports a failure to the listener. Returns whether it succeeded.
bool tryMaking(const std::function<void()>& make) noexcept {
    try {
        make();
        return true;
    } catch (const std::exception& error) {
        failureListener()(QString::fromUtf8(error.what()));
        return false;
    }
}

} // namespace

QString noneOfAnOffice() {
    return QCoreApplication::translate("Backup",
                                       "Your jobs are in the office's database. Its backup is made on the "
                                       "server, for the whole office, by whoever keeps it.");
}

QString folderOf(const QString& userFile) {
    return QFileInfo(userFile).absolutePath() + QStringLiteral("/backups");
}

QString Make(const Connection& user, Reason reason, const QString& inUse) {
    if (user.isOffice())
        fail(noneOfAnOffice());
    const QString source = user.dataSource();
    const QDir folder(folderOf(source));
    if (!QDir().mkpath(folder.path()))
        fail("Cannot make the folder " + folder.path());
    const QString base = QFileInfo(source).completeBaseName();
    PartFile part(folder, base);
    {
        Transaction moment(user, Transaction::For::Reading);
        const auto rows = rowsOf(user);
        user.engine().copyTo(part.path());
        moment.commit();
        check(part.path(), rows);
    }
    part.takeMode(source);
    const QString name =
        base + u' ' + QDateTime::currentDateTime().toString(momentFormat) + u' ' + wordOf(reason);
    QString path = part.rename(folder.filePath(name), QStringLiteral(".mdb"));
    prune(source, inUse);
    return path;
}

bool makeIfPossible(const Connection& user, Reason reason, const QString& inUse) noexcept {
    return !user.isOffice() && tryMaking([&] { Make(user, reason, inUse); });
}

void onFailure(std::function<void(const QString& why)> listener) {
    failureListener() = std::move(listener);
}

void makeDaily(const QString& userFile) noexcept {
    tryMaking([&] {
        for (const Copy& copy : copiesOf(userFile))
            if (copy.reason == Reason::Daily && copy.made.date() == QDate::currentDate())
                return;
        constexpr int maxWait = 1000; // milliseconds for another instance's save
        Connection user;
        user.setProperty("Data Source", userFile);
        user.setBusyTimeout(maxWait);
        user.Open();
        Make(user, Reason::Daily);
    });
}

QList<Copy> copiesOf(const QString& userFile) {
    const QString base = QFileInfo(userFile).completeBaseName();
    QList<Copy> copies;
    for (const QFileInfo& file : QDir(folderOf(userFile)).entryInfoList(QDir::Files))
        if (const auto copy = copyOf(file, base))
            copies.append(*copy);
    std::ranges::sort(copies, [](const Copy& one, const Copy& other) {
        // Of copies made in the same second, the higher-numbered one is newer.
        return std::tuple(one.made, one.path.size(), one.path) >
               std::tuple(other.made, other.path.size(), other.path);
    });
    return copies;
}

Counts countsOf(const Connection& data) {
    const auto count = [&data](const QString& table) {
        Recordset rows;
        rows.Open("SELECT COUNT(*) AS N FROM " + table, data);
        return static_cast<int>(rows["N"].number());
    };
    return {.jobs = count("tblJobHeader"), .tanks = count("tblJobData")};
}

QList<bool> keptOf(const QList<QDateTime>& newestFirst, const QDate& today) {
    constexpr int maxOfToday = 20;
    constexpr int days = 10;
    constexpr qint64 weeks = 8;
    constexpr int months = 12;
    const auto mondayOf = [](const QDate& day) { return day.addDays(1 - day.dayOfWeek()); };
    const auto firstOf = [](const QDate& day) { return QDate(day.year(), day.month(), 1); };
    QSet<QDate> seenDays;
    QSet<QDate> seenWeeks;
    QSet<QDate> seenMonths;
    const auto isFirst = [](QSet<QDate>& seen, const QDate& bucket) {
        const bool isNew = !seen.contains(bucket);
        seen.insert(bucket);
        return isNew;
    };
    QList<bool> kept;
    int ofToday = 0;
    for (const QDateTime& moment : newestFirst) {
        const QDate day = moment.date();
        bool keep =
            day >= today && ++ofToday <= maxOfToday; // later days too, in case the clock has been set back
        keep |= day > today.addDays(-days) && isFirst(seenDays, day);
        keep |= mondayOf(day) > mondayOf(today).addDays(-7 * weeks) && isFirst(seenWeeks, mondayOf(day));
        keep |= firstOf(day) > firstOf(today).addMonths(-months) && isFirst(seenMonths, firstOf(day));
        kept.append(keep);
    }
    return kept;
}

} // namespace Backup
