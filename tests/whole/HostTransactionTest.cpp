#include "tests/support/QtSession.h"
#include "tests/whole/SaleDesk.h"

#include <QDate>

#include <gmock/gmock.h>

namespace {

class HostTransaction : public testing::TestWithParam<ado::Engine>
{
protected:
    /// The road of one sale: an order of today with a line, and the money for it.
    void sell()
    {
        desk_.open();
        desk_.boxes.answers = {controls::Answer::Yes};
        desk_.addLine(1, "2");
        desk_.in("chkCmdAutomateReceipt", [this](QWidget *dialog) { desk_.press(dialog, "cmdConfirm"); });
    }
    std::string stored()
    {
        return desk_.joined("SELECT OrdM_Total, OrdM_Misugum FROM tPSOrderMaster") + " / "
               + desk_.joined("SELECT OrdD_UnitPrice, OrdD_Count FROM tPSOrderDetail") + " / "
               + desk_.joined("SELECT tpstrans_Operator, tpstrans_Money FROM tPSTransaction");
    }
    static constexpr const char *Sale = "100000|0 / 50000|2 / 3|100000";

    SaleDesk desk_{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Engines, HostTransaction, testing::ValuesIn(allEngines), engineName);

} // namespace

TEST_P(HostTransaction, HoldsTheWholeSaleUntilTheHostEndsIt)
{
    const ado::ConnectionPtr &connection = desk_.database.connection();
    desk_.open();
    connection->BeginTrans();
    connection->Execute(QStringLiteral("UPDATE Customer SET sn = '7' WHERE Customer_PK = 7"));
    sell();
    EXPECT_EQ(stored(), " /  / ") << "nothing is saved before the host does";
    connection->RollbackTrans();
    EXPECT_EQ(desk_.rowsOf("tdbCustSaleMaster"), 0) << "what the host took back is not shown";

    connection->BeginTrans();
    sell();
    connection->CommitTrans();
    EXPECT_EQ(stored(), Sale);
    EXPECT_EQ(desk_.said(), "");
    EXPECT_EQ(desk_.joined("SELECT sn FROM Customer WHERE Customer_PK = 7"), "000007");

    desk_.database.run("UPDATE t_DeskSchema SET DS_Generation = DS_Generation + 1");
    desk_.addLine(0, "1");
    EXPECT_EQ(stored(), Sale) << "a backup was restored since the window came up, within the host's transaction";
}

TEST_P(HostTransaction, OfAnAdoptedSessionHoldsItJustSo)
{
    if (GetParam() == ado::Engine::MariaDB)
        GTEST_SKIP() << "none is adopted";
    const QtSession session(desk_.database);
    QSqlDatabase database = session.database();
    desk_.connection = ado::Connection::adopt(database);
    sell();
    EXPECT_EQ(stored(), Sale) << "without one it is saved at once";
    desk_.database.run("DELETE FROM tPSTransaction");
    desk_.database.run("DELETE FROM tPSOrderDetail");
    desk_.database.run("DELETE FROM tPSOrderMaster");

    ASSERT_TRUE(database.transaction());
    sell();
    EXPECT_EQ(stored(), " /  / ");
    ASSERT_TRUE(database.rollback());
    EXPECT_EQ(desk_.said(), "");
    desk_.boxes.answers = {controls::Answer::No}; // on the order that the window still shows
    desk_.addLine(0, "1");
    EXPECT_THAT(desk_.said(), testing::HasSubstr("판매추가를 실패 했습니다."));
    EXPECT_EQ(desk_.rowsOf("tdbCustSaleMaster"), 0);

    ASSERT_TRUE(database.transaction());
    sell();
    ASSERT_TRUE(database.commit());
    EXPECT_EQ(stored(), Sale);
    desk_.window()->close();
    database.close();
    EXPECT_EQ(database.lastError().text(), "");
}
