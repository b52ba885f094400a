#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace trial {

/// A network of its own for the time of the trial: the desks and the second server stand at one end of a cable, the first
/// server at the other. Needs root.
class Site
{
public:
    /// Takes the calling thread out of the machine's own network, before there is any other thread.
    static void leaveMachine();

    Site();
    ~Site();
    Site(const Site &) = delete;
    Site &operator=(const Site &) = delete;

    static QString first() { return QStringLiteral("10.213.7.2"); }
    static QString second() { return QStringLiteral("10.213.7.1"); }
    /// The words before a command that run it at the first server's end.
    QStringList atFirst() const;

    /// At the first server's end: whoever sends to it hears nothing.
    void pullCable();
    void mendCable();

private:
    QProcess farEnd_;
};

/// Runs it to its end; raises std::runtime_error with what it said when it fails.
QByteArray run(const QStringList &words);

} // namespace trial
