#pragma once

#include "core/store/Database.h"

#include <QDate>
#include <QList>

#include <functional>

/// Copies of the user's data in the folder "backups" beside them.
namespace Backup {

/// What a copy was made for.
enum class Reason { Daily, ByHand, Upgrade, Conversion, Deletion, Restore };

/// A copy, as its name tells.
struct Copy {
    QString path;
    QDateTime made;
    Reason reason = Reason::Daily;
    qint64 size = 0; // bytes
};

/// How much a copy or the data hold.
struct Counts {
    int jobs = 0;
    int tanks = 0;
    bool operator==(const Counts&) const = default;
};

/// The folder of the copies of some user data.
QString FolderOf(const QString& userFile);

/// Copies open user data: written beside, checked, and renamed only then. The copy has mode and owner of the
/// file, and what is too old goes, but for a copy that is in use. The copy's path. Throws DatabaseFault; no
/// half copy stays.
QString Make(const Connection& user, Reason reason, const QString& inUse = {});

/// The same where a failure must not stop what goes on; it is told to the listener. Whether there is a copy.
bool MakeIfPossible(const Connection& user, Reason reason, const QString& inUse = {}) noexcept;

/// Sets what hears of a copy that could not be made, in the thread that tried.
void OnFailure(std::function<void(const QString& why)> listener);

/// Makes the copy of the day over a connection of its own, unless there is one. A failure is told as above.
void MakeDaily(const QString& userFile) noexcept;

/// The copies of some user data, the newest first.
QList<Copy> CopiesOf(const QString& userFile);

/// What a copy holds. Throws DatabaseFault.
Counts CountsOf(const Connection& data);

/// Which of some moments, the newest first, are kept on a day: the newest of that day and of the nine before,
/// of eight weeks and of twelve months, and the twenty newest of the day itself.
QList<bool> Kept(const QList<QDateTime>& newestFirst, const QDate& today);

} // namespace Backup
