#include "app/office/CommandLine.h"

#include "app/office/Address.h"

#include <algorithm>
#include <array>
#include <span>

namespace OfficeCommandLine {

namespace {

using Command = OfficeRequest::Command;

constexpr auto usage = R"(Usage: brennoval-office COMMAND [OPTION...] OFFICE [ARGUMENT...]

Sets up the database that the people of an office share, and looks after it.

  create OFFICE               make the database, its tables and the role of its users
  add-user OFFICE USER        let a user in, with settings of the user's own
  remove-user OFFICE USER     let a user in no longer, and remove the settings
  list-users OFFICE           say who the users are
  import OFFICE FILE          take the data of a single user's file over into the office
  export-job OFFICE JOB FILE  write a job to a file, which any copy of the program can import
  upgrade OFFICE              bring an office of an older version up to this one

OFFICE is its address: postgresql://ROLE@SERVER/DATABASE, with any parameters of libpq's after a question mark. It holds
no password: that comes from ~/.pgpass or a service file, or is asked for.

  --dry-run  do everything, or say what would be done, and change nothing
  --help     say this, or more about COMMAND, and do nothing
  --version  say the version, and do nothing

The exit status is 0 when all is done or was done already, 1 when something failed or was refused, in which case
nothing was changed unless it says so, and 2 when the command line was not understood.
)";

constexpr auto createHelp = R"(Usage: brennoval-office create [--dry-run] [--maintenance DATABASE] OFFICE

Makes the office's database, the tables that its users share, and a role for all its users, named after the database:
brennoval_users for the database brennoval. The caller's role must be allowed to create databases and roles, and
owns what is made; the users only get to read and write rows.

An empty database that is there already is used, if its locale is C.UTF-8; one that holds anything else is refused. An
office that is there already stays as it is. What failed half-way can be run again.

  --maintenance DATABASE  the database to connect to while the office's is not there; postgres if left out
  --dry-run               check everything, say what would be done, and change nothing
)";

constexpr auto addUserHelp = R"(Usage: brennoval-office add-user [--dry-run] [--no-password] OFFICE USER

Lets USER work in the office: makes the role if there is none, with a password that is asked for twice, and a schema of
the same name for the user's own defaults, representative, details and schedule. The role can read and write rows of the
office and of its own schema, and nothing else.

When the standard input is not a terminal, its first line is the new password. A role that is there already keeps its
password; one with rights over the server, such as a superuser, is refused. A user who is in the office already, but
lacks something, such as the role after a backup was restored on another server, is completed.

  --no-password  give a new role no password, where the server lets users in by other means
  --dry-run      do everything, and take it back
)";

constexpr auto removeUserHelp = R"(Usage: brennoval-office remove-user [--dry-run] OFFICE USER

Takes USER out of the office, with the schema that holds the user's own defaults, representative, details and schedule.
Jobs, tanks, engineers and contractors stay: they are the office's. The role is removed from the server too, unless it
is in use elsewhere there.

  --dry-run  do everything, and take it back
)";

constexpr auto listUsersHelp = R"(Usage: brennoval-office list-users OFFICE

Says for each user of the office whether the role may log in, whether the user's own tables are there, and how many
copies of the program are connected just now.

  --dry-run  accepted like everywhere; this command never changes anything
)";

constexpr auto importHelp =
    R"(Usage: brennoval-office import [--dry-run] [--new-numbers] [--user USER] OFFICE FILE

Takes the data of a single user over into the office, all of them or nothing. FILE is the user's
BrennovalUserData.mdb, or a backup of it; it may be of an older version and is only read.

Jobs with their tanks, engineers and contractors join those of the office. A job that the office has in the same words
and figures counts as taken over. If it has another job of the same number, nothing is taken over, and all such jobs are
named. The user's own defaults, representative and details go into the schema of USER, unless some were stored there
already, which then stay.

  --new-numbers  give a job whose number is in use another: 2026-015 becomes 2026-015-2
  --user USER    whose own data they are; the role that connects, if left out
  --dry-run      do everything, and take it back
)";

constexpr auto exportJobHelp = R"(Usage: brennoval-office export-job [--dry-run] OFFICE JOB FILE

Writes a job with its tanks to FILE, as Export job of the program does. The program's Import job reads it, in an
office or outside. A file of the same name is replaced, except a database (a name that ends in mdb).

  --dry-run  read the job, say what would be written, and write nothing
)";

constexpr auto upgradeHelp = R"(Usage: brennoval-office upgrade [--dry-run] OFFICE

Brings the tables of an office, and each user's own, from an older version up to the one of this program, all or
nothing. Copies of the program of the older version are refused from then on. Make a backup first:

  pg_dump --format=custom --file=office.dump DATABASE

  --dry-run  do everything, and take it back
)";

constexpr std::string_view noPassword = "--no-password";
constexpr std::string_view newNumbers = "--new-numbers";
constexpr std::string_view userOption = "--user";
constexpr std::string_view maintenanceOption = "--maintenance";

struct Row {
    Command command;
    const char* name;
    qsizetype arguments; // beside the address
    const char* help;
    std::array<std::string_view, 2> options; // beside --dry-run
};

constexpr Row rows[] = {
    {Command::Create, "create", 0, createHelp, {maintenanceOption}},
    {Command::AddUser, "add-user", 1, addUserHelp, {noPassword}},
    {Command::RemoveUser, "remove-user", 1, removeUserHelp, {}},
    {Command::ListUsers, "list-users", 0, listUsersHelp, {}},
    {Command::Import, "import", 1, importHelp, {newNumbers, userOption}},
    {Command::ExportJob, "export-job", 2, exportJobHelp, {}},
    {Command::Upgrade, "upgrade", 0, upgradeHelp, {}},
};

const Row* rowNamed(const QString& name) {
    const auto* row =
        std::ranges::find_if(rows, [&](const Row& one) { return name == QLatin1String(one.name); });
    return row == std::end(rows) ? nullptr : row;
}

[[noreturn]] void refuse(const QString& why) {
    throw UsageError(why.toStdString());
}

/// The rest of the arguments while they are understood one by one.
class Rest {
  public:
    explicit Rest(const QStringList& list) : arguments(list) {}
    bool isEmpty() const { return at >= arguments.size(); }
    QString take() { return arguments[at++]; }
    /// The value of an option.
    QString valueOf(const QString& option) {
        if (isEmpty() || arguments[at].isEmpty())
            refuse(option + " needs a value");
        return take();
    }

  private:
    const QStringList& arguments;
    qsizetype at = 1; // past the command
};

void takeOption(OfficeRequest& request, const Row& row, const QString& option, Rest& rest) {
    if (option == u"--dry-run") {
        request.dryRun = true;
        return;
    }
    const std::string name = option.toStdString();
    if (std::ranges::find(row.options, name) == row.options.end())
        refuse(QString("%1 takes no %2").arg(row.name, option));
    if (name == noPassword)
        request.noPassword = true;
    else if (name == newNumbers)
        request.newNumbers = true;
    else
        (name == userOption ? request.user : request.maintenance) = rest.valueOf(option);
}

} // namespace

std::optional<QString> helpFor(const QStringList& arguments) {
    if (!arguments.contains(QStringLiteral("--help")))
        return std::nullopt;
    const Row* row = rowNamed(arguments.first());
    return QString::fromUtf8(row ? row->help : usage);
}

OfficeRequest parse(const QStringList& arguments) {
    if (arguments.isEmpty())
        refuse("tell it what to do; --help lists the commands");
    const Row* row = rowNamed(arguments.first());
    if (!row)
        refuse("there is no command " + arguments.first() + "; --help lists them");
    OfficeRequest request;
    request.command = row->command;
    QStringList words;
    bool options = true; // until --, after which a job may be called anything
    for (Rest rest(arguments); !rest.isEmpty();) {
        const QString word = rest.take();
        if (options && word == u"--")
            options = false;
        else if (options && word.startsWith(u"--"))
            takeOption(request, *row, word, rest);
        else
            words.append(word);
    }
    if (words.size() != row->arguments + 1 || words.contains(QString()))
        refuse(QString("%1 takes other arguments; see brennoval-office %1 --help").arg(row->name));
    request.office = words.takeFirst();
    request.arguments = words;
    if (OfficeAddress::holdsPassword(request.office))
        refuse("the address holds a password, which everybody on this machine could read; leave it out, and "
               "it is "
               "asked for or read from ~/.pgpass");
    return request;
}

} // namespace OfficeCommandLine
