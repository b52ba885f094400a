#include "trials/desk/Gate.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <sys/file.h>
#include <unistd.h>

namespace trial {

namespace {

void lock(int file, int how)
{
    while (::flock(file, how) != 0) {
        if (errno != EINTR)
            throw std::runtime_error("the gate cannot be locked");
    }
}

int madeFile(const QByteArray &name)
{
    const int file = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0)
        throw std::runtime_error("no gate: " + name.toStdString());
    return file;
}

} // namespace

Gate::Gate(const QString &file)
    : name_(QFile::encodeName(file))
    , sign_(name_ + ".closed")
{
    if (!name_.isEmpty())
        file_ = madeFile(name_);
}

Gate::~Gate()
{
    if (file_ >= 0)
        ::close(file_);
}

bool Gate::isClosed() const
{
    return ::access(sign_.constData(), F_OK) == 0;
}

void Gate::close()
{
    ::close(madeFile(sign_));
    lock(file_, LOCK_EX);
}

void Gate::open()
{
    ::unlink(sign_.constData());
    lock(file_, LOCK_UN);
}

Gate::Pass::Pass(const Gate &gate)
    : gate_(gate)
{
    while (gate_.file_ >= 0) {
        lock(gate_.file_, LOCK_SH);
        if (!gate_.isClosed())
            return;
        lock(gate_.file_, LOCK_UN);
        ::usleep(20'000);
    }
}

Gate::Pass::~Pass()
{
    if (gate_.file_ >= 0)
        ::flock(gate_.file_, LOCK_UN);
}

} // namespace trial
