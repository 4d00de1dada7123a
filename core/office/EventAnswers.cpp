#include "core/office/EventAnswers.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>

namespace {

constexpr std::size_t mostAnswers = 16;
constexpr int mostRows = 1000;

bool isOnInterface() {
    const QCoreApplication* application = QCoreApplication::instance();
    return application && QThread::currentThread() == application->thread();
}

} // namespace

std::optional<Postgres::Result> EventAnswers::find(const QString& address,
                                                   const Postgres::Question& question) const {
    if (!isOnInterface())
        return std::nullopt;
    const QMutexLocker lock(&mutex);
    const auto found = std::ranges::find_if(answers, [&](const Answer& known) {
        return known.address == address && known.question.statement == question.statement &&
               known.question.parameters == question.parameters;
    });
    return found == answers.cend() ? std::nullopt : std::optional(found->answer);
}

void EventAnswers::keep(const QString& address, const Postgres::Question& question,
                        const Postgres::Result& answer) {
    if (!isOnInterface() || answer.rows() > mostRows)
        return;
    const QMutexLocker lock(&mutex);
    if (answers.size() >= mostAnswers)
        answers.erase(answers.begin());
    answers.push_back({.address = address, .question = question, .answer = answer});
    if (std::exchange(ending, true))
        return;
    const auto end = [this] {
        forget();
        const QMutexLocker again(&mutex);
        ending = false;
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), end, Qt::QueuedConnection);
}

void EventAnswers::forget() {
    const QMutexLocker lock(&mutex);
    answers.clear();
}
