#pragma once

#include <QByteArray>

#include <optional>

namespace trial {

/// One end of a pair of sockets between two processes; what one sends whole comes whole.
class Channel
{
public:
    explicit Channel(int socket)
        : socket_(socket)
    {
    }
    ~Channel();
    Channel(Channel &&other) noexcept;
    Channel &operator=(Channel &&) = delete;

    /// Raises std::runtime_error when the other end is gone, as receive() does.
    void send(const QByteArray &message) const;
    QByteArray receive() const;
    /// Nothing when none came in so many milliseconds.
    std::optional<QByteArray> receiveWithin(int milliseconds) const;

private:
    int socket_;
};

} // namespace trial
