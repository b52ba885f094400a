#include "platform/ado/LiftNumbers.h"
#include "tests/ado/Desks.h"

namespace {

struct LiftCase
{
    const char *statement;
    const char *lifted; ///< null: as it was
    QList<QVariant> values = {};
};

QString lifted(const char *statement, QList<QVariant> &values)
{
    const ado::Command command =
        ado::liftNumbers(ado::Command(ado::Command::Values::Marked) << QString::fromUtf8(statement));
    values = command.values();
    return command.text();
}

} // namespace

TEST(LiftNumbers, TakesOnlyNumbersThatAreComparedOrAssigned)
{
    const LiftCase cases[]{
        {"SELECT a FROM t WHERE k = 12", "SELECT a FROM t WHERE k = ?", {12LL}},
        {"SELECT a FROM (SELECT b FROM t WHERE (k=1 AND m =20)) x",
         "SELECT a FROM (SELECT b FROM t WHERE (k=? AND m =?)) x",
         {1LL, 20LL}},
        {"UPDATE t SET a=5, b = 0 WHERE k = 3", "UPDATE t SET a=?, b = ? WHERE k = ?", {5LL, 0LL, 3LL}},
        {"DELETE FROM t WHERE k = 9000000000", "DELETE FROM t WHERE k = ?", {9000000000LL}},
        // It names the column, or means one.
        {"SELECT a = 5 FROM t", nullptr},
        {"SELECT a FROM t WHERE b > 5 ORDER BY 1 LIMIT 3", nullptr},
        // Not a whole number that ends there.
        {"SELECT a FROM t WHERE k = 1.5 OR k = 1e5 OR k = 0x10 OR k = -1 OR k = 99999999999999999999", nullptr},
        {"SELECT a FROM t WHERE k = '7' OR n = 'k = 7'", nullptr},
        {"SELECT a FROM t WHERE k = ? AND b = 5", nullptr},
        // No values can be given to these.
        {"PRAGMA user_version = 5", nullptr},
        {"CREATE INDEX i ON t (a) WHERE b = 1", nullptr},
    };
    for (const LiftCase &one : cases) {
        QList<QVariant> values;
        EXPECT_EQ(lifted(one.statement, values), QString::fromUtf8(one.lifted ? one.lifted : one.statement));
        EXPECT_EQ(values, one.values) << one.statement;
    }
}

TEST(KeptStatements, GiveEachKeyItsOwnRowAndLearnOfChangedTables)
{
    TestDatabase clinic(ado::Engine::SQLite);
    const auto nameOf = [&](int key) {
        Recordset product;
        product.Open(QStringLiteral("SELECT * FROM tPSProductMaster WHERE PM_PK = %1").arg(key), clinic.connection(),
                     CursorType::Static, LockType::ReadOnly);
        return product.Eof() ? QString() : runtime::text(product[product.fieldNames().constLast()]);
    };
    clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name, PM_AddedDate) VALUES ('one', '2026-01-01')"));
    clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name, PM_AddedDate) VALUES ('two', '2026-01-02')"));
    EXPECT_EQ(nameOf(1), QStringLiteral("2026-01-01"));
    EXPECT_EQ(nameOf(2), QStringLiteral("2026-01-02"));
    EXPECT_EQ(nameOf(3), QString());
    clinic.run(QStringLiteral("ALTER TABLE tPSProductMaster ADD COLUMN Shelf TEXT DEFAULT 'B7'"));
    EXPECT_EQ(nameOf(1), QStringLiteral("B7"));
}
