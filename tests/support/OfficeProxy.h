#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

/// A statement on its way to the server.
struct SentStatement {
    QByteArray sql;
    std::vector<std::optional<QByteArray>> values; // null for null
    std::vector<unsigned> types;                   // of the values, as the client gave them
    bool simple = false;                           // several statements in one text, without values
    bool endsBatch = true;                         // whether the client waits for its answer
};

/// Stands between a program and a database server on a socket, as a longer way would: whatever passes arrives
/// later. Counts the round trips and notes the statements.
class OfficeProxy {
  public:
    explicit OfficeProxy(const QString& serverFolder);
    ~OfficeProxy();
    OfficeProxy(const OfficeProxy&) = delete;
    OfficeProxy& operator=(const OfficeProxy&) = delete;

    /// The folder of its socket, which stands for the server's.
    QString folder() const { return own.path(); }

    /// How much longer a question and its answer take together.
    void setDelay(std::chrono::milliseconds roundTrip) { oneWay = roundTrip / 2; }

    /// How often a program has asked and waited since the last call.
    int takeRoundTrips() { return roundTrips.exchange(0); }
    /// The statements since the last call.
    std::vector<SentStatement> takeStatements();

  private:
    using Clock = std::chrono::steady_clock;
    struct Piece {
        Clock::time_point due;
        QByteArray bytes;
    };
    /// One direction of a connection.
    struct Way {
        int from;
        int to;
        std::deque<Piece> underWay;
    };
    struct Link {
        Way asking;
        Way answering;
        bool answered = true; // the server spoke last
        QByteArray unread;    // of what the program has said
        bool started = false; // past the first message, which has no kind
        SentStatement next;
    };

    void run();
    void accept();
    bool pass(Link& link, Way& way, bool readable);
    void read(Link& link, const QByteArray& bytes);
    void take(Link& link, char kind, const QByteArray& body);
    Clock::time_point earliest() const;

    QTemporaryDir own;
    QString server;
    int listener = -1;
    int wakeUp[2] = {-1, -1};
    std::vector<std::unique_ptr<Link>> links;
    std::atomic<std::chrono::microseconds> oneWay{std::chrono::microseconds(0)};
    std::atomic<int> roundTrips{0};
    std::mutex mutex;
    std::vector<SentStatement> statements;
    std::thread thread; // last: it uses the others
};
