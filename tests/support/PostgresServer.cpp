#include "tests/support/PostgresServer.h"

#include <QDir>
#include <QFile>
#include <QUrl>

#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace {

/// Whose account the server runs in where the tests run as root, which it refuses.
constexpr auto serverAccount = "postgres";

/// A folder with a short name, since a socket's path has at most 107 characters.
QString folderTemplate() {
    return QStringLiteral("/tmp/brennoval-pg-XXXXXX");
}

void giveToServer(const QString& path) {
    if (const passwd* account = geteuid() == 0 ? getpwnam(serverAccount) : nullptr;
        account && chown(QFile::encodeName(path).constData(), account->pw_uid, account->pw_gid) != 0)
        throw std::runtime_error("Cannot give the server its folder");
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Whether a process exists and has not ended.
bool isRunning(pid_t process) {
    const QByteArray state = contents(QStringLiteral("/proc/%1/stat").arg(process));
    return !state.isEmpty() && !state.mid(state.lastIndexOf(')')).startsWith(") Z");
}

std::vector<pid_t> childrenOf(pid_t process) {
    std::vector<pid_t> children;
    for (const QByteArray& child :
         contents(QStringLiteral("/proc/%1/task/%1/children").arg(process)).split(' '))
        if (const pid_t number = child.trimmed().toInt())
            children.push_back(number);
    return children;
}

} // namespace

QString PostgresServer::program(const QString& name) {
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    for (const QString& version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Reversed))
        if (const QString path = versions.filePath(version + "/bin/" + name); QFile::exists(path))
            return path;
    throw std::runtime_error("PostgreSQL is not installed: there is no " + name.toStdString());
}

void PostgresServer::prepare(QProcess& process, const QString& name, const QStringList& arguments) {
    // The server ends when the test does, however that ends. setpriv becomes the program, so its number is
    // the server's.
    QStringList command{"--pdeathsig", "QUIT"};
    if (geteuid() == 0)
        command += {"--reuid", serverAccount, "--regid", serverAccount, "--clear-groups"};
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "C.UTF-8");
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory("/");
    process.setProgram("setpriv");
    process.setArguments(command + QStringList{program(name)} + arguments);
}

PostgresServer::PostgresServer(Disk disk, const QStringList& accessRules) : folder(folderTemplate()) {
    giveToServer(folder.path());
    QProcess creation;
    creation.setProcessChannelMode(QProcess::MergedChannels);
    prepare(creation, "initdb",
            {"--pgdata", file("data"), "--username", "postgres", "--auth", "trust", "--encoding", "UTF8",
             "--locale", "C.UTF-8", "--no-sync", "--no-instructions"});
    creation.start();
    if (!creation.waitForFinished(120000) || creation.exitCode() != 0)
        throw std::runtime_error("No server could be created: " + creation.readAll().toStdString());
    if (!accessRules.isEmpty())
        setAccess(accessRules);
    options = {"-D", file("data"),        "-k", folder.path(),
               "-c", "listen_addresses=", "-c", "log_statement=none"};
    if (disk == Disk::Skipped)
        options += {"-c", "fsync=off"};
    start();
}

PostgresServer::~PostgresServer() {
    if (server.state() == QProcess::NotRunning)
        return;
    ::kill(static_cast<pid_t>(server.processId()), SIGQUIT);
    if (!server.waitForFinished(30000))
        kill();
}

QString PostgresServer::uri(const QString& role, const QString& database) const {
    const auto encoded = [](const QString& text) {
        return QString::fromLatin1(QUrl::toPercentEncoding(text));
    };
    return "postgresql://" + encoded(role) + "@/" + encoded(database) + "?host=" + encoded(folder.path());
}

void PostgresServer::kill() {
    const auto postmaster = static_cast<pid_t>(server.processId());
    // Stopped first, so that it starts no child between the look at its children and their end.
    ::kill(postmaster, SIGSTOP);
    const std::vector<pid_t> children = childrenOf(postmaster);
    ::kill(postmaster, SIGKILL);
    for (const pid_t child : children)
        ::kill(child, SIGKILL);
    server.waitForFinished(30000);
    // The server refuses to start while any process of its last life still holds its memory.
    for (const pid_t child : children)
        while (isRunning(child))
            usleep(1000);
}

void PostgresServer::start() {
    if (!startsUp())
        throw std::runtime_error("The server did not start: " + log().toStdString());
}

bool PostgresServer::startsUp() {
    QFile::remove(file("data/postmaster.pid"));
    QFile::remove(file(".s.PGSQL.5432.lock")); // of a killed server
    prepare(server, "postgres", options);
    server.setProcessChannelMode(QProcess::MergedChannels);
    server.setStandardOutputFile(file("log"), QIODevice::Append);
    server.start();
    while (!isReady())
        if (server.waitForFinished(10) || server.state() == QProcess::NotRunning)
            return false;
    return true;
}

bool PostgresServer::isReady() const {
    constexpr qsizetype statusLine = 7; // of the file in which the server says how far it is
    const QList<QByteArray> lines = contents(file("data/postmaster.pid")).split('\n');
    return lines.size() > statusLine && lines[statusLine].trimmed() == "ready";
}

QString PostgresServer::log() const {
    return QString::fromUtf8(contents(file("log")).right(4000));
}

void PostgresServer::setAccess(const QStringList& rules) const {
    QFile access(file("data/pg_hba.conf"));
    if (!access.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw std::runtime_error("Cannot write the server's rules of access");
    access.write(rules.join('\n').toUtf8() + '\n');
}
