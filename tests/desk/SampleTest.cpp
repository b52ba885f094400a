#include "desk/sample/Catalogue.h"
#include "desk/sample/Clinic.h"
#include "desk/sample/Trade.h"
#include "desk/schema/Schema.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/desk/Content.h"

#include <QDir>
#include <QSet>
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
    for (ado::Engine engine : allEngines) {
        TestDatabase elsewhere(engine, false);
        sample::fill(*elsewhere.connection(), Size::Small);
        const QStringList there = contentOf(elsewhere);
        ASSERT_EQ(there.size(), here.size());
        for (qsizetype line = 0; line < here.size(); ++line)
            ASSERT_EQ(there[line].toStdString(), here[line].toStdString());
    }
}

TEST_F(SmallClinic, OwesWhatTheLedgerLeavesOpen)
{
    EXPECT_EQ(
        rows("SELECT OrdM_PK, OrdM_Misugum FROM tPSOrderMaster o WHERE OrdM_Misugum <> OrdM_Total + "
             "(SELECT COALESCE(SUM(CASE tpstrans_Operator WHEN 4 THEN tpstrans_Money ELSE -tpstrans_Money END), 0) "
             " FROM tPSTransaction WHERE tpstrans_OrderM_PK = o.OrdM_PK AND tpstrans_Customer_PK = o.Cust_PK)"),
        QStringList());
    EXPECT_EQ(number("SELECT COUNT(*) FROM tPSTransaction WHERE tpstrans_Money <= 0"), 0);
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
    const QString file = folder.filePath("clinic.db");
    EXPECT_THROW(sample::makeClinic(QStringLiteral("sqlite:") + file, Size::Large, stop), runtime::RuntimeError);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList());

    for (auto engine = allEngines.begin() + 1; engine != allEngines.end(); ++engine) {
        TestDatabase server(*engine, false);
        EXPECT_THROW(sample::makeClinic(server.address(), Size::Large, stop), runtime::RuntimeError);
        EXPECT_FALSE(schema::hasSchema(*server.connection()));
        EXPECT_THROW(server.rows("SELECT * FROM tPSProductMaster"), std::runtime_error);
    }
}
