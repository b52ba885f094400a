#pragma once

#include "bench/far/Traffic.h"

#include <QTemporaryDir>

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>

namespace bench {

/// A long way between a desk and a PostgreSQL server of this machine: what either says is heard after a delay. A thread of its
/// own carries the bytes and keeps what was said.
class FarWire
{
public:
    /// `server` is the folder of the server's socket; the delay is that of one direction.
    FarWire(const QString &server, std::chrono::milliseconds delay);
    ~FarWire();
    FarWire(const FarWire &) = delete;
    FarWire &operator=(const FarWire &) = delete;

    QString address(const QString &database) const; ///< "postgresql://..."

    /// Since the last call.
    Traffic take();

private:
    class Way;
    struct Line;
    void run();
    void hearDesk(Line &line, const std::string &bytes);
    void hearServer(Line &line, const std::string &bytes);

    const std::string server_; ///< path of its socket
    const std::chrono::milliseconds delay_;
    QTemporaryDir folder_;
    std::mutex mutex_;
    Traffic traffic_;
    int sessions_ = 0;
    std::atomic<bool> ending_{false};
    int listener_ = -1;
    std::thread thread_;
};

} // namespace bench
