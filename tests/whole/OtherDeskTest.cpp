#include "tests/whole/SaleDesk.h"

#include <gmock/gmock.h>

#include <QPlainTextEdit>

using controls::Answer;

namespace {

/// Customer 7 with order 1 of the 1st and order 2 of the 2nd, each with one line and one payment; customer 8 with order 3.
/// The list shows order 2 above order 1.
class OtherDesk : public testing::Test
{
protected:
    OtherDesk()
    {
        runFile(desk_.database, "whole/orders.sql");
        desk_.open();
    }

    void deleteOrder(int order)
    {
        for (const char *statement : {"DELETE FROM tPSOrderDetail WHERE OrdM_PK = %1",
                                      "DELETE FROM tPSTransaction WHERE tpstrans_OrderM_PK = %1",
                                      "DELETE FROM tPSOrderMaster WHERE OrdM_PK = %1"})
            desk_.database.run(QString::fromLatin1(statement).arg(order));
    }
    std::string customerOnView() { return desk_.text("txtCustDetail_0").toStdString(); }

    SaleDesk desk_;
};

} // namespace

TEST_F(OtherDesk, AnOrderThatIsGoneLeavesNothingOfTheOneBeforeWithinReach)
{
    desk_.choose("tdbCustSaleMaster", 0);
    deleteOrder(1);
    const std::string before = desk_.all();
    desk_.choose("tdbCustSaleMaster", 1);

    EXPECT_EQ(
        desk_.said(),
        "거래 선택: 다른 데스크에서 먼저 삭제한 거래입니다. 목록을 새로 가져왔습니다.\n거래를 다시 선택하십시오.\n");
    EXPECT_EQ(desk_.rowsOf("tdbCustSaleMaster"), 1);
    EXPECT_FALSE(desk_.grid("tdbCustSaleMaster")->selectionModel()->hasSelection());
    for (const char *box : {"txtOrderMaster_9", "txtOrderMaster_5", "txtOrderMaster_7"})
        EXPECT_EQ(desk_.text(box), QString()) << box;
    EXPECT_EQ(desk_.text("txtTranTotalAmount").toStdString(), "\\0");
    EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails"), 0);
    EXPECT_EQ(desk_.rowsOf("tdbCustTranManage"), 0);

    desk_.boxes.answers.assign(20, Answer::Yes);
    for (const char *button :
         {"chkCmdDelOrderDetail", "chkCmdRefund", "chkcmdAddEditDelTran_2", "chkCmdAutomateReceipt",
          "chkCmdOrderMasterED_0", "chkCmdOrderMasterED_1", "chkCmdRunMisuMoneyManger"})
        desk_.click(button);
    EXPECT_EQ(desk_.all(), before) << "no button reaches a row that is not on view";

    desk_.choose("tdbCustSaleMaster", 0);
    EXPECT_EQ(desk_.text("txtOrderMaster_5").toStdString(), "둘째");
    EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails"), 1);
}

TEST_F(OtherDesk, AGoneLineOrLedgerRowIsToldOnceAndItsListReadAnew)
{
    desk_.database.run("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count) VALUES "
                       "(2, 2, 50000, 0, 1)");
    desk_.database.run("INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, "
                       "tpstrans_Operator, tpstrans_Money) "
                       "VALUES (7, 2, '2026-03-03', 3, 600)");
    const struct
    {
        const char *grid, *gone, *box;
    } cases[] = {
        {"tdbCustSaleDetails", "DELETE FROM tPSOrderDetail WHERE OrdD_PK = 2",
         "판매 상세 내역: 다른 데스크에서 먼저 삭제한 판매 내역입니다. 목록을 새로 가져왔습니다.\n"},
        {"tdbCustTranManage", "DELETE FROM tPSTransaction WHERE tpstrans_PK = 3",
         "수납 내역: 다른 데스크에서 먼저 삭제한 수납 내역입니다. 목록을 새로 가져왔습니다.\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.grid);
        desk_.choose("tdbCustSaleMaster", 0);
        ASSERT_EQ(desk_.rowsOf(c.grid), 2);
        desk_.database.run(c.gone);
        desk_.choose(c.grid, 1);
        EXPECT_EQ(desk_.said(), c.box);
        EXPECT_EQ(desk_.rowsOf(c.grid), 1);
        const std::string before = desk_.all();
        desk_.boxes.answers = {Answer::Yes};
        desk_.click(c.grid == cases[0].grid ? "chkCmdDelOrderDetail" : "chkcmdAddEditDelTran_2");
        EXPECT_EQ(desk_.all(), before) << "its neighbour was not chosen";
        desk_.said();
        desk_.boxes.answers.clear();
    }
}

TEST_F(OtherDesk, AConflictIsToldAndTheNextTryWorks)
{
    const std::string notDeleted = "고객 판매 디테일 삭제: 고객 판매 디테일을 삭제하지 못했습니다.\n";
    const std::string question = "판매 상세 내역: 판매 상세 내역을 삭제 하시겠습니까?\n";
    const struct
    {
        const char *what, *elsewhere, *button;
        std::string first;
        const char *check, *after;
    } cases[] = {
        {"a line that was changed", "UPDATE tPSOrderDetail SET OrdD_RfndMemo = '메모' WHERE OrdD_PK = 2",
         "chkCmdDelOrderDetail", question + notDeleted, "SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdM_PK = 2", "0"},
        {"a payment that was changed", "UPDATE tPSTransaction SET tpstrans_Money = 700 WHERE tpstrans_PK = 2",
         "chkcmdAddEditDelTran_2", "수납삭제: 수납내역을 삭제하지 못했습니다. \n",
         "SELECT COUNT(*) FROM tPSTransaction WHERE tpstrans_OrderM_PK = 2", "0"},
        {"an order that grew", "UPDATE tPSOrderMaster SET OrdM_Total = 5000 WHERE OrdM_PK = 2", "chkCmdOrderMasterED_1",
         "판매 마스터 삭제: 선택한 고객 판매 마스터을 삭제 하시겠습니까?\n(고객 판매 디테일도 모두 삭제됩니다.)\n"
         "판매 마스터 삭제: 고객 판매 마스터를 삭제하지 못했습니다.\n",
         "SELECT COUNT(*) FROM tPSOrderMaster WHERE OrdM_PK = 2", "0"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        desk_.choose("tdbCustSaleMaster", 0);
        ASSERT_EQ(desk_.text("txtOrderMaster_5").toStdString(), "둘째");
        desk_.database.run(c.elsewhere);
        desk_.boxes.answers.assign(1, Answer::Yes);
        const std::string before = desk_.all();
        desk_.click(c.button);
        EXPECT_EQ(desk_.said(), c.first);
        EXPECT_EQ(desk_.all(), before);
        EXPECT_EQ(desk_.text("txtOrderMaster_5").toStdString(), "둘째") << "the same order stands";
        desk_.boxes.answers.assign(1, Answer::Yes);
        desk_.click(c.button);
        desk_.said();
        EXPECT_EQ(desk_.joined(QString::fromLatin1(c.check)), c.after);
        desk_.boxes.answers.clear();
    }
}

TEST_F(OtherDesk, ANeighbourThatIsGoneTakesNoPartInADeletion)
{
    desk_.database.run("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count) VALUES "
                       "(2, 1, 1000, 0, 5)");
    const struct
    {
        const char *gone, *button, *question, *check, *after;
    } cases[] = {
        {"DELETE FROM tPSOrderDetail WHERE OrdD_PK = 2", "chkCmdDelOrderDetail",
         "판매 상세 내역: 판매 상세 내역을 삭제 하시겠습니까?\n",
         "SELECT OrdM_Total FROM tPSOrderMaster WHERE OrdM_PK = 2", "0"},
        {"DELETE FROM tPSOrderMaster WHERE OrdM_PK = 1", "chkCmdOrderMasterED_1",
         "판매 마스터 삭제: 선택한 고객 판매 마스터을 삭제 하시겠습니까?\n(고객 판매 디테일도 모두 삭제됩니다.)\n",
         "SELECT COUNT(*) FROM tPSOrderMaster WHERE Cust_PK = 7", "0"},
    };
    for (const auto &c : cases) {
        desk_.choose("tdbCustSaleMaster", 0);
        desk_.database.run(c.gone);
        desk_.boxes.answers = {Answer::Yes};
        desk_.click(c.button);
        EXPECT_EQ(desk_.said(), c.question) << "no other box in the middle of it";
        EXPECT_EQ(desk_.joined(QString::fromLatin1(c.check)), c.after);
        EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails"), 0);
    }
}

TEST_F(OtherDesk, AddingToAnOrderThatIsGoneFailsOnce)
{
    desk_.choose("tdbCustSaleMaster", 0);
    deleteOrder(2);
    desk_.boxes.answers = {Answer::No}; // on the chosen order
    desk_.addLine(0, "1");
    EXPECT_THAT(desk_.said(), testing::EndsWith("판매추가: 판매추가를 실패 했습니다. 다시 시도 하십시오.\n"));
    EXPECT_EQ(desk_.rowsOf("tdbCustSaleMaster"), 1);
    EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails"), 0);

    desk_.boxes.answers = {Answer::No};
    desk_.addLine(0, "1");
    EXPECT_THAT(desk_.said(),
                testing::EndsWith("거래 선택: 선택된 거래가 없습니다. 물품을 추가할 거래를 먼저 선택하십시오.\n"));
    desk_.boxes.answers = {Answer::Yes}; // on one of today
    desk_.addLine(0, "1");
    EXPECT_EQ(desk_.joined("SELECT Cust_PK, OrdM_Total FROM tPSOrderMaster WHERE OrdM_PK > 3"), "7|1000");
}

TEST_F(OtherDesk, ANoteOfAReturnThatMeetsAnotherDesksIsToldAndCanBeWrittenThen)
{
    desk_.choose("tdbCustSaleMaster", 0);
    const auto takeBack = [&](const std::function<void()> &meanwhile) {
        desk_.in("chkCmdRefund", [&](QWidget *dialog) {
            meanwhile();
            desk_.press(dialog, "chkCmdSave");
        });
    };
    takeBack([&] { desk_.database.run("UPDATE tPSOrderDetail SET OrdD_RfndMemo = '먼저' WHERE OrdD_PK = 2"); });
    EXPECT_EQ(desk_.said(), "반품: 오류가 있어 반품처리를 완료하지 못했습니다.\n");
    EXPECT_EQ(desk_.joined("SELECT COUNT(*) FROM tPSOrderDetail"), "3");
    takeBack([] {});
    EXPECT_EQ(desk_.said(), "");
    EXPECT_EQ(desk_.joined("SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdD_Count < 0"), "1");
    EXPECT_THAT(desk_.joined("SELECT OrdD_RfndMemo FROM tPSOrderDetail WHERE OrdD_PK = 2"),
                testing::StartsWith("먼저\n▶"));
}

// A host's telephone or timer calls the next customer while the clerk is still in a box or a dialog of this one.
TEST_F(OtherDesk, AnEntryWaitsUntilTheFlowHasEndedOnItsOwnCustomer)
{
    const auto nextComes = [this] {
        desk_.open(8);
        EXPECT_EQ(customerOnView(), "남궁보람") << "not before the flow has ended";
    };
    const auto inDialog = [&](const char *button, std::initializer_list<const char *> presses) {
        desk_.in(button, [&](QWidget *dialog) {
            nextComes();
            for (const char *press : presses)
                desk_.press(dialog, press);
        });
    };
    const auto atQuestion = [&](const char *button, Answer answer) {
        desk_.boxes.answers = {answer};
        desk_.boxes.whileItStands = nextComes;
        desk_.click(button);
    };
    const struct
    {
        const char *what;
        std::function<void()> act;
        const char *check;
        std::string after;
    } cases[] = {
        {"first payment, all of it outstanding",
         [&] {
             desk_.database.run("DELETE FROM tPSTransaction");
             inDialog("chkCmdAutomateReceipt", {"chkAllSetting_2", "cmdConfirm"});
         },
         "SELECT OrdM_PK, OrdM_Misugum FROM tPSOrderMaster ORDER BY OrdM_PK", "1|0\n2|2000\n3|0"},
        {"further payment", [&] { inDialog("chkCmdAutomateReceipt", {"cmdConfirm"}); },
         "SELECT tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Money FROM tPSTransaction WHERE tpstrans_PK = 3",
         "7|2|1500"},
        {"return", [&] { inDialog("chkCmdRefund", {"chkCmdSave"}); },
         "SELECT Cust_PK, OrdM_Total FROM tPSOrderMaster WHERE OrdM_PK > 3", "7|-2000"},
        {"line for today", [&] { atQuestion("cmdCSAppendDetail", Answer::Yes); },
         "SELECT Cust_PK, OrdM_Total, OrdM_Address FROM tPSOrderMaster WHERE OrdM_PK > 3",
         "7|1000|서울 중구 세종대로 110"},
        {"line for the chosen order", [&] { atQuestion("cmdCSAppendDetail", Answer::No); },
         "SELECT OrdM_PK, OrdM_Total FROM tPSOrderMaster ORDER BY OrdM_PK", "1|1000\n2|3000\n3|3000"},
        {"deleted order", [&] { atQuestion("chkCmdOrderMasterED_1", Answer::Yes); },
         "SELECT OrdM_PK FROM tPSOrderMaster ORDER BY OrdM_PK", "1\n3"},
        {"deleted line", [&] { atQuestion("chkCmdDelOrderDetail", Answer::Yes); },
         "SELECT OrdD_PK FROM tPSOrderDetail ORDER BY OrdD_PK", "1\n3"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        for (const char *table : {"tPSOrderMaster", "tPSOrderDetail", "tPSTransaction"})
            desk_.database.run(QStringLiteral("DELETE FROM ") + QLatin1String(table));
        runFile(desk_.database, "whole/orders.sql");
        desk_.open(7);
        desk_.choose("tdbCustSaleMaster", 0);
        desk_.choose("tdbSaleProductLists", 0);
        desk_.choose("tdbCustSaleDetails", 0);
        c.act();
        walk::settle();
        EXPECT_EQ(customerOnView(), "서문하늘");
        EXPECT_EQ(desk_.joined(QString::fromUtf8(c.check)), c.after);
        EXPECT_EQ(desk_.rowsOf("tdbCustSaleMaster"), 1);
        EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails"), 0);
        desk_.boxes.answers.clear();
    }
}

TEST_F(OtherDesk, AClosingWaitsUntilTheFlowHasEnded)
{
    desk_.choose("tdbCustSaleMaster", 0);
    const QPointer<QWidget> window = desk_.window();
    desk_.in("chkCmdRefund", [&](QWidget *dialog) {
        EXPECT_FALSE(window->close());
        walk::settle();
        ASSERT_TRUE(window && window->isVisible());
        desk_.press(dialog, "chkCmdSave");
    });
    walk::settle();
    EXPECT_FALSE(window);
    EXPECT_EQ(desk_.joined("SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdD_Count < 0"), "1");
}

TEST_F(OtherDesk, AnEditThatAnEntryDropsIsTold)
{
    desk_.choose("tdbCustSaleMaster", 0);
    desk_.click("chkCmdOrderMasterED_0");
    desk_.type("txtOrderMaster_5", "typed");
    desk_.open(8);
    walk::settle();
    EXPECT_EQ(desk_.said(),
              "수정 취소: 새로 요청한 화면을 여느라 수정을 끝냈습니다. 입력하던 내용은 저장하지 않았습니다.\n"
              "필요하면 다시 수정하십시오: 거래 (남궁보람)\n");
    EXPECT_EQ(desk_.joined("SELECT OrdM_ETCMemo FROM tPSOrderMaster ORDER BY OrdM_PK"), "첫째\n둘째\n셋째");
    EXPECT_TRUE(desk_.control<QLineEdit>("txtOrderMaster_5")->isReadOnly());
}

TEST_F(OtherDesk, AFailedLoadLeavesNothingOfTheCustomerBefore)
{
    const struct
    {
        const char *table, *box;
    } cases[] = {
        {"tPSOrderMaster", "데이터 가져오기: 고객 판매 마스터 정보를 가져오지 못했습니다.\n"},
        {"tPSOrderDetail", "데이터 가져오기: 판매 디테일 정보를 가져오지 못했습니다.\n"},
        {"tPSTransaction", "데이터 가져오기: 수납 정보를 가져오지 못했습니다.\n"},
    };
    desk_.database.run("UPDATE tPSOrderDetail SET OrdD_RfndMemo = '반품 메모'");
    desk_.database.run("UPDATE tPSTransaction SET tpstrans_Memo = '수납 메모'");
    for (const auto &c : cases) {
        SCOPED_TRACE(c.table);
        desk_.open(7);
        desk_.choose("tdbCustSaleMaster", 0);
        desk_.database.run(QStringLiteral("ALTER TABLE %1 RENAME TO away").arg(QLatin1String(c.table)));
        desk_.open(8);
        EXPECT_THAT(desk_.said(), testing::HasSubstr(c.box));
        EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails") + desk_.rowsOf("tdbCustTranManage"), 0);
        EXPECT_EQ(desk_.control<QPlainTextEdit>("txtCustOrderRfndMemo")->toPlainText(), QString());
        EXPECT_EQ(desk_.text("txtTransMemo"), QString());
        EXPECT_NE(desk_.text("txtOrderMaster_5").toStdString(), "둘째");
        desk_.database.run(QStringLiteral("ALTER TABLE away RENAME TO %1").arg(QLatin1String(c.table)));
    }
}
