#include "tests/ado/Desks.h"

#include <QElapsedTimer>
#include <QThread>

/// One desk stands still in the middle of a transaction.
class FrozenDesk : public Desks
{
protected:
    void SetUp() override
    {
        addProducts({"one"});
        frozen_->BeginTrans();
        raisePrice(frozen_);
    }
    static void raisePrice(const ado::ConnectionPtr &where)
    {
        where->Execute(QStringLiteral("UPDATE tPSProductMaster SET PM_UnitPrice = PM_UnitPrice + 1"));
    }

    const ado::ConnectionPtr &frozen_ = clinic.otherDesk();
};
INSTANTIATE_TEST_SUITE_P(Engines, FrozenDesk, testing::ValuesIn(allEngines), engineName);

TEST_P(FrozenDesk, HoldsNoOtherForTenSeconds)
{
    QElapsedTimer waited;
    waited.start();
    EXPECT_EQ(errorOf([&] { raisePrice(desk); }), ErrorNumber::Database);
    EXPECT_LT(waited.elapsed(), 10'000);
    EXPECT_GT(waited.elapsed(), 2'000) << "a short transaction is waited for";
    frozen_->RollbackTrans();
    EXPECT_EQ(errorOf([&] { raisePrice(desk); }), std::nullopt);
}

TEST(FrozenDeskOfAServer, IsCutOff)
{
    TestDatabase clinic(ado::Engine::PostgreSQL);
    const ado::ConnectionPtr &desk = clinic.connection();
    EXPECT_EQ(desk->read(QStringLiteral("SHOW idle_in_transaction_session_timeout")).raw(0, 0), QVariant("30s"));
    // A clinic's own time stays.
    clinic.run(QStringLiteral("ALTER DATABASE %1 SET idle_in_transaction_session_timeout = '300ms'")
                   .arg(clinic.serverDatabase()));
    const ado::ConnectionPtr frozen = ado::Connection::open(clinic.address());
    const QString write = QStringLiteral("INSERT INTO t_HospSetup (HS_KEY) VALUES ('a')");
    frozen->BeginTrans();
    frozen->Execute(write);
    QThread::msleep(600);
    EXPECT_EQ(errorOf([&] { frozen->Execute(write); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(errorOf([&] { frozen->CommitTrans(); }), ErrorNumber::ConnectionLost);
    EXPECT_EQ(clinic.value("SELECT COUNT(*) FROM t_HospSetup"), QStringLiteral("0"));
    EXPECT_EQ(errorOf([&] { frozen->Execute(write); }), std::nullopt);
}
