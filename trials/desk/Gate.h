#pragma once

#include <QString>

namespace trial {

/// Lets desks pass one visit at a time while it is open, all of them at once; whoever closes it waits until each has left. A
/// desk that dies has left. Without a file it is always open.
class Gate
{
public:
    /// Raises std::runtime_error when the file cannot be made.
    explicit Gate(const QString &file);
    ~Gate();
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;

    /// A desk's visit.
    class Pass
    {
    public:
        explicit Pass(const Gate &gate);
        ~Pass();
        Pass(const Pass &) = delete;
        Pass &operator=(const Pass &) = delete;

    private:
        const Gate &gate_;
    };

    void close();
    void open();

private:
    bool isClosed() const;

    const QByteArray name_;
    const QByteArray
        sign_; ///< a file that stands there while it is closed: desks alone would keep a lock among themselves
    int file_ = -1;
};

} // namespace trial
