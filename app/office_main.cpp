#include "app/office/CommandLine.h"
#include "app/office/Import.h"
#include "app/office/Terminal.h"
#include "app/office/Users.h"
#include "core/base/Program.h"

#include <QCoreApplication>

#include <iostream>

namespace {

constexpr int failed = 1;
constexpr int usageError = 2;

Office::Report obey(const OfficeRequest& request) {
    using Command = OfficeRequest::Command;
    const Office::Mode mode = request.dryRun ? Office::Mode::DryRun : Office::Mode::Real;
    const QStringList& arguments = request.arguments;
    switch (request.command) {
    case Command::Create:
        return Office::create(request.office, request.maintenance, mode);
    case Command::AddUser:
        return Office::addUser(
            request.office, arguments[0],
            [&]() -> std::optional<QString> {
                if (request.noPassword)
                    return std::nullopt;
                return Terminal::readNewPassword(arguments[0]);
            },
            mode);
    case Command::RemoveUser:
        return Office::removeUser(request.office, arguments[0], mode);
    case Command::ListUsers:
        return Office::listUsers(request.office);
    case Command::Import:
        return Office::import(request.office, arguments[0], request.user,
                              request.newNumbers ? Office::Collisions::Renumber : Office::Collisions::Refuse,
                              mode);
    case Command::ExportJob:
        return Office::exportJob(request.office, arguments[0], arguments[1], mode);
    case Command::Upgrade:
        return Office::upgrade(request.office, mode);
    }
    return {};
}

int run(const QStringList& arguments) {
    try {
        for (const QString& line : obey(OfficeCommandLine::parse(arguments)))
            std::cout << line.toStdString() << '\n';
        return 0;
    } catch (const OfficeCommandLine::UsageError& error) {
        std::cerr << "brennoval-office: " << error.what() << '\n';
        return usageError;
    } catch (const Fault& fault) {
        std::cerr << "brennoval-office: " << fault.what() << '\n';
        return failed;
    }
}

} // namespace

int main(int argc, char** argv) {
    Program::ignoreRelativeFolders();
    int argumentCount = 1; // Qt sees none of the options: its own count as unknown too
    const QCoreApplication application(argumentCount, argv);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (const auto help = OfficeCommandLine::helpFor(arguments)) {
        std::cout << help->toStdString();
        return 0;
    }
    if (arguments == QStringList{"--version"}) {
        std::cout << "brennoval-office " << Program::fullProgramVersion().toStdString() << '\n';
        return 0;
    }
    return run(arguments);
}
