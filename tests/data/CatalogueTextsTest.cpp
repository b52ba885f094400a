#include "data/StatementText.h"
#include "data/clsSQL.h"
#include "data/modGeneralSQL.h"
#include "platform/runtime/RuntimeError.h"

#include <gtest/gtest.h>

using runtime::Currency;

namespace {

const QDate Day(2026, 3, 9);

Currency won(qint64 amount)
{
    return Currency::fromWon(amount);
}

TEST(CatalogueTexts, FillTheirPlacesInTurn)
{
    const struct
    {
        const char *what;
        QString text, holds, doesNotHold;
    } table[] = {
        {"quotes of a method and a memo are doubled", clsSQL().InsertTransactionSQL(1, Day, 3, -5, 2, "'", "a''b'"),
         "VALUES (1, '2026-03-09', 3, -5, 2, '''', 'a''''b''')", "["},
        {"left-out texts are empty", clsSQL().InsertTransactionSQL(1, Day, 3, 5, 2), "2, '', '')", "["},
        {"a place inside an earlier value is filled with the later one",
         clsSQL().InsertTransactionSQL(1, Day, 3, 5, 2, "[MEMO]", "x"), "'x', 'x')", "["},
        {"a place inside a later value stays", clsSQL().InsertTransactionSQL(1, Day, 3, 5, 2, "y", "[CUSTPK]<MONEY>"),
         "'y', '[CUSTPK]<MONEY>')", "'1'"},
        {"quotes of a return's memo stay single", clsSQL().insDB2RfndOrderDetailSQL(1, 2, won(900), -1, "it's"),
         "VALUES(1, 2, 900, 0, -1, 'it's')", "<"},
        {"a product name's quotes stay single", clsSQL().getNumOfSameProdName("a'b[PMNAME]"), "= 'a'b[PMNAME]'", "''"},
        {"a dealer's name never enters its text", clsSQL().getDealerSQL("동원"), "LIKE '%[CPNAME]%'", "동원"},
        {"the key of the full update stays a bare word",
         clsSQL().updateOrderMasterFullSQL(77, 1, {}, {}, {}, {}, won(1), won(2), won(3), won(4), won(5), {}),
         "WHERE OrdM_PK = lngOrdMPK ", "77"},
        {"the memo update names no order", clsSQL().updateOrderMasterMemoSQL(77, 78, "m").toString(),
         "OrdM_ETCMemo = 'm')", "7"},
        {"a ledger row's mark and kind are left out",
         clsSQL().InsertPSTransaction(1, Day, 3, 5, 2, "0'1", "mark", "kind"), "3, 5, '0''1', '')", "k"},
        {"money keeps a fraction where there is one",
         clsSQL().insDB2OrderDetailSQL(1, 2, Currency::fromScaled(-15000), won(0), 1, 0), "VALUES(1, 2, -1.5, 0, 1, 0)",
         "<"},
        {"money beyond 32 bits has no grouping",
         clsSQL().updateOrderMasterTotalSQL(1, won(30000000000), won(0), won(0), won(0), won(0)),
         "OrdM_TaxTotal=30000000000,", "["},
        {"a date may come as a value of any kind", clsSQL().getOrderMasterPKSQL(1, QVariant(Day)), "'2026-03-09'", "["},
        {"only the exact place is replaced", statement::fill(u"[a] [A] [A", {{u"[A]", u"x"_qs}}), "[a] x [A", "[A]"},
        {"every place of one name", statement::fill(u"[A][A]-[A]", {{u"[A]", u"[A][B]"_qs}, {u"[B]", u"]'[<>"_qs}}),
         "[A]]'[<>[A]]'[<>-[A]]'[<>", "B"},
    };
    for (const auto &row : table) {
        EXPECT_TRUE(row.text.contains(row.holds)) << row.what << ": " << row.text.toStdString();
        EXPECT_FALSE(row.text.contains(row.doesNotHold)) << row.what << ": " << row.text.toStdString();
    }
}

TEST(CatalogueTexts, RefuseAnOrderWhoseMoneyLeaves16Bits)
{
    const auto text = [](Currency tax, Currency total) {
        return clsSQL().insDB2OrderMasterSQL(1, Day, 1, {}, {}, {}, {}, tax, won(0), won(0), total, won(-32768), {});
    };
    EXPECT_TRUE(text(won(32767), won(0)).contains("32767, 0, 0, 0, -32768"));
    // Halves go to the even neighbour, as everywhere.
    EXPECT_TRUE(text(Currency::fromScaled(25000), Currency::fromScaled(35000)).contains(" 2, 0, 0, 4, "));
    for (const Currency beyond : {won(32768), won(-32769), Currency::fromScaled(327675000)}) {
        try {
            text(won(0), beyond);
            ADD_FAILURE() << beyond.toText().toStdString();
        } catch (const runtime::RuntimeError &error) {
            EXPECT_EQ(error.number(), runtime::ErrorNumber::Overflow);
        }
    }
}

TEST(GeneralSQL, ReadsAnyValueAsANumber)
{
    const struct
    {
        QVariant value;
        double number;
    } table[] = {{QVariant(), 0},     {"abc", 0}, {"", 0},
                 {"1,234.5", 1234.5}, {-7, -7},   {QVariant::fromValue(won(50)), 50},
                 {2.5, 2.5}};
    for (const auto &row : table)
        EXPECT_DOUBLE_EQ(varToDouble(row.value), row.number) << row.value.toString().toStdString();
    EXPECT_EQ(sqlEscapeQuotes("'a''"), "''a''''");
}

} // namespace
