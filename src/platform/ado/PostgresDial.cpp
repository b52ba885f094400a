#include "platform/ado/PostgresDial.h"

#include "platform/ado/Wait.h"

#include <QByteArray>

#include <libpq-fe.h>

#include <chrono>
#include <future>
#include <memory>
#include <utility>
#include <vector>

namespace ado {

namespace {

struct Hang
{
    void operator()(pg_conn *session) const { PQfinish(session); }
};
using Session = std::unique_ptr<pg_conn, Hang>;

Session connected(const PostgresParameters &parameters)
{
    return Session(connectTo(parameters));
}

/// Ends by itself, soon; the program's end waits for it.
void leaveBehind(std::future<Session> dialling)
{
    static std::vector<std::future<Session>> left;
    std::erase_if(left,
                  [](const auto &one) { return one.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
    left.push_back(std::move(dialling));
}

} // namespace

pg_conn *connectTo(const PostgresParameters &parameters)
{
    std::vector<QByteArray> texts;
    for (const auto &[name, value] : parameters) {
        texts.push_back(name.toUtf8());
        texts.push_back(value.toUtf8());
    }
    std::vector<const char *> names, values;
    for (std::size_t at = 0; at < texts.size(); at += 2) {
        names.push_back(texts[at].constData());
        values.push_back(texts[at + 1].constData());
    }
    names.push_back(nullptr);
    values.push_back(nullptr);
    return PQconnectdbParams(names.data(), values.data(), 0);
}

pg_conn *dial(const PostgresParameters &parameters)
{
    Wait wait;
    if (!wait.isAlive())
        return connected(parameters).release();
    // Beside this thread: left to itself the library looks for names, keeps the time for each server and goes through their
    // list, but stands still in doing so.
    std::future<Session> dialling = std::async(std::launch::async, connected, parameters);
    doMeanwhile();
    const auto came = [&] {
        const int moment = wait.moment();
        if (moment < 0)
            dialling.wait();
        return moment < 0 || dialling.wait_for(std::chrono::milliseconds(moment)) == std::future_status::ready;
    };
    while (!came()) {
        if (!wait.goOn()) {
            leaveBehind(std::move(dialling));
            return nullptr;
        }
    }
    return dialling.get().release();
}

} // namespace ado
