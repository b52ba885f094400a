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
    bool holdsTransaction() const override { return inTransaction_; }
    bool alive(Asking asking) override;

protected:
    void openSession() override;
    void closeSession() override;
    void leave() override;

private:
    QSqlQuery run(const Command &statement);
    void end(bool done);
    bool answers();
    void open();
    /// Raises Database when the session's settings have the server read the statement in another way than the layer has.
    void requireOurReading(const QString &statement);
    void putReadingRight();
    [[noreturn]] void fail(const QSqlError &error);

    QSqlDatabase database_;
    bool inTransaction_ = false;
    bool lost_ = false;
    bool readOtherwise_ = false; ///< the settings were found changed
};

} // namespace ado
