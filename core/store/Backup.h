#pragma once

#include "core/store/Database.h"

#include <QDate>
#include <QList>

#include <functional>

/// Copies of the user's data, in the folder "backups" next to it.
namespace Backup {

/// Why a copy was made.
enum class Reason { Daily, ByHand, Upgrade, Conversion, Deletion, Restore };

/// A copy, as described by its name.
struct Copy {
    QString path;
    QDateTime made;
    Reason reason = Reason::Daily;
    qint64 size = 0; // bytes
};

/// How much a copy or the data contains.
struct Counts {
    int jobs = 0;
    int tanks = 0;
    bool operator==(const Counts&) const = default;
};

/// Says that an office has no copies here, and where its backup is.
QString noneOfAnOffice();

/// The folder with the copies of a user file.
QString folderOf(const QString& userFile);

/// Copies open user data to a temporary file, checks it, and only then renames it. The copy gets the mode and
/// owner of the original; copies that are too old are deleted, except one that is in use. Returns the copy's
/// path. Throws DatabaseFault and leaves no partial copy; also for an office, which is no file.
QString Make(const Connection& user, Reason reason, const QString& inUse = {});

/// The same where a failure must not stop the caller: it is reported to the listener. Returns whether there
/// is a copy. There is none of an office, which is no failure.
bool makeIfPossible(const Connection& user, Reason reason, const QString& inUse = {}) noexcept;

/// Sets the listener for copies that could not be made. It is called in the thread that tried.
void onFailure(std::function<void(const QString& why)> listener);

/// Makes the day's copy over its own connection, unless it exists. Failures go to the listener.
void makeDaily(const QString& userFile) noexcept;

/// The copies of a user file, newest first.
QList<Copy> copiesOf(const QString& userFile);

/// What a copy contains. Throws DatabaseFault.
Counts countsOf(const Connection& data);

/// Which of these moments, newest first, are kept on a given day: the newest of each of ten days, eight weeks
/// and twelve months, and the twenty newest of the day itself.
QList<bool> keptOf(const QList<QDateTime>& newestFirst, const QDate& today);

} // namespace Backup
