#include "platform/ado/LiftNumbers.h"
#include "tests/ado/Desks.h"
#include "tests/support/Cases.h"

TEST(LiftNumbers, TakesOnlyNumbersThatAreComparedOrAssigned)
{
    for (const QStringList &one : casesOf("ado/lifted.cases", 3)) {
        const ado::Command command = ado::liftNumbers(ado::Command(ado::Command::Values::Marked) << one[0]);
        EXPECT_EQ(command.text(), one[1].isEmpty() ? one[0] : one[1]);
        QStringList values;
        for (const QVariant &value : command.values()) {
            EXPECT_EQ(value.typeId(), QMetaType::LongLong);
            values << value.toString();
        }
        EXPECT_EQ(values.join(u' '), one[2]) << one[0].toStdString();
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
