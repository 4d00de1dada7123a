#pragma once

#include "core/postgres/Postgres.h"

#include <QMutex>

#include <optional>
#include <vector>

/// What an office's server has answered while the user's interface works on one event: a screen that is
/// loaded and then comes to the front asks twice for the same, and a server is a way off. Whatever this
/// program writes, and the end of the event, takes the answers away. What others write meanwhile shows at the
/// next event, as if it had come a moment later.
class EventAnswers {
  public:
    /// The answer to a question; nothing if it was not asked yet, or on any other thread.
    std::optional<Postgres::Result> find(const QString& address, const Postgres::Question& question) const;
    /// Keeps an answer until the event is over.
    void keep(const QString& address, const Postgres::Question& question, const Postgres::Result& answer);
    void forget();

  private:
    struct Answer {
        QString address;
        Postgres::Question question;
        Postgres::Result answer;
    };
    mutable QMutex mutex;
    std::vector<Answer> answers;
    bool ending = false; // whether the end of the event is waited for
};
