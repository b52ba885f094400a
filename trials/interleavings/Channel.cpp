#include "trials/interleavings/Channel.h"

#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace trial {

namespace {

constexpr int messageBytes = 4096; // bytes of a message

} // namespace

Channel::Channel(Channel &&other) noexcept
    : socket_(std::exchange(other.socket_, -1))
{
}

Channel::~Channel()
{
    if (socket_ >= 0)
        ::close(socket_);
}

void Channel::send(const QByteArray &message) const
{
    const QByteArray sent = message.left(messageBytes);
    if (::send(socket_, sent.constData(), std::size_t(sent.size()), MSG_NOSIGNAL) != sent.size())
        throw std::runtime_error("the other process is gone");
}

QByteArray Channel::receive() const
{
    QByteArray message(messageBytes, '\0');
    const ssize_t bytes = ::recv(socket_, message.data(), messageBytes, 0);
    if (bytes <= 0)
        throw std::runtime_error("the other process is gone");
    return message.left(bytes);
}

std::optional<QByteArray> Channel::receiveWithin(int milliseconds) const
{
    pollfd readable{socket_, POLLIN, 0};
    if (::poll(&readable, 1, milliseconds) == 0)
        return std::nullopt;
    return receive();
}

} // namespace trial
