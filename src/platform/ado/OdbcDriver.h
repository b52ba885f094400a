#pragma once

#include "platform/ado/Driver.h"

class QSqlError;
class QSqlQuery;

namespace ado {

/// A clinic's own server behind ODBC.
class OdbcDriver : public Driver
{
public:
    explicit OdbcDriver(const QString &connectionString);

    Engine engine() const override { return Engine::Odbc; }
    Dialect dialect() const override { return dialect_; }
    Command command() const override;
    CellTable read(const Command &select) override;
    int write(const Command &statement) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool holdsTransaction() const override { return inTransaction_; }
    bool alive(Asking asking) override;

protected:
    void prepareSession() override;
    void endSession() override;

private:
    QSqlQuery run(const Command &statement);
    void end(bool done);
    bool answers();
    [[noreturn]] void fail(const QSqlError &error);

    Dialect dialect_ = Dialect::SqlServer;
    bool inTransaction_ = false;
    bool lost_ = false;
};

} // namespace ado
