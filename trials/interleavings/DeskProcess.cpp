#include "trials/interleavings/DeskProcess.h"

#include "clinic/Tables.h"
#include "desk/journal/Seal.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"
#include "trials/interleavings/Gate.h"
#include "trials/interleavings/Operations.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace trial {

namespace {

Told run(const std::function<bool()> &work)
{
    const ado::AbandonedTransactions edgeOfEvent;
    try {
        return {work(), 0, {}};
    } catch (const runtime::RuntimeError &error) {
        return {false, int(error.number()), error.description()};
    }
}

void perform(Desk &desk, const Channel &channel, int operation)
{
    desk.readAnew();
    showRows(desk.session);
    const std::function<bool()> work = operations()[std::size_t(operation)].look(desk);
    gate::setPause([&](gate::Stop stop, const QByteArray &statement, bool inTransaction) {
        channel.send(QByteArray(1, char(stop)) + (inTransaction ? 't' : '-') + statement);
        channel.receive();
    });
    const Told told = run(work);
    gate::setPause({});
    channel.send(QByteArray("E") + (told.saved ? '+' : '-') + QByteArray::number(told.error) + ' '
                 + told.text.toUtf8());
}

/// The life of the process: opens the clinic, then runs one operation after the other.
void serve(const Channel &channel)
{
    clinic::registerTables();
    gcnnMasterDB = ado::Connection::open(QString::fromUtf8(channel.receive()));
    gate::watch(*gcnnMasterDB);
    journal::attend(*gcnnMasterDB);
    Desk desk(gcnnMasterDB);
    channel.send(QByteArray::number(gate::serverProcess(*gcnnMasterDB)));
    for (;;)
        perform(desk, channel, channel.receive().toInt());
}

Message read(const QByteArray &text)
{
    Message message;
    message.kind = Message::Kind(text.at(0));
    if (message.kind != Message::Ended) {
        message.inTransaction = text.at(1) == 't';
        message.statement = text.mid(2);
        return message;
    }
    const qsizetype blank = text.indexOf(' ');
    message.told = {text.at(1) == '+', text.mid(2, blank - 2).toInt(), QString::fromUtf8(text.mid(blank + 1))};
    return message;
}

std::pair<int, int> pairOfSockets()
{
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::runtime_error("no sockets");
    return {ends[0], ends[1]};
}

/// This process is the desk from here on, until the other one is gone.
[[noreturn]] void becomeDesk(int socket)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    int count = 1;
    char name[] = "desk";
    char *arguments[] = {name, nullptr};
    QCoreApplication application(count, arguments);
    try {
        serve(Channel(socket));
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "desk: %s\n", qPrintable(error.description()));
    } catch (const std::exception &) {
        // The trial has ended.
    }
    ::_exit(0);
}

} // namespace

DeskProcess::DeskProcess()
    : DeskProcess(pairOfSockets())
{
}

DeskProcess::DeskProcess(std::pair<int, int> sockets)
    : channel_(sockets.first)
    , process_(::fork())
{
    if (process_ < 0)
        throw std::runtime_error("no process");
    if (process_ == 0)
        becomeDesk(sockets.second);
    ::close(sockets.second);
}

DeskProcess::~DeskProcess()
{
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
}

void DeskProcess::open(const QString &address)
{
    channel_.send(address.toUtf8());
    serverProcess_ = channel_.receive().toInt();
}

Message DeskProcess::begin(int operation) const
{
    channel_.send(QByteArray::number(operation));
    return read(channel_.receive());
}

void DeskProcess::go() const
{
    channel_.send("go");
}

std::optional<Message> DeskProcess::messageWithin(int milliseconds) const
{
    const std::optional<QByteArray> text = channel_.receiveWithin(milliseconds);
    return text ? std::optional(read(*text)) : std::nullopt;
}

} // namespace trial
