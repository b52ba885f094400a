#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <memory>

namespace trial {

/// One server of PostgreSQL's in a folder of its own, run as its user. Goes with the program.
class Server
{
public:
    /// `way`: the words that come before its program.
    Server(QString folder, QString host, QStringList way = {});
    ~Server();
    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    /// A fresh cluster, small in all that could take long to fill or to copy.
    void initialise();
    /// As the other is, which must stand still.
    void copyFrom(const Server &other);
    void follow(const Server &first);

    void start(const QStringList &settings = {});
    void stop();
    /// The power fails: all its processes at once.
    void kill();
    void promote();
    /// Until it answers where the desks are: behind a cable that was mended the network needs a moment.
    void awaitAnswer();

    const QString &folder() const { return folder_; }
    const QString &host() const { return host_; }
    QString address() const { return QStringLiteral("postgresql://clinic@%1/clinic").arg(host_); }

private:
    QString data() const { return folder_ + QStringLiteral("/data"); }
    QStringList asUser(const QString &program) const;

    const QString folder_;
    const QString host_;
    const QStringList way_;
    std::unique_ptr<QProcess> server_;
};

} // namespace trial
