#include "tests/support/OfficeProxy.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <stdexcept>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr auto socketName = "/.s.PGSQL.5432";

sockaddr_un addressIn(const QString& folder) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray path = QFile::encodeName(folder) + socketName;
    if (path.size() >= qsizetype(sizeof address.sun_path))
        throw std::runtime_error("the path of the socket is too long");
    std::ranges::copy(path, address.sun_path);
    return address;
}

/// A whole number at the beginning of a message, which is cut off.
template<typename Number>
Number taken(QByteArray& bytes) {
    const Number number = qFromBigEndian<Number>(bytes.constData());
    bytes.remove(0, qsizetype(sizeof(Number)));
    return number;
}

/// A text that ends with a NUL at the beginning of a message, which is cut off.
QByteArray takenText(QByteArray& bytes) {
    const auto end = bytes.indexOf('\0');
    QByteArray text = bytes.left(end);
    bytes.remove(0, end + 1);
    return text;
}

} // namespace

OfficeProxy::OfficeProxy(const QString& serverFolder)
    : own(QStringLiteral("/tmp/brennoval-proxy.XXXXXX")), server(serverFolder) {
    listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = addressIn(own.path());
    constexpr int waiting = 20;
    if (listener < 0 || bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, waiting) != 0 || pipe(wakeUp) != 0)
        throw std::runtime_error("no socket for the proxy");
    thread = std::thread([this] { run(); });
}

OfficeProxy::~OfficeProxy() {
    close(wakeUp[1]);
    thread.join();
    close(wakeUp[0]);
    close(listener);
}

std::vector<SentStatement> OfficeProxy::takeStatements() {
    const std::lock_guard lock(mutex);
    return std::exchange(statements, {});
}

OfficeProxy::Clock::time_point OfficeProxy::earliest() const {
    auto first = Clock::time_point::max();
    for (const auto& link : links)
        for (const Way* way : {&link->asking, &link->answering})
            if (!way->underWay.empty())
                first = std::min(first, way->underWay.front().due);
    return first;
}

void OfficeProxy::run() {
    for (;;) {
        std::vector<pollfd> watched = {{wakeUp[0], POLLIN, 0}, {listener, POLLIN, 0}};
        for (const auto& link : links)
            for (const int side : {link->asking.from, link->answering.from})
                watched.push_back({side, POLLIN, 0});
        timespec wait{};
        const auto first = earliest();
        if (first != Clock::time_point::max()) {
            const auto left = std::max(first - Clock::now(), Clock::duration(0));
            wait = {.tv_sec = std::chrono::duration_cast<std::chrono::seconds>(left).count(),
                    .tv_nsec = (left % std::chrono::seconds(1)).count()};
        }
        ppoll(watched.data(), watched.size(), first == Clock::time_point::max() ? nullptr : &wait, nullptr);
        if (watched[0].revents != 0)
            break;
        for (std::size_t i = 0; i < links.size(); ++i) {
            Link& link = *links[i];
            const bool stands = pass(link, link.asking, watched[2 + 2 * i].revents != 0) &&
                                pass(link, link.answering, watched[3 + 2 * i].revents != 0);
            if (!stands) {
                close(link.asking.from);
                close(link.answering.from);
                links[i].reset();
            }
        }
        std::erase(links, nullptr);
        if (watched[1].revents != 0)
            accept();
    }
    for (const auto& link : links)
        for (const int side : {link->asking.from, link->answering.from})
            close(side);
}

void OfficeProxy::accept() {
    const int program = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    const int behind = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = addressIn(server);
    if (connect(behind, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(program);
        close(behind);
        return;
    }
    auto link = std::make_unique<Link>();
    link->asking = {.from = program, .to = behind, .underWay = {}};
    link->answering = {.from = behind, .to = program, .underWay = {}};
    links.push_back(std::move(link));
}

/// Takes what has come and hands on what is due. False once either side has gone.
bool OfficeProxy::pass(Link& link, Way& way, bool readable) {
    if (readable) {
        std::array<char, 65536> buffer{};
        const ssize_t got = recv(way.from, buffer.data(), buffer.size(), 0);
        if (got <= 0)
            return false;
        const QByteArray bytes(buffer.data(), got);
        const bool asks = &way == &link.asking;
        if (asks && std::exchange(link.answered, false))
            ++roundTrips;
        if (asks)
            read(link, bytes);
        else
            link.answered = true;
        way.underWay.push_back({Clock::now() + oneWay.load(), bytes});
    }
    for (; !way.underWay.empty() && way.underWay.front().due <= Clock::now(); way.underWay.pop_front()) {
        const QByteArray& bytes = way.underWay.front().bytes;
        for (qsizetype sent = 0; sent < bytes.size();) {
            const ssize_t now =
                send(way.to, bytes.constData() + sent, std::size_t(bytes.size() - sent), MSG_NOSIGNAL);
            if (now <= 0)
                return false;
            sent += now;
        }
    }
    return true;
}

/// Cuts what a program says into messages: a kind, the length and the body; the first has no kind.
void OfficeProxy::read(Link& link, const QByteArray& bytes) {
    link.unread += bytes;
    for (;;) {
        const qsizetype kind = link.started ? 1 : 0;
        constexpr qsizetype lengthSize = 4;
        if (link.unread.size() < kind + lengthSize)
            return;
        const auto length = qFromBigEndian<qint32>(link.unread.constData() + kind);
        if (link.unread.size() < kind + length)
            return;
        if (link.started)
            take(link, link.unread[0], link.unread.mid(kind + lengthSize, length - lengthSize));
        link.started = true;
        link.unread.remove(0, kind + length);
    }
}

void OfficeProxy::take(Link& link, char kind, const QByteArray& body) {
    QByteArray rest = body;
    SentStatement& next = link.next;
    const std::lock_guard lock(mutex);
    switch (kind) {
    case 'Q': // a text of its own
        statements.push_back({.sql = takenText(rest), .values = {}, .types = {}, .simple = true});
        break;
    case 'P': // the text of a statement with values
        takenText(rest);
        next = {.sql = takenText(rest), .values = {}, .types = {}, .endsBatch = false};
        for (int count = taken<qint16>(rest); count > 0; --count)
            next.types.push_back(taken<quint32>(rest));
        break;
    case 'B': // the values
        takenText(rest);
        takenText(rest);
        for (int count = taken<qint16>(rest); count > 0; --count)
            taken<qint16>(rest);
        for (int count = taken<qint16>(rest); count > 0; --count) {
            const auto size = taken<qint32>(rest);
            next.values.push_back(size < 0 ? std::nullopt : std::optional(rest.left(size)));
            rest.remove(0, std::max(size, 0));
        }
        break;
    case 'E': // to be run
        statements.push_back(next);
        break;
    case 'S': // the program waits
        if (!statements.empty())
            statements.back().endsBatch = true;
        break;
    default:
        break;
    }
}
