#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A MariaDB server for the time of one test program, as PostgresServer is one: started on first use on a socket in a folder
/// of its own, and reached by ODBC.
class MariaDbServer
{
public:
    static MariaDbServer &instance();
    /// Whether this machine has one.
    static bool isInstalled();

    /// Careless: in memory where there is room, for nothing has to outlast the program. Durable: as a clinic's server writes.
    enum class Writing { Careless, Durable };
    explicit MariaDbServer(Writing writing);
    MariaDbServer(const MariaDbServer &) = delete;
    MariaDbServer &operator=(const MariaDbServer &) = delete;
    ~MariaDbServer();

    /// A fresh empty database; returns its name.
    QString createDatabase();
    void dropDatabase(const QString &name);
    QString address(const QString &database) const; ///< "odbc:..."

    /// One answer of each row, past every database.
    QStringList ask(const QString &statement) const;

    /// For tests of a lost server: ends every session of the database, or stops and starts the whole server.
    void cutSessions(const QString &database);
    void stop();
    void start();

private:
    void launch(QProcess &process, const QString &program, const QStringList &arguments) const;

    const Writing writing_;
    QTemporaryDir folder_;
    std::unique_ptr<QProcess> server_;
    int databases_ = 0;
};
