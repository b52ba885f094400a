#include "clinic/Tables.h"
#include "tests/ado/Desks.h"

#include <QScopeGuard>

#include <limits>
#include <malloc.h>

class Values : public Desks
{
protected:
    QVariant one(const QString &statement, const QString &field = QStringLiteral("Result"))
    {
        return opened(statement, CursorType::ForwardOnly, LockType::ReadOnly)->value(field);
    }

    QString order(const char *statement, const char *field, CursorType cursor)
    {
        const auto rows = opened(QString::fromUtf8(statement), cursor);
        return column(*rows, QString::fromUtf8(field));
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, Values, testing::ValuesIn(allEngines), engineName);

TEST_P(Values, ComeInTheTypeThatTheRegistryTells)
{
    clinic.run(QStringLiteral(
        "INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, "
        "PM_EtcMemo, PM_AddedDate) VALUES ('한약', '공진단 ''특''', 900000000000, 1, 0, '', '2026-02-28')"));
    clinic.run(QStringLiteral("INSERT INTO tPSIncoming (IN_Count) VALUES (2.5)"));
    for (CursorType cursor : {CursorType::Keyset, CursorType::Static, CursorType::ForwardOnly}) {
        const auto products = opened(allProducts, cursor);
        EXPECT_EQ(products->value("PM_PK"), QVariant(1));
        EXPECT_EQ(products->value("PM_PK").typeId(), QMetaType::Int);
        EXPECT_EQ(products->value("PM_Catagory"), QVariant(QStringLiteral("한약")));
        EXPECT_EQ(products->value("PM_Name"), QVariant(QStringLiteral("공진단 '특'")));
        EXPECT_EQ(products->value("PM_UnitPrice").value<Currency>(), Currency::fromWon(900'000'000'000));
        EXPECT_EQ(products->value("PM_IsTaxed"), QVariant(true));
        EXPECT_EQ(products->value("PM_IsTaxed").typeId(), QMetaType::Bool);
        EXPECT_EQ(products->value("PM_IsValid"), QVariant(false));
        EXPECT_FALSE(products->value("PM_IsHide").isValid());
        EXPECT_TRUE(products->value("PM_EtcMemo").isValid()) << "an empty text is not NULL";
        EXPECT_EQ(products->value("PM_AddedDate"), QVariant(QDate(2026, 2, 28)));
        EXPECT_EQ(opened(QStringLiteral("SELECT * FROM tPSIncoming"), cursor)->value("IN_Count"), QVariant(2.5));
    }
}

TEST_P(Values, OfTextsGoAndComeWhole)
{
    // A driver that reads beyond a statement's end finds no text there.
    mallopt(M_PERTURB, 0x27);
    const auto asBefore = qScopeGuard([] { mallopt(M_PERTURB, 0); });
    // Signs that one driver counts as two, pairs, and what is longer than a driver's block.
    const QString texts[]{"동원",
                          "동",
                          "동동동동동",
                          "동가동가동가",
                          "활동 🌿 동🌿동",
                          "쌍화탕'\\ 동'",
                          QStringLiteral("동가").repeated(40'000)};
    for (const QString &text : texts) {
        SCOPED_TRACE(text.left(20).toStdString());
        ado::Command insert = desk->command();
        insert << u"INSERT INTO tPSProductMaster (PM_EtcMemo, PM_Name, PM_UnitPrice) VALUES (";
        insert.value(text) << u", '동', 12345)";
        desk->Execute(insert);
        const auto stored = opened(QStringLiteral("SELECT * FROM tPSProductMaster WHERE PM_UnitPrice = 12345"));
        ASSERT_EQ(stored->rowCount(), 1);
        EXPECT_TRUE(stored->value("PM_EtcMemo") == text);
        EXPECT_EQ(clinic.value("SELECT LENGTH(PM_EtcMemo) - LENGTH(PM_Name) FROM tPSProductMaster"),
                  QString::number(clinic.value("SELECT LENGTH('가')") == "3" ? text.toUtf8().size() - 3
                                                                             : text.toUcs4().size() - 1));
        stored->Delete();
    }
}

TEST(StoredValues, ThatCannotBeReadAreAnErrorAndNotEmpty)
{
    TestDatabase clinic(ado::Engine::SQLite, false);
    clinic.run(QStringLiteral(
        "CREATE TABLE tPSProductMaster (PM_PK INTEGER PRIMARY KEY, PM_Name, PM_UnitPrice, PM_AddedDate)"));
    clinic.run(QStringLiteral(
        "INSERT INTO tPSProductMaster (PM_Name, PM_UnitPrice, PM_AddedDate) VALUES ('a', 'dear', 'soon'), "
        "('b', 1, NULL)"));
    for (const CursorType cursor : {CursorType::Static, CursorType::Keyset}) {
        Recordset products;
        products.Open(QStringLiteral("SELECT PM_Name, PM_UnitPrice, PM_AddedDate FROM tPSProductMaster"),
                      clinic.connection(), cursor, LockType::ReadOnly);
        for (const int column : {1, 2})
            EXPECT_EQ(errorOf([&] { products.valueAt(0, column); }), ErrorNumber::TypeMismatch) << column;
        EXPECT_EQ(products.valueAt(0, 0), "a");
        EXPECT_EQ(products.valueAt(1, 2), QVariant());
        EXPECT_EQ(products.valueAt(2, 0), QVariant()) << "there is no such row";
    }
}

TEST_P(Values, KnowEveryColumnOfTheClinicsTables)
{
    for (const clinic::Table &table : clinic::tables()) {
        QStringList columns;
        for (const clinic::Column &column : table.columns)
            columns << QString::fromLatin1(column.name);
        const auto rows = opened(QStringLiteral("SELECT * FROM ") + QString::fromLatin1(table.name));
        EXPECT_EQ(rows->fieldNames(), columns) << table.name;
    }
}

TEST_P(Values, OfATableThatNobodyToldOfAreReadAsTheEngineHasThemAndWrittenOnceItIsTold)
{
    // Names of their own for each engine: what is told stays known.
    const QString table = QStringLiteral("Guest") + QChar(u'A' + static_cast<int>(GetParam()));
    const QString key = table + "_PK", name = table + "_Name", fee = table + "_Fee";
    clinic.run(
        QStringLiteral("CREATE TABLE %1 (%2 INTEGER PRIMARY KEY, %3 TEXT, %4 INTEGER)").arg(table, key, name, fee));
    clinic.run(QStringLiteral("INSERT INTO %1 VALUES (7, '김한방', 1500)").arg(table));
    const QString statement = QStringLiteral("SELECT %1, %2, %3 FROM %4").arg(key, name, fee, table);
    const auto before = opened(statement);
    EXPECT_EQ(before->value(name), QVariant(QStringLiteral("김한방")));
    EXPECT_EQ(before->value(fee), QVariant::fromValue(Currency::fromWon(1500)));
    EXPECT_EQ(errorOf([&] { before->setValue(fee, 1); }), ErrorNumber::InvalidCall);
    EXPECT_EQ(errorOf([&] { before->AddNew(); }), ErrorNumber::InvalidCall);
    EXPECT_EQ(errorOf([&] { before->Delete(); }), ErrorNumber::InvalidCall);

    using enum ado::ColumnType;
    const ado::Table told{table, key, {{key, Key}, {name, Text}, {fee, Long}}};
    const ado::Table otherwise{table, fee, {{fee, Text}}};
    for (const ado::Table &list : {told, otherwise}) // the second comes too late
        ado::registerTables({&list, 1});

    const auto after = opened(statement);
    EXPECT_EQ(after->value(fee), QVariant(1500));
    after->setValue(fee, 2000);
    after->Update();
    EXPECT_EQ(clinic.value(statement), "7|김한방|2000");
    EXPECT_EQ(errorOf([&] { before->AddNew(); }), ErrorNumber::InvalidCall) << "a list that is open stays what it was";
}

TEST_P(Values, OfOtherColumnsAreMoneyOrText)
{
    addProducts({"a", "b"});
    clinic.run(QStringLiteral("INSERT INTO tPSIncoming (IN_Count) VALUES (2.5)"));
    const auto money = [](double value) { return QVariant::fromValue(Currency::fromDouble(value)); };
    EXPECT_EQ(one(QStringLiteral("SELECT COUNT(*) AS Result FROM tPSProductMaster")), money(2));
    EXPECT_EQ(one(QStringLiteral("SELECT SUM(PM_UnitPrice) AS Result FROM tPSProductMaster")), money(3000));
    EXPECT_EQ(one(QStringLiteral("SELECT SUM(PM_UnitPrice * PM_IsTaxed) AS Result FROM tPSProductMaster")),
              money(3000));
    EXPECT_EQ(one(QStringLiteral("SELECT SUM(IN_Count) AS Result FROM tPSIncoming")), money(2.5));
    EXPECT_EQ(one(QStringLiteral("SELECT 1.25 AS Result")), money(1.25));
    EXPECT_EQ(one(QStringLiteral("SELECT 12345 AS Result")), money(12345));
    EXPECT_EQ(one(QStringLiteral("SELECT MIN(PM_Name) AS Result FROM tPSProductMaster")), QVariant("a"));
    EXPECT_EQ(one(QStringLiteral("SELECT SUM(PM_UnitPrice) AS Result FROM tPSProductMaster WHERE 1 = 0")), QVariant());
    EXPECT_EQ(one(QStringLiteral("SELECT PM_UnitPrice AS 값 FROM tPSProductMaster"), QStringLiteral("값")),
              money(1000));
}

TEST_P(Values, BehindAnAliasAreReadByTheResultsName)
{
    clinic.run(QStringLiteral("INSERT INTO tPSTransaction (tpstrans_Money, tpstrans_Operator) VALUES (700, 3)"));
    clinic.run(QStringLiteral("INSERT INTO tPSTransaction (tpstrans_Money, tpstrans_Operator) VALUES (300, 3)"));
    const QVariant sum = one(QStringLiteral("SELECT SUM(tpstrans_Money) As tpstrans_Money FROM tPSTransaction"),
                             QStringLiteral("TPSTRANS_MONEY"));
    EXPECT_EQ(sum, QVariant(1000));
    EXPECT_EQ(sum.typeId(), QMetaType::Int);
    const auto totals = opened(QStringLiteral("SELECT SUM(tpstrans_Money) AS TotalOfAll FROM tPSTransaction"));
    EXPECT_EQ(totals->fieldNames(), QStringList{"TotalOfAll"}) << "spelled as in the statement";
}

TEST_P(Values, KeepMoneyExact)
{
    if (GetParam() == ado::Engine::SQLite) {
        addProducts({"a"});
        const auto products = opened(allProducts);
        products->setValue("PM_UnitPrice", QVariant::fromValue(Currency::fromScaled(5)));
        EXPECT_EQ(errorOf([&] { products->Update(); }), ErrorNumber::Database) << "whole won alone, or an error";
    } else {
        addProducts({"a"});
        const auto products = opened(allProducts);
        for (const std::int64_t scaled : {std::numeric_limits<long long>::min(), 9'007'199'254'740'993LL,
                                          123'456'789'012'345'678LL, -123'456'789'012'345'671LL, 1LL, -1LL, 10'500LL}) {
            products->setValue("PM_UnitPrice", QVariant::fromValue(Currency::fromScaled(scaled)));
            products->Update();
            products->Requery();
            EXPECT_EQ(products->value("PM_UnitPrice").value<Currency>().scaled(), scaled);
            const auto sum = opened(QStringLiteral("SELECT SUM(PM_UnitPrice) AS Result FROM tPSProductMaster"));
            EXPECT_EQ(sum->value("Result").value<Currency>().scaled(), scaled);
        }
    }
    // Beyond what a double holds, in whole won.
    clinic.run(QStringLiteral("INSERT INTO Receipt (Customer_PK, Bonin_Money) VALUES (1, 900719925474099)"));
    clinic.run(QStringLiteral("INSERT INTO Receipt (Customer_PK, Bonin_Money) VALUES (1, 2)"));
    EXPECT_EQ(one(QStringLiteral("SELECT SUM(Bonin_Money) AS Result FROM Receipt")).value<Currency>(),
              Currency::fromWon(900'719'925'474'101));
    EXPECT_EQ(errorOf([&] { one(QStringLiteral("SELECT SUM(Bonin_Money * 1000) AS Result FROM Receipt")); }),
              ErrorNumber::Overflow);
}

TEST_P(Values, AreInTheClinicServersOrderOnEveryEngine)
{
    const char *const stored[]{"'나', 3", "NULL, 2", "'가', NULL", "'b', 10", "'A', 9",   "'a', 1",   "'B', 2",
                               "'_x', 1", "'Éa', 1", "'éb', 0",    "'a', 1",  "'a b', 1", "'가나', 1"};
    for (const char *row : stored)
        clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name, PM_UnitPrice) VALUES (%1)")
                       .arg(QString::fromUtf8(row)));
    for (CursorType cursor : {CursorType::Keyset, CursorType::Static}) {
        EXPECT_EQ(order("SELECT * FROM tPSProductMaster ORDER BY PM_Name", "PM_PK", cursor),
                  "2 8 5 6 11 12 4 7 9 10 3 13 1");
        EXPECT_EQ(order("SELECT * FROM tPSProductMaster ORDER BY PM_Name DESC", "PM_PK", cursor),
                  "1 13 3 10 9 4 7 12 5 6 11 8 2");
        EXPECT_EQ(order("SELECT PM_Name FROM tPSProductMaster ORDER BY PM_UnitPrice, PM_Name DESC", "PM_Name", cursor),
                  "가 éb 가나 Éa a b a a _x B NULL 나 A b");
        EXPECT_EQ(order("SELECT PM_Name, PM_PK FROM tPSProductMaster WHERE PM_PK < 5", "PM_PK", cursor), "1 2 3 4");
        EXPECT_EQ(order("SELECT PM_Name AS N FROM tPSProductMaster WHERE PM_PK < 5 ORDER BY N", "N", cursor),
                  "NULL b 가 나");
        EXPECT_EQ(order("SELECT p.PM_Name FROM tPSProductMaster AS p WHERE p.PM_PK < 5 ORDER BY p.PM_PK DESC",
                        "PM_Name", cursor),
                  "b 가 NULL 나");
    }
    const auto products = opened(allProducts, CursorType::Static, LockType::ReadOnly);
    products->Sort(QStringLiteral("PM_UnitPrice DESC, [PM_Name] ASC"));
    EXPECT_EQ(column(*products, "PM_PK"), "4 5 1 2 7 8 6 11 12 9 13 10 3");
    products->Sort(QString());
    EXPECT_EQ(products->value("PM_PK"), QVariant(1));
    EXPECT_EQ(errorOf([&] { products->Sort(QStringLiteral("PM_None")); }), ErrorNumber::InvalidCall);
    EXPECT_EQ(errorOf([&] { opened(allProducts)->Sort(QStringLiteral("PM_Name")); }), ErrorNumber::InvalidCall);
}

TEST_P(Values, OfTextStandByTheirSignsHoweverLongTheyAre)
{
    const QStringList ascending =
        QStringLiteral(
            "1|a|a1|aㄱ|a中|a가|a힣|a\uE000|a😀|b|ㄱ|ㄱ가|中|中中中中|中中中中中|中가|鿿|"
            "가|가1|가ㄱ|가中|가가|가가가가가가가가|가가가가가가가가1|가가가가가가가가2|"
            "가각|각|곀|한약 십전대보탕 30포 1|한약 십전대보탕 30포 2|힣|힣a|\uD7B0|\uE000|＠|😀|😀가|😁")
            .split(u'|');
    for (auto name = ascending.rbegin(); name != ascending.rend(); ++name)
        clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('%1')").arg(*name));
    const QString byName = QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY PM_Name");
    for (CursorType cursor : {CursorType::Keyset, CursorType::Static}) {
        QStringList found;
        for (const auto rows = opened(byName, cursor, LockType::ReadOnly); !rows->Eof(); rows->MoveNext())
            found << rows->value("PM_Name").toString();
        EXPECT_EQ(found, ascending) << found.join(u'|').toStdString();
    }
}

TEST_P(Values, OfTextThatBeginAlikeStandByTheirEndsThenByTheNextColumn)
{
    QStringList ascending;
    for (const char16_t *beginning :
         {u"A ten letters more a", u"가", u"십전대보탕 한 제 서른 ", u"십전대보탕 한 제 서른 포 반 제 열다섯 포 "}) {
        for (int end = 10; end < 20; ++end)
            ascending << QStringLiteral("%1%2").arg(beginning).arg(end);
    }
    QStringList rows; // each name at each of many prices
    for (const QString &name : std::as_const(ascending)) {
        for (int price = 10; price > 0; --price)
            rows << QStringLiteral("('%1', %2)").arg(name).arg(price);
    }
    QStringList stored;
    for (qsizetype row = 0; row < rows.size(); ++row)
        stored << rows[row * 7 % rows.size()];
    clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name, PM_UnitPrice) VALUES ") + stored.join(u','));
    const auto found = [this](const char *order) {
        QStringList shown;
        const auto all = opened(QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY ") + QLatin1String(order),
                                CursorType::Static, LockType::ReadOnly);
        for (; !all->Eof(); all->MoveNext())
            shown << QStringLiteral("('%1', %2)")
                         .arg(all->value("PM_Name").toString())
                         .arg(all->value("PM_UnitPrice").value<Currency>().scaled() / 10'000);
        return shown;
    };
    EXPECT_EQ(found("PM_Name, PM_UnitPrice DESC"), rows);
    std::ranges::reverse(rows);
    EXPECT_EQ(found("PM_Name DESC, PM_UnitPrice"), rows);
}

TEST_P(Values, AreInOrderHoweverMuchChangedSinceTheListWasReadBefore)
{
    for (const QChar name : QStringLiteral("사나라마바다"))
        clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('%1')").arg(name));
    const char *const changes[]{"UPDATE tPSProductMaster SET PM_Name = '하' WHERE PM_PK = 2",
                                "UPDATE tPSProductMaster SET PM_Name = '가' WHERE PM_PK = 5",
                                "UPDATE tPSProductMaster SET PM_Name = '라' WHERE PM_PK IN (1, 4)",
                                "INSERT INTO tPSProductMaster (PM_Name) VALUES ('나')",
                                "DELETE FROM tPSProductMaster WHERE PM_PK IN (3, 6)",
                                "INSERT INTO tPSProductMaster (PM_Name) VALUES ('A')",
                                "UPDATE tPSProductMaster SET PM_EtcMemo = '' WHERE PM_PK = 2",
                                "UPDATE tPSProductMaster SET PM_EtcMemo = 'x' WHERE PM_PK = 2",
                                "UPDATE tPSProductMaster SET PM_UnitPrice = 1 WHERE PM_PK = 8"};
    const char *const orders[]{"6 3 4 5 1 2", "5 6 3 4 1 2", "5 6 1 3 4 2", "5 7 6 1 3 4 2", "5 7 1 4 2",
                               "8 5 7 1 4 2", "8 5 7 1 4 2", "8 5 7 1 4 2", "8 5 7 1 4 2"};
    const QString byName = QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY PM_Name");
    const auto keyset = opened(byName);
    const auto whole = opened(byName, CursorType::Static, LockType::ReadOnly);
    for (std::size_t change = 0; change < std::size(changes); ++change) {
        clinic.run(QString::fromUtf8(changes[change]));
        for (Recordset *rows : {keyset.get(), whole.get()}) {
            rows->Requery();
            EXPECT_EQ(column(*rows, "PM_PK"), orders[change]) << changes[change];
        }
        const auto next = openedNext(byName); // which may be as the one before it
        for (const char *field : {"PM_PK", "PM_EtcMemo", "PM_UnitPrice"}) {
            for (Recordset *rows : {next.get(), whole.get()}) {
                rows->MoveFirst();
                EXPECT_EQ(column(*rows, field), column(*opened(byName), field)) << changes[change];
            }
        }
    }
}

TEST_P(Values, FirstRowWithoutAnOrderIsTheLowestKey)
{
    for (int order = 0; order < 3; ++order)
        clinic.run(QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (7, '2026-11-24')"));
    // An update moves a row to the end of some engines' tables.
    clinic.run(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Tel = '1' WHERE OrdM_PK = 1"));
    const QString text = QStringLiteral("FROM tPSORderMaster WHERE Cust_PK = 7 AND OrdM_Date = '2026-11-24'");
    EXPECT_EQ(one(QStringLiteral("SELECT OrdM_PK ") + text, QStringLiteral("OrdM_PK")), QVariant(1));
    EXPECT_EQ(one(QStringLiteral("SELECT OrdM_Tel ") + text, QStringLiteral("OrdM_Tel")), QVariant("1"));
}

TEST_P(Values, OfGroupedAndJoinedListsAreOrderedToo)
{
    clinic.run(QStringLiteral("INSERT INTO Customer (name) VALUES ('나')"));
    clinic.run(QStringLiteral("INSERT INTO Customer (name) VALUES ('가')"));
    for (const char *row :
         {"1, '2026-01-02', 5", "2, '2026-01-02', 7", "1, '2026-01-01', 1", "1, '2026-01-02', 5", "1, NULL, 3"}) {
        clinic.run(QStringLiteral(
                       "INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_Date, tpstrans_Money) VALUES (%1)")
                       .arg(QString::fromUtf8(row)));
    }
    const char *grouped =
        "SELECT Customer.name, SUM(tPSTransaction.tpstrans_Money) As tpstrans_Money FROM tPSTransaction "
        "INNER JOIN Customer ON tPSTransaction.tpstrans_Customer_PK=Customer.Customer_PK "
        "GROUP BY Customer.Customer_PK, tPSTransaction.tpstrans_Date, Customer.name "
        "ORDER BY tPSTransaction.tpstrans_Date, Customer.name";
    EXPECT_EQ(order(grouped, "tpstrans_Money", CursorType::Keyset), "3 1 7 10");
    const auto rows = opened(QString::fromUtf8(grouped));
    EXPECT_EQ(rows->fieldNames(), (QStringList{"name", "tpstrans_Money"})) << "columns added for the order stay hidden";
    EXPECT_EQ(order("SELECT DISTINCT tpstrans_Money FROM tPSTransaction ORDER BY tpstrans_Money DESC", "tpstrans_Money",
                    CursorType::Static),
              "7 5 3 1");
    EXPECT_EQ(order("SELECT tpstrans_Money FROM tPSTransaction ORDER BY 1 DESC", "tpstrans_Money", CursorType::Static),
              "7 5 5 3 1");
    EXPECT_EQ(order("SELECT tpstrans_Money FROM tPSTransaction ORDER BY tpstrans_Money DESC LIMIT 2", "tpstrans_Money",
                    CursorType::Static),
              "7 5");
    EXPECT_EQ(order("SELECT name FROM Customer UNION ALL SELECT name FROM Customer ORDER BY name", "name",
                    CursorType::Static),
              "가 가 나 나");
}
