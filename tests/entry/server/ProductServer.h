#pragma once

#include <QObject>
#include <QVariant>

/// What the servers of this process answer and what happened to them, one for all of them.
struct ServerScript
{
    QVariant sync;
    bool resync = false;
    QString failing;       ///< the member that raises an error
    int refuseFrom = 1000; ///< the creation of this number and later ones are refused
    int created = 0;
    QString log;
    QString address; ///< of the database in which a resync runs the statement, on a session of its own
    QString statement;
};

/// The central product server as the sale module knows it.
class ProductServer : public QObject
{
    Q_OBJECT
public:
    ProductServer();
    ~ProductServer() override;

    Q_INVOKABLE QVariant CheckSync();
    Q_INVOKABLE bool ResyncFromServer();
};

/// The hand of a test on the servers.
class ServerControl : public QObject
{
    Q_OBJECT
public:
    /// Starts a new script. `failing` names a member that raises; creations from number `refuseFrom` on are refused.
    Q_INVOKABLE void Script(const QVariant &sync, bool resync, const QString &failing, qint32 refuseFrom);
    Q_INVOKABLE void ResyncRuns(const QString &address, const QString &statement);
    /// "created CheckSync released ...", in the order of events; a server that lives on while the sale window is up is told.
    Q_INVOKABLE QString Log() const;
};
