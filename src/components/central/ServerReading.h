#pragma once

#include <QStringList>

#include <memory>
#include <vector>

namespace central {

/// The rows of one statement of a PostgreSQL server, read beside the program's thread: however the server or the way to it
/// hangs, in the look-up of its name, in the greeting or in the middle of an answer, whoever waits can go on without it.
class ServerReading
{
public:
    /// Begins at once.
    ServerReading(const QString &address, const QString &statement);
    /// A reading that is still under way is cut off and left to end by itself.
    ~ServerReading();
    ServerReading(const ServerReading &) = delete;
    ServerReading &operator=(const ServerReading &) = delete;

    /// Waits for its end, a short while at most.
    bool isDone(int milliseconds) const;
    /// Counts up with every sign of life.
    qint64 signs() const;
    qint64 rowsSoFar() const;

    /// Its rows, null for NULL; raises ConnectionLost, or Database for what the server refused.
    std::vector<QStringList> take();

private:
    struct Shared;
    std::shared_ptr<Shared> shared_;
};

} // namespace central
