#include "extras/StartWork.h"

#include "core/base/Fault.h"
#include "core/base/ServerAddress.h"
#include "core/shell/BrennovalMain.h"
#include "core/store/Backup.h"

#include <QCoreApplication>

#include <optional>
#include <thread>

namespace {

/// A thread that its owner waits for.
class Worker : public QObject {
  public:
    Worker(QObject* owner, std::function<void()> work) : QObject(owner), thread(std::move(work)) {
        connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { join(); });
    }
    ~Worker() override { join(); }

  private:
    void join() {
        if (thread.joinable())
            thread.join();
    }
    std::thread thread;
};

/// The result of a check over its own connection; nothing if the check cannot run right now.
std::optional<DataCheck::Findings> check(const QString& userFile) {
    constexpr int maxWait = 1000; // milliseconds for another instance's save
    try {
        Connection user;
        user.setProperty("Data Source", userFile);
        user.setReadOnly();
        user.setBusyTimeout(maxWait);
        user.Open();
        return DataCheck::check(user);
    } catch (const Fault&) {
        return std::nullopt;
    }
}

} // namespace

void beginStartWork(const QString& userFile, const CheckListener& checked) {
    new Worker(BrennovalMain::instance(), [userFile, checked] {
        if (!ServerAddress::isServer(userFile))
            Backup::makeDaily(userFile);
        if (const auto findings = check(userFile))
            QMetaObject::invokeMethod(QCoreApplication::instance(),
                                      [findings, checked] { checked(*findings); });
    });
}
