#include "bench/far/FarWire.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <deque>
#include <list>
#include <stdexcept>
#include <utility>
#include <vector>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr const char *socketName = "/.s.PGSQL.5432";

sockaddr_un placeOf(const std::string &path)
{
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    std::strncpy(place.sun_path, path.c_str(), sizeof place.sun_path - 1);
    return place;
}

bool receive(int from, std::string &bytes)
{
    char block[65536];
    const ssize_t got = ::recv(from, block, sizeof block, 0);
    bytes.assign(block, got > 0 ? std::size_t(got) : 0);
    return got > 0;
}

/// Behind which nobody waits.
bool isFarewell(const std::string &bytes)
{
    return bytes.size() == 5 && bytes[0] == 'X';
}

} // namespace

/// Bytes on their way, in the order in which they were sent.
class FarWire::Way
{
public:
    void send(std::string bytes, Clock::time_point arrival) { under_.emplace_back(arrival, std::move(bytes)); }
    bool isEmpty() const { return under_.empty(); }
    Clock::time_point next() const { return under_.front().first; }

    /// Hands out what has arrived; false when the other end is gone.
    bool arrive(int to)
    {
        for (; !under_.empty() && under_.front().first <= Clock::now(); under_.pop_front()) {
            const std::string &bytes = under_.front().second;
            for (std::size_t at = 0; at < bytes.size();) {
                const ssize_t sent = ::send(to, bytes.data() + at, bytes.size() - at, MSG_NOSIGNAL);
                if (sent <= 0)
                    return false;
                at += std::size_t(sent);
            }
        }
        return true;
    }

private:
    std::deque<std::pair<Clock::time_point, std::string>> under_;
};

/// One desk's connection.
struct FarWire::Line
{
    int desk;
    int server;
    Way there, back;
    const int number;
    Messages asked{Messages::Beginning::Untyped};
    Messages answered{Messages::Beginning::Typed};
    bool heard = true; ///< something since it last spoke

    Line(int deskEnd, int serverEnd, int session)
        : desk(deskEnd)
        , server(serverEnd)
        , number(session)
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

FarWire::FarWire(const QString &server, std::chrono::milliseconds delay)
    : server_(server.toStdString() + socketName)
    , delay_(delay)
    , listener_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const sockaddr_un place = placeOf(folder_.path().toStdString() + socketName);
    if (::bind(listener_, reinterpret_cast<const sockaddr *>(&place), sizeof place) != 0 || ::listen(listener_, 8) != 0)
        throw std::runtime_error("the wire has no end to hold");
    thread_ = std::thread([this] { run(); });
}

FarWire::~FarWire()
{
    ending_ = true;
    thread_.join();
    ::close(listener_);
}

QString FarWire::address(const QString &database) const
{
    return QStringLiteral("postgresql://clinic@/%1?host=%2").arg(database, folder_.path());
}

Traffic FarWire::take()
{
    const std::lock_guard lock(mutex_);
    return std::exchange(traffic_, {});
}

void FarWire::run()
{
    std::list<Line> lines;
    while (!ending_) {
        std::vector<pollfd> waiting{{listener_, POLLIN, 0}};
        Clock::time_point wake = Clock::now() + 20ms;
        for (const Line &line : lines) {
            waiting.push_back({line.desk, POLLIN, 0});
            waiting.push_back({line.server, POLLIN, 0});
            for (const Way *way : {&line.there, &line.back})
                wake = way->isEmpty() ? wake : std::min(wake, way->next());
        }
        const auto pause = std::chrono::nanoseconds(std::max<Clock::duration>(wake - Clock::now(), 0ns));
        const timespec span{0, pause.count()};
        ::ppoll(waiting.data(), waiting.size(), &span, nullptr);
        std::size_t at = 1;
        for (auto line = lines.begin(); line != lines.end(); at += 2) {
            bool stands = true;
            std::string bytes;
            if (waiting[at].revents) {
                stands = receive(line->desk, bytes);
                line->there.send(bytes, Clock::now() + delay_);
                line->heard = line->heard && !isFarewell(bytes);
                hearDesk(*line, bytes);
            }
            if (stands && waiting[at + 1].revents) {
                stands = receive(line->server, bytes);
                line->back.send(bytes, Clock::now() + delay_);
                line->heard = true;
                hearServer(*line, bytes);
            }
            stands = stands && line->there.arrive(line->server) && line->back.arrive(line->desk);
            line = stands ? std::next(line) : lines.erase(line);
        }
        if (!waiting[0].revents)
            continue;
        const int desk = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const sockaddr_un place = placeOf(server_);
        lines.emplace_back(desk, server, ++sessions_);
        if (::connect(server, reinterpret_cast<const sockaddr *>(&place), sizeof place) != 0)
            lines.pop_back();
    }
}

void FarWire::hearDesk(Line &line, const std::string &bytes)
{
    const std::lock_guard lock(mutex_);
    traffic_.waits += std::exchange(line.heard, false) ? 1 : 0;
    line.asked.add(bytes);
    while (const auto message = line.asked.next()) {
        if (message->type != 'X') { // a session that ends does not mix with the next
            traffic_.isStrange = traffic_.isStrange || (traffic_.session && traffic_.session != line.number);
            traffic_.session = line.number;
        }
        enterAsked(traffic_, *message);
    }
}

void FarWire::hearServer(Line &line, const std::string &bytes)
{
    const std::lock_guard lock(mutex_);
    line.answered.add(bytes);
    while (const auto message = line.answered.next())
        enterAnswered(traffic_, *message);
}

} // namespace bench
