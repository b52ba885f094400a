#include "tests/support/Wire.h"

#include "tests/support/PostgresServer.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <list>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

constexpr int port = 5432; // of no network: it is part of the socket's name

sockaddr_un placeOf(const std::string &path)
{
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    std::strncpy(place.sun_path, path.c_str(), sizeof place.sun_path - 1);
    return place;
}

bool sendAll(int to, const char *bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t sent = ::send(to, bytes, size, MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes += sent;
        size -= std::size_t(sent);
    }
    return true;
}

/// What has come in; false when the other end is gone.
bool receive(int from, std::string &bytes)
{
    char block[16384];
    const ssize_t got = ::recv(from, block, sizeof block, 0);
    if (got <= 0)
        return false;
    bytes.append(block, std::size_t(got));
    return true;
}

std::size_t lengthAt(const std::string &bytes, std::size_t at)
{
    std::uint32_t length = 0;
    std::memcpy(&length, bytes.data() + at, sizeof length);
    return ntohl(length);
}

/// The text of a statement stands at a message's fifth byte, in 'P' behind the statement's name.
bool writes(const std::string &message)
{
    const std::size_t text = message[0] == 'P' ? message.find('\0', 5) + 1 : 5;
    for (const char *word : {"INSERT", "UPDATE", "DELETE", "COMMIT"}) {
        if (strncasecmp(message.c_str() + std::min(text, message.size()), word, std::strlen(word)) == 0)
            return true;
    }
    return false;
}

/// Reads the server's answer to its end, "ready for a query", and throws it away.
void swallowAnswer(int server)
{
    std::string bytes;
    for (std::size_t at = 0;;) {
        while (bytes.size() < at + 5 || bytes.size() < at + 1 + lengthAt(bytes, at + 1)) {
            if (!receive(server, bytes))
                return;
        }
        if (bytes[at] == 'Z')
            return;
        at += 1 + lengthAt(bytes, at + 1);
    }
}

} // namespace

/// One desk's connection.
struct Wire::Line
{
    int desk;
    int server;
    std::string pending;  ///< of the desk's bytes, an unfinished message
    bool greeted = false; ///< its first message has no type
    bool writes = false;  ///< one of the statements that are under way

    Line(int deskEnd, int serverEnd)
        : desk(deskEnd)
        , server(serverEnd)
    {
    }
    Line(const Line &) = delete;
    Line &operator=(const Line &) = delete;
    ~Line()
    {
        ::close(desk);
        ::close(server);
    }
};

Wire::Wire()
    : Wire(PostgresServer::instance())
{
}

Wire::Wire(const PostgresServer &server)
{
    const QString clinic = server.postgresAddress({}).section(QStringLiteral("host="), 1);
    const std::string name = "/.s.PGSQL." + std::to_string(port);
    server_ = clinic.toStdString() + name;
    listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un place = placeOf(folder_.path().toStdString() + name);
    if (::bind(listener_, reinterpret_cast<const sockaddr *>(&place), sizeof place) != 0 || ::listen(listener_, 8) != 0)
        throw std::runtime_error("the wire has no end to hold");
    thread_ = std::thread([this] { run(); });
}

Wire::~Wire()
{
    ending_ = true;
    thread_.join();
    ::close(listener_);
}

QString Wire::address(const QString &database) const
{
    return QStringLiteral("postgresql://clinic@/%1?host=%2").arg(database, folder_.path());
}

void Wire::cutAtWriting(int statement, Moment moment, Then then)
{
    const std::lock_guard lock(mutex_);
    due_ = statement;
    everything_ = false;
    moment_ = moment;
    then_ = then;
    cut_ = false;
}

void Wire::cutAt(int statement, Moment moment, bool everything)
{
    cutAtWriting(statement, moment);
    const std::lock_guard lock(mutex_);
    everything_ = everything;
}

void Wire::takeAway()
{
    away_ = true;
}

void Wire::mend()
{
    const std::lock_guard lock(mutex_);
    due_ = -1;
    away_ = false;
    silent_ = false;
}

void Wire::run()
{
    std::list<Line> lines;
    while (!ending_) {
        if (silent_) {
            ::poll(nullptr, 0, 10);
            continue;
        }
        std::vector<pollfd> waiting{{listener_, POLLIN, 0}};
        for (const Line &line : lines) {
            waiting.push_back({line.desk, POLLIN, 0});
            waiting.push_back({line.server, POLLIN, 0});
        }
        ::poll(waiting.data(), waiting.size(), 10);
        std::size_t at = 1;
        for (auto line = lines.begin(); line != lines.end(); at += 2) {
            const bool stands =
                !away_ && (!waiting[at].revents || carryMessages(*line)) && (!waiting[at + 1].revents || carry(*line));
            line = stands ? std::next(line) : lines.erase(line);
        }
        if (!waiting[0].revents)
            continue;
        const int desk = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_un place = placeOf(server_);
        lines.emplace_back(desk, server);
        if (away_ || ::connect(server, reinterpret_cast<const sockaddr *>(&place), sizeof place) != 0)
            lines.pop_back();
    }
}

/// From the server to the desk, as it comes.
bool Wire::carry(Line &line)
{
    std::string bytes;
    return receive(line.server, bytes) && sendAll(line.desk, bytes.data(), bytes.size());
}

/// From the desk to the server, message by message: a statement begins with 'Q' or 'P' and ends with 'Q' or 'S', which may end
/// several.
bool Wire::carryMessages(Line &line)
{
    if (!receive(line.desk, line.pending))
        return false;
    const std::lock_guard lock(mutex_);
    for (;;) {
        const std::size_t typed = line.greeted ? 1 : 0;
        if (line.pending.size() < typed + 4 || line.pending.size() < typed + lengthAt(line.pending, typed))
            return true;
        const std::string message = line.pending.substr(0, typed + lengthAt(line.pending, typed));
        line.pending.erase(0, message.size());
        const char type = std::exchange(line.greeted, true) ? message[0] : '\0';
        if (type == 'Q' || type == 'P')
            line.writes = line.writes || everything_ || writes(message);
        const bool cut = due_ == 0 && line.writes && moment_ == Moment::Before;
        if (!cut && !sendAll(line.server, message.data(), message.size()))
            return false;
        const bool ended = type == 'Q' || type == 'S';
        if (cut || (due_ == 0 && line.writes && ended)) {
            if (!cut)
                swallowAnswer(line.server);
            due_ = -1;
            away_ = then_ == Then::Away;
            cut_ = true;
            return false;
        }
        if (ended && std::exchange(line.writes, false) && due_ > 0)
            --due_;
    }
}
