#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// A PostgreSQL server for the time of one test program: started on first use on a socket in a folder of its own, as a
/// user that the server accepts, and stopped with the program, however that ends.
class PostgresServer
{
public:
    static PostgresServer &instance();

    /// Careless: nothing has to outlast the program. Durable: as a clinic's server writes.
    enum class Writing { Careless, Durable };
    explicit PostgresServer(Writing writing);
    PostgresServer(const PostgresServer &) = delete;
    PostgresServer &operator=(const PostgresServer &) = delete;
    ~PostgresServer();

    /// A fresh empty database; returns its name. Everybody is let in but a role named "guarded", which a test may make:
    /// it has to give its password.
    QString createDatabase();
    void dropDatabase(const QString &name);

    QString postgresAddress(const QString &database) const; ///< "postgresql://..."
    QString odbcAddress(const QString &database) const;     ///< "odbc:..."

    /// For tests of a lost server: ends every session of the database, or stops and starts the whole server.
    void cutSessions(const QString &database);
    void stop();
    void start();

private:
    void initialise();
    void sql(const QString &statement);
    void launch(QProcess &process, const QString &program, const QStringList &arguments) const;

    const Writing writing_;
    QTemporaryDir folder_;
    std::unique_ptr<QProcess> server_;
    int databases_ = 0;
};
