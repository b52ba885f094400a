#pragma once

#include "platform/ado/Driver.h"
#include "platform/ado/OdbcServer.h"

#include <QSqlDatabase>

class QSqlError;
class QSqlQuery;

namespace ado {

/// A clinic's own server behind ODBC. PostgreSQL and MariaDB are let in: of another kind nobody has seen where it ends a
/// statement.
class OdbcDriver : public Driver
{
public:
    explicit OdbcDriver(const QString &connectionString);
    ~OdbcDriver() override;

    Engine engine() const override { return server_->engine; }
    Dialect dialect() const override { return server_->dialect; }
    Command command() const override { return Command(Command::Values::Literal); }
    CellTable read(const Command &select) override;
    int write(const Command &statement) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool holdsTransaction() const override { return inTransaction_ || foreign_; }
    bool alive(Asking asking) override;

protected:
    /// For a session of the host's.
    OdbcDriver() = default;
    virtual QSqlDatabase database() const { return database_; }
    void openSession() override;
    void closeSession() override;
    void leave() override;
    /// Learns which of the kinds it is; raises ConnectionLost for any other.
    void knowServer();
    /// Raises ConnectionLost with that, behind the sentence that this kind cannot be worked with.
    [[noreturn]] void refuseKind(const QString &kinds);
    void sessionStands();
    void forgetSession();
    QSqlQuery run(const Command &statement);
    /// Whether the server holds a transaction, as one that somebody began past this driver.
    bool transactionIsOpen();

    bool answers();

private:
    void end(bool done);
    void open();
    /// Raises Database when the session's settings have the server read the statement in another way than the layer has.
    void requireOurReading(const QString &statement);
    void putReadingRight();
    void endBy(const QString &statement);
    [[noreturn]] void fail(const QSqlError &error);

    QSqlDatabase database_;
    const OdbcServer *server_ = nullptr; ///< known from the first session on
    bool inTransaction_ = false;
    bool foreign_ = false;
    bool lost_ = false;
    bool readOtherwise_ = false; ///< the settings were found changed
};

} // namespace ado
