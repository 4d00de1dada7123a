#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>

/// What the caller of brennoval-office wants done.
struct OfficeRequest {
    enum class Command { Create, AddUser, RemoveUser, ListUsers, Import, ExportJob, Upgrade };
    Command command = Command::ListUsers;
    QString office;        // its address, as libpq takes it, without a password
    QStringList arguments; // what follows the address
    bool dryRun = false;
    bool noPassword = false; // a new user gets none
    bool newNumbers = false; // colliding jobs are taken over under others
    QString user;            // whose own tables an import fills; the caller's if empty
    QString maintenance = QStringLiteral("postgres"); // the database through which another is created
};

namespace OfficeCommandLine {

/// A command line that cannot be understood. The description says why.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The text for --help: of one command if the arguments name one, or else of all. Nothing if they do not ask
/// for help.
std::optional<QString> helpFor(const QStringList& arguments);

/// Understands the arguments after the program's name. Throws UsageError, also for an address that holds a
/// password, which every user of the machine could read, and DatabaseFault for one that is none.
OfficeRequest parse(const QStringList& arguments);

} // namespace OfficeCommandLine
