#include "platform/ado/Transaction.h"
#include "platform/ado/Waiting.h"
#include "platform/runtime/Attempt.h"
#include "tests/ado/Desks.h"
#include "tests/support/LogLines.h"
#include "tests/support/MariaDbServer.h"
#include "tests/support/PostgresServer.h"
#include "tests/support/Wire.h"

#include <QElapsedTimer>
#include <QThread>

#include <gmock/gmock.h>

#include <functional>

class LostServer : public Desks
{
protected:
    /// What the server of the engine is told.
    template <typename OfPostgres, typename OfMariaDb>
    static void tell(OfPostgres postgres, OfMariaDb mariaDb)
    {
        if (GetParam() == ado::Engine::MariaDB)
            mariaDb(MariaDbServer::instance());
        else
            postgres(PostgresServer::instance());
    }
    void cut()
    {
        const auto cutIt = [&](auto &server) { server.cutSessions(clinic.serverDatabase()); };
        tell(cutIt, cutIt);
    }

    void add(const char *name)
    {
        desk->Execute(
            QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('%1')").arg(QString::fromUtf8(name)));
    }

    QString seen()
    {
        const auto products = opened(allProducts, CursorType::Static, LockType::ReadOnly);
        return column(*products, "PM_Name");
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, LostServer, testing::ValuesIn(allEngines.begin() + 1, allEngines.end()), engineName);

TEST_P(LostServer, IsFoundAgainByTheNextStatement)
{
    add("a");
    const auto products = opened(allProducts);
    cut();
    EXPECT_EQ(seen(), "a");
    cut();
    add("b");
    EXPECT_EQ(seen(), "a b");
    cut();
    products->Requery();
    EXPECT_EQ(products->rowCount(), 2);
    cut();
    desk->BeginTrans();
    add("c");
    desk->CommitTrans();
    EXPECT_EQ(seen(), "a b c");
    EXPECT_TRUE(runtime::isTrue(
        opened(QStringLiteral("SELECT CASE WHEN 'b' LIKE '[abc]' THEN 1 ELSE 0 END AS found"))->value("found")))
        << "the new session is set up like the old one";
}

TEST_P(LostServer, TakesItsTransactionAlongAndSaysSo)
{
    desk->BeginTrans();
    add("a");
    cut();
    EXPECT_EQ(errorOf([&] { add("b"); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(errorOf([&] { add("c"); }), ErrorNumber::ConnectionLost) << "half a transaction must not be saved alone";
    EXPECT_EQ(errorOf([&] { seen(); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(errorOf([&] { desk->CommitTrans(); }), ErrorNumber::ConnectionLost);
    EXPECT_FALSE(desk->inTransaction());
    add("d");
    EXPECT_EQ(seen(), "d");

    desk->BeginTrans();
    add("e");
    cut();
    EXPECT_TRUE(errorOf([&] { desk->CommitTrans(); }));
    add("f");
    desk->BeginTrans();
    add("g");
    cut();
    desk->RollbackTrans();
    EXPECT_EQ(seen(), "d f");
}

TEST_P(LostServer, TakesTheHostsTransactionAlongAndSaysSoToBoth)
{
    const auto sell = [&] {
        const ado::AbandonedTransactions edge;
        ado::Transaction sale(*desk);
        add("sold");
        sale.commit();
    };
    desk->BeginTrans();
    add("hosts");
    sell();
    cut();
    EXPECT_EQ(errorOf(sell), ErrorNumber::ConnectionLost);
    EXPECT_EQ(errorOf(sell), ErrorNumber::ConnectionLost) << "a sale must not be saved without what it lay in";
    EXPECT_EQ(errorOf([&] { desk->CommitTrans(); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(seen(), "");

    desk->Execute(QStringLiteral("BEGIN"));
    add("hosts");
    cut();
    EXPECT_EQ(errorOf(sell), ErrorNumber::ConnectionLost);
    EXPECT_TRUE(errorOf([&] { desk->Execute(QStringLiteral("COMMIT")); })) << "there is nothing to save";
    EXPECT_EQ(seen(), "");
    sell();
    EXPECT_EQ(seen(), "sold");
}

TEST_P(LostServer, ThatIsStoppedGivesAnErrorUntilItIsBack)
{
    add("a");
    const auto products = opened(allProducts);
    const auto stop = [](auto &server) { server.stop(); };
    const auto start = [](auto &server) { server.start(); };
    tell(stop, stop);
    EXPECT_EQ(errorOf([&] { add("b"); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(errorOf([&] { seen(); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(errorOf([&] { products->Requery(); }), ErrorNumber::ConnectionLost);
    LogLines log;
    runtime::Attempt painting;
    for (int cell = 0; cell < 100; ++cell)
        painting([&] { seen(); });
    EXPECT_THAT(log.take().size(), testing::AllOf(testing::Ge(1), testing::Le(2)))
        << "one for each attempt to reach it";
    EXPECT_EQ(products->valueAt(0, products->columnIndex("PM_Name")), "a") << "what was read stays on the screen";
    tell(start, start);
    QThread::msleep(1100); // a desk does not ask a dead server more than once a second
    add("c");
    EXPECT_EQ(seen(), "a c");
}

namespace {

/// Does something at the first look and goes on so long.
class Meanwhile : public ado::Patience
{
public:
    Meanwhile(std::function<void()> deed, int looks)
        : deed_(std::move(deed))
        , looks_(looks)
    {
        ado::setPatience(this);
    }
    bool mayBegin() override { return true; }
    bool begin() override
    {
        deed_();
        return true;
    }
    bool goOn() override { return looks_-- > 0; }
    void end() override { ++ended; }

    int ended = 0;

private:
    std::function<void()> deed_;
    int looks_;
};

} // namespace

class AwaitedServer : public testing::Test
{
protected:
    ado::ConnectionPtr opened(const QString &address) { return ado::Connection::open(address); }
    const QString insert = QStringLiteral("INSERT INTO t_HospSetup (HS_KEY) VALUES ('a')");
    QString stored() { return clinic.value("SELECT COUNT(*) FROM t_HospSetup"); }

    TestDatabase clinic{ado::Engine::PostgreSQL};
    Wire wire;
    ado::ConnectionPtr desk = opened(wire.address(clinic.serverDatabase()));
};

TEST_F(AwaitedServer, LetsNoOtherStatementInAndMayBeLetGo)
{
    wire.fallSilent();
    std::optional<ErrorNumber> second;
    const std::weak_ptr<ado::Connection> alive = desk;
    Meanwhile meanwhile(
        [&] {
            EXPECT_TRUE(ado::serverIsAwaited());
            second = errorOf([&] { desk->read(QStringLiteral("SELECT 1")); });
            desk.reset();
            wire.mend();
        },
        1000);
    EXPECT_EQ(desk->Execute(insert), 1);
    EXPECT_EQ(second, ErrorNumber::InvalidCall);
    EXPECT_TRUE(alive.expired());
    EXPECT_EQ(stored(), "1");
    EXPECT_EQ(meanwhile.ended, 1);
}

TEST_F(AwaitedServer, IsGivenUpWithItsTransactionAndFoundAgain)
{
    desk->BeginTrans();
    desk->Execute(insert);
    wire.fallSilent();
    {
        Meanwhile meanwhile([] {}, 3);
        EXPECT_EQ(errorOf([&] { desk->Execute(insert); }), ErrorNumber::ConnectionLost);
        EXPECT_EQ(errorOf([&] { desk->CommitTrans(); }), ErrorNumber::ConnectionLost);
    }
    wire.mend();
    EXPECT_EQ(desk->Execute(insert), 1);
    EXPECT_EQ(stored(), "1");
}

TEST_F(AwaitedServer, ThatIsBackWithinSecondsIsNoError)
{
    wire.takeAway();
    {
        Meanwhile nobody([] {}, 3);
        EXPECT_EQ(errorOf([&] { desk->Execute(insert); }), ErrorNumber::ConnectionLost);
    }
    Meanwhile meanwhile([&] { wire.mend(); }, 1000);
    QThread::msleep(1100); // a desk does not ask a dead server more than once a second
    EXPECT_EQ(desk->Execute(insert), 1);
    EXPECT_EQ(stored(), "1");
}

TEST_F(AwaitedServer, ThatIsSilentIsDialledAfterTheOthers)
{
    Wire second;
    const auto folderOf = [](const Wire &way) { return way.address({}).section(QStringLiteral("host="), 1); };
    desk = opened(wire.address(clinic.serverDatabase()) + u',' + folderOf(second)
                  + QStringLiteral("&target_session_attrs=read-write"));
    wire.takeAway();
    QThread::msleep(50);
    wire.fallSilent();
    QElapsedTimer dialled;
    dialled.start();
    EXPECT_EQ(desk->Execute(insert), 1);
    EXPECT_LT(dialled.elapsed(), 2000);
}
