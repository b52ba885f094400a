#include "host/sample/Catalogue.h"
#include "host/sample/Clinic.h"
#include "host/sample/Trade.h"
#include "host/schema/Schema.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/host/Content.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QSqlQuery>
#include <QTemporaryDir>

using sample::Size;

namespace {

class SmallClinic : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        clinic_ = new TestDatabase(ado::Engine::SQLite, false);
        sample::fill(*clinic_->connection(), Size::Small);
    }
    static void TearDownTestSuite() { delete std::exchange(clinic_, nullptr); }

    static int number(const char *statement) { return clinic_->value(QString::fromUtf8(statement)).toInt(); }
    static QStringList rows(const char *statement) { return clinic_->rows(QString::fromUtf8(statement)); }

    static inline TestDatabase *clinic_ = nullptr;
};

} // namespace

TEST_F(SmallClinic, HoldsTheSameRowsOnEveryEngine)
{
    const QStringList here = contentOf(*clinic_);
    EXPECT_GT(here.size(), 1'500);
    for (ado::Engine engine : {ado::Engine::PostgreSQL, ado::Engine::Odbc}) {
        TestDatabase elsewhere(engine, false);
        sample::fill(*elsewhere.connection(), Size::Small);
        const QStringList there = contentOf(elsewhere);
        ASSERT_EQ(there.size(), here.size());
        for (qsizetype line = 0; line < here.size(); ++line)
            ASSERT_EQ(there[line].toStdString(), here[line].toStdString());
    }
}

TEST_F(SmallClinic, KeepsTheTotalsThatItsLinesGive)
{
    EXPECT_EQ(rows("SELECT OrdM_PK FROM (SELECT o.*, "
                   "(SELECT COALESCE(SUM((d.OrdD_UnitPrice - d.OrdD_HalinUnit) * d.OrdD_Count), 0) FROM tPSOrderDetail d "
                   " JOIN tPSProductMaster p ON p.PM_PK = d.PM_PK WHERE d.OrdM_PK = o.OrdM_PK AND p.PM_IsTaxed = 1) AS taxed, "
                   "(SELECT COALESCE(SUM((d.OrdD_UnitPrice - d.OrdD_HalinUnit) * d.OrdD_Count), 0) FROM tPSOrderDetail d "
                   " JOIN tPSProductMaster p ON p.PM_PK = d.PM_PK WHERE d.OrdM_PK = o.OrdM_PK AND p.PM_IsTaxed = 0) AS taxfree, "
                   "(SELECT SUM(OrdD_HalinUnit * OrdD_Count) FROM tPSOrderDetail d WHERE d.OrdM_PK = o.OrdM_PK) AS discount "
                   "FROM tPSOrderMaster o) AS sums WHERE OrdM_TaxTotal <> taxed OR OrdM_TaxFreeTotal <> taxfree "
                   "OR OrdM_HalinTotal <> discount OR OrdM_Total <> taxed + taxfree OR discount IS NULL"),
              QStringList());
}

TEST_F(SmallClinic, OwesWhatTheLedgerLeavesOpen)
{
    EXPECT_EQ(rows("SELECT OrdM_PK, OrdM_Misugum FROM tPSOrderMaster o WHERE OrdM_Misugum <> OrdM_Total + "
                   "(SELECT COALESCE(SUM(CASE tpstrans_Operator WHEN 4 THEN tpstrans_Money ELSE -tpstrans_Money END), 0) "
                   " FROM tPSTransaction WHERE tpstrans_OrderM_PK = o.OrdM_PK AND tpstrans_Customer_PK = o.Cust_PK)"),
              QStringList());
    EXPECT_EQ(number("SELECT COUNT(*) FROM tPSTransaction WHERE tpstrans_Money <= 0"), 0);
}

TEST_F(SmallClinic, TakesBackOnlyWhatItSoldAndNotesBothSides)
{
    const QStringList returned =
        rows("SELECT o.Cust_PK, o.OrdM_Date, d.PM_PK, d.OrdD_Count, d.OrdD_UnitPrice FROM tPSOrderDetail d "
             "JOIN tPSOrderMaster o ON o.OrdM_PK = d.OrdM_PK WHERE d.OrdD_RfndMemo LIKE '▷판매날짜(%' AND d.OrdD_Count < 0 "
             "AND d.OrdD_OrderType IS NULL ORDER BY o.Cust_PK, o.OrdM_Date");
    const QStringList noted =
        rows("SELECT o.Cust_PK, SUBSTR(d.OrdD_RfndMemo, 2, 10), d.PM_PK, SUBSTR(d.OrdD_RfndMemo, 15, 2), "
             "d.OrdD_UnitPrice - d.OrdD_HalinUnit FROM tPSOrderDetail d JOIN tPSOrderMaster o ON o.OrdM_PK = d.OrdM_PK "
             "WHERE d.OrdD_RfndMemo LIKE '▶%' ORDER BY o.Cust_PK, 2");
    EXPECT_GE(returned.size(), 5);
    EXPECT_EQ(returned.join(u'\n').toStdString(), noted.join(u'\n').toStdString());
    EXPECT_EQ(number("SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdD_RfndMemo NOT LIKE '▶%' AND OrdD_RfndMemo NOT LIKE '▷%'"), 0);
}

TEST_F(SmallClinic, ShowsEveryKindOfTrade)
{
    const struct
    {
        const char *what;
        const char *statement;
        int atLeast;
        int atMost;
    } counts[]{
        {"goods", "SELECT COUNT(*) FROM tPSProductMaster", 55, 70},
        {"tax-free goods", "SELECT COUNT(*) FROM tPSProductMaster WHERE PM_IsTaxed = 0", 5, 30},
        {"hidden goods", "SELECT COUNT(*) FROM tPSProductMaster WHERE PM_IsHide = 1", 1, 5},
        {"goods whose hiding is not told", "SELECT COUNT(*) FROM tPSProductMaster WHERE PM_IsHide IS NULL", 5, 40},
        {"goods no longer handled", "SELECT COUNT(*) FROM tPSProductMaster WHERE PM_IsValid = 0", 2, 5},
        {"patients", "SELECT COUNT(*) FROM Customer", 30, 30},
        {"patients who never bought", "SELECT COUNT(*) FROM Customer WHERE Customer_PK NOT IN (SELECT Cust_PK FROM tPSOrderMaster)",
         2, 10},
        {"orders of a day and patient beyond one",
         "SELECT COUNT(*) FROM (SELECT 1 FROM tPSOrderMaster GROUP BY Cust_PK, OrdM_Date HAVING COUNT(*) > 1)", 0, 0},
        {"months of trade", "SELECT COUNT(DISTINCT SUBSTR(OrdM_Date, 1, 7)) FROM tPSOrderMaster", 12, 12},
        {"courier orders", "SELECT COUNT(*) FROM tPSOrderMaster WHERE OrdM_Gubun = 2", 10, 100},
        {"orders that owe", "SELECT COUNT(*) FROM tPSOrderMaster WHERE OrdM_Misugum > 0", 5, 40},
        {"discounted lines", "SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdD_HalinUnit > 0", 20, 300},
        {"service lines", "SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdD_OrderType = 1 AND OrdD_UnitPrice = 0", 3, 60},
        {"loss lines", "SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdD_OrderType = 2 AND OrdD_UnitPrice = 0", 1, 30},
        {"operations", "SELECT COUNT(DISTINCT tpstrans_Operator) FROM tPSTransaction", 4, 4},
        {"methods of payment", "SELECT COUNT(DISTINCT tpstrans_Method) FROM tPSTransaction WHERE tpstrans_Operator = 3", 5, 5},
        {"payments without a method", "SELECT COUNT(*) FROM tPSTransaction WHERE tpstrans_Method IS NULL", 1, 40},
        {"shop properties", "SELECT COUNT(*) FROM tPSProperties", 10, 10},
        {"orders whose key is also a receipt's",
         "SELECT COUNT(*) FROM Receipt WHERE Receipt_PK IN (SELECT OrdM_PK FROM tPSOrderMaster)", 0, 0},
        {"goods of which more was sold than bought",
         "SELECT COUNT(*) FROM tPSProductMaster p WHERE (SELECT SUM(IN_Count) FROM tPSIncoming i WHERE i.PM_PK = p.PM_PK) < "
         "(SELECT COALESCE(SUM(OrdD_Count), 0) FROM tPSOrderDetail d WHERE d.PM_PK = p.PM_PK)",
         0, 0},
        {"purchases that do not add up",
         "SELECT COUNT(*) FROM tPSIncoming WHERE IN_Total <> IN_Count * IN_UnitPrice - IN_HalinTotal OR IN_UnitPrice <= 0", 0, 0},
    };
    for (const auto &count : counts) {
        EXPECT_GE(number(count.statement), count.atLeast) << count.what;
        EXPECT_LE(number(count.statement), count.atMost) << count.what;
    }
}

TEST(SampleGoods, OfTheLargeClinicHaveNamesOfTheirOwn)
{
    QSet<QString> names;
    for (const sample::Product &product : sample::products(20'000)) {
        names.insert(product.name);
        ASSERT_GT(product.price, 0);
    }
    EXPECT_EQ(names.size(), 20'000);
}

TEST(SampleTrade, MakesExactlyTheOrdersAskedForOnOpenDaysInOrder)
{
    const std::vector<sample::Product> goods = sample::products(500);
    sample::Trade trade(goods, 2'000, QDate(2024, 7, 1), QDate(2025, 6, 30), 40'000);
    int orders = 0;
    int longest = 0;
    QDate previous;
    QSet<int> today;
    while (const std::optional<sample::Order> order = trade.next()) {
        ++orders;
        longest = std::max(longest, int(order->lines.size()));
        if (order->date != previous)
            today.clear();
        ASSERT_TRUE(!previous.isValid() || order->date >= previous);
        ASSERT_NE(order->date.dayOfWeek(), int(Qt::Sunday));
        ASSERT_FALSE(today.contains(order->patient));
        ASSERT_LE(order->date, QDate(2025, 6, 30));
        today.insert(order->patient);
        previous = order->date;
    }
    EXPECT_EQ(orders, 40'000);
    EXPECT_EQ(longest, 200); // the group order that long grids are tried with
}

TEST(SampleClinic, IsLeftOutWhollyWhenStopped)
{
    const sample::Progress stop = [](qint64, qint64) { return false; };
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("clinic.db"));
    EXPECT_THROW(sample::makeClinic(QStringLiteral("sqlite:") + file, Size::Large, stop), runtime::RuntimeError);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());

    TestDatabase server(ado::Engine::PostgreSQL, false);
    EXPECT_THROW(sample::makeClinic(server.address(), Size::Large, stop), runtime::RuntimeError);
    EXPECT_FALSE(schema::hasSchema(*server.connection()));
    EXPECT_THROW(server.rows(QStringLiteral("SELECT * FROM tPSProductMaster")), std::runtime_error);
}

TEST(SampleClinic, NeverReplacesWhatIsThere)
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("notes.txt"));
    QFile notes(file);
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly) && notes.write("kept") == 4);
    notes.close();
    EXPECT_THROW(sample::makeClinic(QStringLiteral("sqlite:") + file, Size::Empty), runtime::RuntimeError);
    EXPECT_EQ(QFileInfo(file).size(), 4);

    TestDatabase server(ado::Engine::PostgreSQL);
    server.run(QStringLiteral("INSERT INTO Customer (name) VALUES ('환자')"));
    EXPECT_THROW(sample::makeClinic(server.address(), Size::Small), runtime::RuntimeError);
    EXPECT_EQ(server.value(QStringLiteral("SELECT COUNT(*) FROM Customer")), QStringLiteral("1"));
}

TEST(SampleClinic, EmptyHasTablesAndNoRow)
{
    QTemporaryDir folder;
    const QString address = QStringLiteral("sqlite:") + folder.filePath(QStringLiteral("clinic.db"));
    sample::makeClinic(address, Size::Empty);
    const ado::ConnectionPtr connection = ado::Connection::open(address);
    EXPECT_TRUE(schema::hasSchema(*connection));
    for (const schema::TablePlan &table : schema::tablePlans()) {
        QSqlQuery query(QStringLiteral("SELECT COUNT(*) FROM ") + QString::fromLatin1(table.name), connection->database());
        ASSERT_TRUE(query.next());
        EXPECT_EQ(query.value(0).toInt(), 0) << table.name;
    }
}
