#pragma once

#include "session/SaleSession.h"
#include "session/modGlobalVars.h"
#include "tests/support/Statements.h"
#include "tests/support/TestDatabase.h"

#include <gmock/gmock.h>

#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

/// "7|2026-11-24|NULL": the cells of a row, the rows of an answer one below the other.
using Rows = std::vector<std::string>;

/// A clinic's database of its own for every test, open as the host's connection, with a second desk beside it.
class SaleDatabase : public testing::Test
{
protected:
    explicit SaleDatabase(ado::Engine engine = ado::Engine::SQLite);
    ~SaleDatabase() override;

    /// One statement on a connection that is not the session's; money and keys are whole numbers.
    void atOtherDesk(const QString &statement) { database_.run(statement); }
    Rows rows(const QString &statement);
    void runFile(const char *file) { ::runFile(database_, file); }
    /// A trigger that refuses an event on a table: "BEFORE DELETE ON tPSOrderMaster".
    void refuse(const QString &event);
    void allowAgain();

    int product(const QString &name, int price, bool taxed = true, bool handled = true);
    int order(const QString &date, int customer = Patient);
    int detail(int orderKey, int productKey, int price, int discount, int count);
    const ado::ConnectionPtr &connection() const { return database_.connection(); }
    /// Rows to be changed, on the session's connection.
    static void openRows(SaleSession::RecordsetPtr &recordset, const QString &source);

    static constexpr int Patient = 41;
    static constexpr const char *Today = "2026-11-24";
    static QDate today() { return QDate(2026, 11, 24); }

    SaleSession session_;

private:
    int lastKey(const QString &table, const QString &key);

    TestDatabase database_;
};
