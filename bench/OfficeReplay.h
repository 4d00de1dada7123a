#pragma once

#include "tests/support/OfficeProxy.h"

#include <memory>

struct pg_conn;

/// Runs noted statements again through libpq alone, for the baseline.
class OfficeReplay {
  public:
    /// Throws std::runtime_error if there is no connection.
    explicit OfficeReplay(const QString& address);

    /// Runs them as the program did: those of a batch are sent together. Reads every value of the answers.
    /// One text stands for another, so that rows with keys of their own can be stored. Returns how many
    /// failed.
    int run(const std::vector<SentStatement>& statements, const QByteArray& text, const QByteArray& instead);

  private:
    struct Finish {
        void operator()(pg_conn* connection) const;
    };
    void send(const SentStatement& statement, const QByteArray& text, const QByteArray& instead);
    int runBatch(const SentStatement* first, const SentStatement* last, const QByteArray& text,
                 const QByteArray& instead);

    std::unique_ptr<pg_conn, Finish> connection;
};
