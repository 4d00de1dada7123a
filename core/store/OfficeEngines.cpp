#include "core/store/OfficeEngines.h"

#include "core/base/Fault.h"
#include "core/base/Program.h"

#include <QCoreApplication>
#include <QHash>
#include <QMutex>
#include <QThread>

#include <utility>

namespace Gateway {

namespace {

/// The passwords of this run, and who asks for them.
struct Passwords {
    QMutex mutex;
    QHash<QString, QString> typed; // by address
    PasswordAsker asker;
    const QThread* askersThread = nullptr;
    bool asking = false;
};

Passwords& passwords() {
    static Passwords instance;
    return instance;
}

QString passwordOf(const QString& address) {
    const QMutexLocker lock(&passwords().mutex);
    return passwords().typed.value(address);
}

OfficeEngines* loaded() {
    static OfficeEngines* const engines = [] {
        const auto make = reinterpret_cast<OfficeEnginesFactory>(
            Program::pluginFunction(QStringLiteral("brennoval-libpq"), "officeEngines"));
        return make ? make(Program::fullProgramVersion().toUtf8().constData()) : nullptr;
    }();
    return engines;
}

OfficeEngines& engines() {
    if (OfficeEngines* const found = loaded())
        return *found;
    throw RefusedData(DatabaseFault::Unspecified,
                      QCoreApplication::translate(
                          "Office", "Your data are in an office's database, but the part of the program that "
                                    "reaches it is missing or of another version. Please install the program "
                                    "again, with libpq.")
                          .toStdString());
}

/// Asks until the server is content or the user is not.
std::unique_ptr<Engine> openAsking(OfficeOptions& options, QString why) {
    Passwords& all = passwords();
    for (;;) {
        all.asking = true;
        options.password = all.asker(options.address, why);
        all.asking = false;
        if (options.password.isEmpty())
            throw RefusedData(DatabaseFault::Unspecified,
                              QCoreApplication::translate(
                                  "Office", "The office's database wants a password. Without it there are no "
                                            "jobs to work with.")
                                  .toStdString(),
                              options.connectionString.toStdString());
        try {
            std::unique_ptr<Engine> engine = engines().open(options);
            const QMutexLocker lock(&all.mutex);
            all.typed.insert(options.address, options.password);
            return engine;
        } catch (const PasswordNeeded& wrong) {
            why = QString::fromUtf8(wrong.what());
        }
    }
}

} // namespace

void onPasswordNeeded(PasswordAsker asker) {
    passwords().asker = std::move(asker);
    passwords().askersThread = QThread::currentThread();
}

std::unique_ptr<Engine> openOffice(OfficeOptions options) {
    options.password = passwordOf(options.address);
    try {
        return engines().open(options);
    } catch (const PasswordNeeded& needed) {
        const Passwords& all = passwords();
        if (!all.asker || all.askersThread != QThread::currentThread())
            throw;
        if (all.asking) // the box is open and lets the splash's timer tick
            throw DataLocked(DatabaseFault::Unspecified, needed.what(),
                             options.connectionString.toStdString());
        return openAsking(options, options.password.isEmpty() ? QString() : QString::fromUtf8(needed.what()));
    }
}

void leaveOffices() {
    {
        const QMutexLocker lock(&passwords().mutex);
        passwords().typed.clear();
    }
    if (OfficeEngines* const found = loaded())
        found->closeIdle();
}

} // namespace Gateway
