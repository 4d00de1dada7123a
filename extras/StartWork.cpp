#include "extras/StartWork.h"

#include "core/shell/BrennovalMain.h"
#include "core/store/Backup.h"

#include <QCoreApplication>

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

} // namespace

void BeginStartWork(const QString& userFile) {
    new Worker(BrennovalMain::instance(), [userFile] { Backup::MakeDaily(userFile); });
}
