#pragma once

#include "platform/ado/Driver.h"

#include <QSqlDatabase>

class QSqlError;
class QSqlQuery;

namespace ado {

/// A clinic's own server behind ODBC. Only PostgreSQL is let in: of another kind nobody has seen where it ends a statement.
class OdbcDriver : public Driver
{
public:
    explicit OdbcDriver(const QString &connectionString);
    ~OdbcDriver() override;

    Engine engine() const override { return Engine::Odbc; }
    Dialect dialect() const override { return Dialect::PostgreSQL; }
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
    /// Raises ConnectionLost for any other kind.
    void requirePostgres();
    void sessionStands();
    void forgetSession();
    QSqlQuery run(const Command &statement);
    /// Whether somebody began a transaction past this driver. Of the two questions the first begins the one that the driver
    /// manager was asked for and has not begun yet: in the second one the time of its begin has gone by.
    bool foreignIsOpen();

    bool answers();

private:
    void end(bool done);
    void open();
    /// Raises Database when the session's settings have the server read the statement in another way than the layer has.
    void requireOurReading(const QString &statement);
    void putReadingRight();
    [[noreturn]] void fail(const QSqlError &error);

    QSqlDatabase database_;
    bool inTransaction_ = false;
    bool foreign_ = false;
    bool lost_ = false;
    bool readOtherwise_ = false; ///< the settings were found changed
};

} // namespace ado
