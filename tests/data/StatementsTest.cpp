#include "tests/data/FilledClinic.h"
#include "tests/data/StatementCases.h"

#include "platform/runtime/RuntimeError.h"

#include <gtest/gtest.h>

#include <algorithm>

using ado::Engine;

namespace {

class Statements : public testing::TestWithParam<StatementCase>
{
protected:
    /// What the statement shows on a freshly filled database: its rows, or the table that it writes.
    static QStringList outcome(const StatementCase &asked, Engine engine, ado::CursorType cursor)
    {
        if (!asked.table)
            return clinic::rowsOf(asked.statement, clinic::filled(engine).connection(), cursor);
        const ado::ConnectionPtr &connection = clinic::filledToWrite(engine).connection();
        try {
            connection->Execute(asked.statement);
        } catch (const runtime::RuntimeError &) {
            return {QStringLiteral("refused")};
        }
        return clinic::rowsOf(QStringLiteral("SELECT * FROM %1 ORDER BY %2").arg(asked.table, asked.key), connection,
                              cursor);
    }
};

TEST_P(Statements, HaveTheSameResultOnEveryEngine)
{
    const StatementCase &asked = GetParam();
    const QStringList expected = outcome(asked, Engine::SQLite, ado::CursorType::Static);
    ASSERT_EQ(expected == QStringList{QStringLiteral("refused")}, !asked.runs) << asked.statement.toStdString();
    for (const Engine engine : allEngines) {
        for (const ado::CursorType cursor : {ado::CursorType::Static, ado::CursorType::Keyset}) {
            EXPECT_EQ(outcome(asked, engine, cursor).join(u'\n').toStdString(), expected.join(u'\n').toStdString())
                << engineName({engine, 0}) << ", cursor " << int(cursor);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Catalogue, Statements, testing::ValuesIn(statementCases()),
                         [](const auto &asked) { return std::string(asked.param.name); });

// ---- results that are known, so that the engines cannot all be wrong together

struct Known
{
    const char *what;
    const char *statementCase;
    QStringList rows; ///< without the line of names
};

class KnownRows : public testing::TestWithParam<Engine>
{
};

TEST_P(KnownRows, OfTheStatements)
{
    const Known table[] = {
        {"the first of two orders of a day is the lower key", "OrderKeyOfTwo", {"int 101", "int 102"}},
        {"no lines under a key that is none", "DetailsOfKeyZero", {}},
        {"no lines under a key that is none", "DetailsOfNoKey", {}},
        {"operator 1 bears the label of discounts here",
         "AllTranAmount",
         {"runtime::Currency 70|runtime::Currency 200|runtime::Currency 3400|runtime::Currency 300|runtime::Currency "
          "3300|"
          "runtime::Currency 400|NULL|NULL"}},
        {"and its own on receipts",
         "ReceiptTotals",
         {"runtime::Currency 200|runtime::Currency 70|runtime::Currency 3400|runtime::Currency 300|runtime::Currency "
          "3000|"
          "runtime::Currency 400|NULL|NULL|NULL"}},
        {"outstanding money by its method, here of refunds too",
         "AllTranAmountOutstanding",
         {"NULL|NULL|runtime::Currency 17350|runtime::Currency 300|NULL|NULL|runtime::Currency 9500|"
          "runtime::Currency 5300"}},
        {"and on receipts of payments only",
         "ReceiptTotalsOutstanding",
         {"NULL|NULL|runtime::Currency 17350|runtime::Currency 300|NULL|NULL|runtime::Currency 9500|runtime::Currency "
          "5000|runtime::Currency 2000"}},
        {"a NULL method is cash on receipts, whatever the operator",
         "ReceiptTotalsWithNulls",
         {"NULL|NULL|runtime::Currency 0|runtime::Currency 40|runtime::Currency 130|runtime::Currency "
          "0|NULL|NULL|NULL"}},
        {"two cuts are summed, whatever method they bear",
         "AllTranAmountOfTwoOfAKind",
         {"NULL|runtime::Currency 50|runtime::Currency 800|runtime::Currency 900|runtime::Currency 930|"
          "runtime::Currency 811|NULL|NULL"}},
        {"two payments by card are summed",
         "ReceiptTotalsOfTwoOfAKind",
         {"runtime::Currency 50|NULL|runtime::Currency 800|runtime::Currency 900|runtime::Currency 930|"
          "runtime::Currency 800|NULL|NULL|NULL"}},
        {"a line whose product is gone is not on the receipt",
         "ReceiptLinesOfAllKinds",
         {"QString 건강식품|QString 홍삼정|bool False|bool True|runtime::Currency 30000|runtime::Currency 5000|int "
          "1|int 3",
          "QString 건강식품|QString 홍삼정|bool False|bool True|runtime::Currency 30000|runtime::Currency 0|int 2|int "
          "0"}},
        {"a NULL operator counts as received", "TotalReceived", {"runtime::Currency 90"}},
        {"losses, service, sales; a return comes back", "StockOut", {"runtime::Currency 2|NULL|runtime::Currency 3"}},
        {"fractions of a unit", "StockIn", {"runtime::Currency 13.5"}},
        {"a dealer search reads brackets as a class of letters",
         "DealersByName",
         {"int 2|QString [CPNAME] 상사|QString |QString |QString |QString |bool True",
          "int 7|QString banana|QString |QString |"
          "QString |QString |bool False",
          "int 3|QString Pine|QString |NULL|QString |QString |bool False"}},
    };
    const std::vector<StatementCase> cases = statementCases();
    const ado::ConnectionPtr connection = clinic::filled(GetParam()).connection();
    for (const Known &known : table) {
        const auto found = std::ranges::find(cases, std::string(known.statementCase), &StatementCase::name);
        ASSERT_NE(found, cases.end()) << known.statementCase;
        EXPECT_EQ(clinic::rowsOf(found->statement, connection).mid(1), known.rows)
            << known.what << ": " << clinic::rowsOf(found->statement, connection).join(u'\n').toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, KnownRows, testing::ValuesIn(allEngines), engineName);

} // namespace
