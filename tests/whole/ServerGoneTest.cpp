#include "platform/ado/Waiting.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/Wire.h"
#include "tests/whole/SaleDesk.h"

#include <QDate>
#include <QTabWidget>
#include <QThread>

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

namespace {

// Without a server a button may open no dialog: none of these insists on it.

void takeFirstPayment(SaleDesk &desk)
{
    inDialog([&] { desk.click("chkCmdAutomateReceipt"); },
             [](const DialogDriver &receipt) {
                 receipt.type("txtGeneralHalInMoney", "500");
                 receipt.type("txtGeneralSuNapMoney_0", "20000");
                 receipt.type("txtGeneralSuNapMoney_1", "30000");
                 receipt.press("chkGeneralRemainToMisuMoney");
                 receipt.press("cmdConfirm");
             });
}

void takeFurtherPayment(SaleDesk &desk)
{
    inDialog([&] { desk.click("chkCmdAutomateReceipt"); },
             [](const DialogDriver &receipt) {
                 receipt.type("txtMoney", "4000");
                 receipt.press("cmdConfirm");
             });
}

void changeLedgerRow(SaleDesk &desk)
{
    desk.choose("tdbCustTranManage", 0);
    inDialog([&] { desk.click("chkcmdAddEditDelTran_1"); },
             [](const DialogDriver &receipt) {
                 receipt.type("txtMoney", "39000");
                 receipt.press("cmdConfirm");
             });
}

void collectOutstanding(SaleDesk &desk)
{
    inDialog([&] { desk.click("chkCmdRunMisuMoneyManger"); },
             [](const DialogDriver &list) {
                 auto *orders = list.find<QTableView>("dgReceiptView");
                 QTest::mouseClick(orders->viewport(), Qt::LeftButton, {},
                                   orders->visualRect(orders->model()->index(0, 1)).center());
                 inDialog([&] { list.press("cmdMisuMoneyPay"); },
                          [](const DialogDriver &payment) {
                              payment.type("txtGeneralSunap", "10000");
                              payment.key(Qt::Key_F12);
                          });
                 list.key(Qt::Key_F12);
             });
}

void takeBack(SaleDesk &desk)
{
    desk.choose("tdbCustSaleDetails", 0);
    inDialog([&] { desk.click("chkCmdRefund"); },
             [](const DialogDriver &refund) {
                 refund.type("txtRfndUnitCount", "-1");
                 refund.type("txtRfndUnitSalePrice", "50000");
                 refund.press("chkCmdSave");
             });
}

void editOrder(SaleDesk &desk)
{
    desk.click("chkCmdOrderMasterED_0");
    desk.type("txtOrderMaster_5", "call");
    desk.click("chkcmdCSSaveInfo_0");
}

void goTo(SaleDesk &desk, int tab)
{
    desk.control<QTabWidget>("c1tabMain")->setCurrentIndex(tab);
    walk::settle();
}

void saveProduct(SaleDesk &desk)
{
    goTo(desk, 1);
    desk.click("chkCmdProdSaleAddEdiDel_0");
    desk.type("txtProSaleInfo_0", "tea");
    desk.type("txtProSaleInfo_1", "ginger");
    desk.type("txtProSaleInfo_2", "1500");
    desk.click("chkCmdSaveProduct_0");
    goTo(desk, 0);
}

const char *const lost = "데이터베이스와 연결이 끊어졌습니다.\n저장되었는지 목록에서 확인한 뒤 다시 시도하십시오.";
const char *const unreachable = "데이터베이스에 연결할 수 없습니다.\n서버와 네트워크를 확인하십시오.";
const char *const notAdded = "판매추가를 실패 했습니다. 다시 시도 하십시오.";
const char *const notSaved = "저장을 하지 못했습니다. 서버와의 연결을 확인하십시오.";
const char *const orderNotDeleted = "고객 판매 마스터를 삭제하지 못했습니다.";
const char *const lineNotDeleted = "고객 판매 디테일을 삭제하지 못했습니다.";
const char *const notTakenBack = "오류가 있어 반품처리를 완료하지 못했습니다.";
const char *const noConnection =
    "데이터베이스 접속에 문제가 생겼습니다.\r프로그램을 종료하고 네트워크를 확인한 후\r다시 시도해 보십시오.";
const char *const maybePaid = "수납이 기록되었는지 알 수 없습니다.\n원인: 데이터베이스와 연결이 "
                              "끊어졌습니다.\n저장되었는지 목록에서 확인한 뒤 다시 시도하십시오.";

/// States are "order's total, outstanding money, memo / quantities / operators, money and methods / new products".
struct Operation
{
    const char *name;
    void (*run)(SaleDesk &);
    std::vector<const char *> told; ///< when the server is lost in the middle
    const char *toldAway;           ///< when it was away before
    const char *done;
    std::vector<const char *> halves = {}; ///< what the order of its steps may leave behind
    const char *ledgerBefore = "";         ///< "operator, money, method"
    int outstandingBefore = 0;
};

const Operation operations[] = {
    {.name = "adding a line",
     .run = [](SaleDesk &desk) { desk.addLine(0, "2"); },
     .told = {notAdded},
     .toldAway = notAdded,
     .done = "55000|0| / 2 3 1 / / ",
     .halves = {"53000|0| / 2 3 1 / / "}},
    {.name = "changing the order",
     .run = editOrder,
     .told = {notSaved},
     .toldAway = notSaved,
     .done = "53000|0|call / 3 1 / / "},
    {.name = "deleting the order",
     .run = [](SaleDesk &desk) { desk.answer("chkCmdOrderMasterED_1", controls::Answer::Yes); },
     .told = {orderNotDeleted},
     .toldAway = orderNotDeleted,
     .done = " /  / / "},
    {.name = "deleting a line",
     .run = [](SaleDesk &desk) { desk.answer("chkCmdDelOrderDetail", controls::Answer::Yes); },
     .told = {lineNotDeleted},
     .toldAway = lineNotDeleted,
     .done = "3000|0| / 3 / / ",
     .halves = {"53000|0| / 3 / / "}},
    {.name = "first payment",
     .run = takeFirstPayment,
     .told = {lost},
     .toldAway = noConnection,
     .done = "53000|2500| / 3 1 / 2|500| 3|20000|00 3|30000|01 / ",
     .halves = {"53000|0| / 3 1 / 2|500| / ", "53000|0| / 3 1 / 2|500| 3|20000|00 / ",
                "53000|0| / 3 1 / 2|500| 3|20000|00 3|30000|01 / "}},
    {.name = "further payment",
     .run = takeFurtherPayment,
     .told = {lost},
     .toldAway = noConnection,
     .done = "53000|9000| / 3 1 / 3|4000| 3|40000|00 / ",
     .halves = {"53000|13000| / 3 1 / 3|4000| 3|40000|00 / "},
     .ledgerBefore = "3, 40000, '00'",
     .outstandingBefore = 13000},
    {.name = "changing a ledger row",
     .run = changeLedgerRow,
     .told = {noConnection},
     .toldAway = noConnection,
     .done = "53000|0| / 3 1 / 3|39000|00 / ",
     .ledgerBefore = "3, 40000, '00'"},
    {.name = "collecting outstanding money",
     .run = collectOutstanding,
     .told = {maybePaid},
     .toldAway = "데이터베이스 접속에 오류가 발생했습니다. 네트워크를 확인하세요.",
     .done = "53000|3000| / 3 1 / 3|10000|10 / ",
     .outstandingBefore = 13000},
    {.name = "taking goods back",
     .run = takeBack,
     .told = {lost, notTakenBack},
     .toldAway = unreachable,
     .done = "3000|0| / -1 3 1 / / ",
     .halves = {"53000|0| / -1 3 1 / / "}},
    {.name = "adding a product",
     .run = saveProduct,
     .told = {notSaved},
     .toldAway = notSaved,
     .done = "53000|0| / 3 1 / / ginger"},
};

class ServerGone : public testing::Test
{
protected:
    void SetUp() override
    {
        desk_.connection = ado::Connection::open(wire_.address(desk_.database.serverDatabase()));
        desk_.open();
        goTo(desk_, 1); // its lists are read on the first visit
        goTo(desk_, 0);
    }

    /// One order of today, 3,000 taxed and 50,000 tax-free.
    void prepare(const Operation &operation)
    {
        const auto run = [this](const QString &statement) { desk_.database.run(statement); };
        for (const char *rows :
             {"tPSTransaction", "tPSOrderDetail", "tPSOrderMaster", "tPSProductMaster WHERE PM_PK > 3"})
            run(QStringLiteral("DELETE FROM ") + QLatin1String(rows));
        run(QStringLiteral("INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, "
                           "OrdM_TaxFreeTotal, "
                           "OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, OrdM_ETCMemo) VALUES (900, 7, '%1', 1, 3000, "
                           "50000, 0, 53000, %2, '')")
                .arg(QDate::currentDate().toString(Qt::ISODate))
                .arg(operation.outstandingBefore));
        run(QStringLiteral(
            "INSERT INTO tPSOrderDetail (OrdD_PK, OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, "
            "OrdD_OrderType) VALUES (901, 900, 1, 1000, 0, 3, 0), (902, 900, 2, 50000, 0, 1, 0)"));
        if (*operation.ledgerBefore)
            run(QStringLiteral(
                    "INSERT INTO tPSTransaction (tpstrans_PK, tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, "
                    "tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo) VALUES (903, 7, 900, "
                    "'2026-03-02', %1, '')")
                    .arg(QLatin1String(operation.ledgerBefore)));
        desk_.open();
        desk_.choose("tdbCustSaleMaster", 0);
        desk_.boxes.messages.clear();
    }

    std::string stored()
    {
        return rows("SELECT OrdM_Total, OrdM_Misugum, OrdM_ETCMemo FROM tPSOrderMaster") + " / "
               + rows("SELECT OrdD_Count FROM tPSOrderDetail ORDER BY OrdD_PK") + " / "
               + rows(
                   "SELECT tpstrans_Operator, tpstrans_Money, tpstrans_Method FROM tPSTransaction ORDER BY tpstrans_PK")
               + (ledgerRows() > 0 ? " / " : "/ ") + rows("SELECT PM_Name FROM tPSProductMaster WHERE PM_PK > 3");
    }
    std::string rows(const char *statement)
    {
        return desk_.database.rows(QLatin1String(statement)).join(u' ').toStdString();
    }
    int ledgerRows() { return int(desk_.database.rows(QStringLiteral("SELECT 1 FROM tPSTransaction")).size()); }

    /// What the window shows is what is stored.
    void expectShown()
    {
        EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails"),
                  desk_.database.rows(QStringLiteral("SELECT 1 FROM tPSOrderDetail")).size());
        EXPECT_EQ(desk_.rowsOf("tdbCustTranManage"), ledgerRows());
        const QStringList money =
            desk_.database.value(QStringLiteral("SELECT OrdM_Total, OrdM_Misugum FROM tPSOrderMaster")).split(u'|');
        const auto shown = [](const QString &won) {
            return won.isEmpty() ? QString() : runtime::money(runtime::CCur(won));
        };
        EXPECT_EQ(desk_.text("txtOrderMaster_9").toStdString(), shown(money.value(0)).toStdString());
        EXPECT_EQ(desk_.text("txtOrderMaster_7").toStdString(), shown(money.value(1)).toStdString());
    }

    /// The last word, questions left out; empty for none.
    std::string told() const
    {
        const auto &messages = desk_.boxes.messages;
        return messages.isEmpty() || (messages.back().flags & 0xF) ? std::string() : messages.back().text.toStdString();
    }

    /// The window lives: the next line is added once, and the order's total is that of its lines.
    void expectNextSale()
    {
        desk_.boxes.messages.clear();
        desk_.window()->activateWindow(); // a dialog may have stood over it
        const qsizetype before = desk_.database.rows(QStringLiteral("SELECT 1 FROM tPSOrderDetail")).size();
        desk_.addLine(0, "4");
        EXPECT_EQ(told(), "");
        EXPECT_EQ(
            rows("SELECT OrdM_Total - (SELECT SUM((OrdD_UnitPrice - OrdD_HalinUnit) * OrdD_Count) FROM tPSOrderDetail) "
                 "FROM tPSOrderMaster"),
            "0");
        EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails"), before + 1);
        expectShown();
    }

    Wire wire_;
    SaleDesk desk_{ado::Engine::PostgreSQL};
};

class ServerGoneDuring : public ServerGone, public testing::WithParamInterface<Operation>
{
};

} // namespace

// Cut before each statement that writes, and again after each, when the server has run it and the desk does not hear of it.
TEST_P(ServerGoneDuring, EveryStepTellsWhatStands)
{
    const Operation &operation = GetParam();
    prepare(operation);
    const std::string before = stored();
    operation.run(desk_);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(stored(), operation.done);
    int cuts = 0;
    for (const Wire::Moment moment : {Wire::Moment::Before, Wire::Moment::Unanswered}) {
        for (int writing = 0;; ++writing) {
            SCOPED_TRACE((moment == Wire::Moment::Before ? "before writing " : "after writing ")
                         + std::to_string(writing));
            prepare(operation);
            wire_.cutAtWriting(writing, moment);
            operation.run(desk_);
            wire_.mend();
            if (!wire_.wasCut())
                break;
            ++cuts;
            EXPECT_THAT(operation.told, testing::Contains(told()));
            std::vector<std::string> allowed{before, operation.done};
            allowed.insert(allowed.end(), operation.halves.begin(), operation.halves.end());
            EXPECT_THAT(allowed, testing::Contains(stored()));
            expectShown();
            if (writing % 2 == 1)
                expectNextSale();
        }
    }
    EXPECT_GE(cuts, 4);
}

INSTANTIATE_TEST_SUITE_P(Operations, ServerGoneDuring, testing::ValuesIn(operations), [](const auto &operation) {
    return QString::fromLatin1(operation.param.name).replace(u' ', u'_').toStdString();
});

TEST_F(ServerGone, ForAWhileIsToldByEveryOperationAndForgottenWhenItIsBack)
{
    ado::setPatience(nullptr); // how long it is waited for is another matter
    Operation all = operations[0];
    all.ledgerBefore = "3, 40000, '00'";
    all.outstandingBefore = 13000;
    prepare(all);
    const std::string before = stored();
    wire_.takeAway();
    for (const Operation &operation : operations) {
        SCOPED_TRACE(operation.name);
        desk_.boxes.messages.clear();
        operation.run(desk_);
        desk_.window()->activateWindow();
        EXPECT_THAT(desk_.boxes.texts(), testing::Contains(QString::fromUtf8(operation.toldAway)));
    }
    EXPECT_EQ(stored(), before);
    wire_.mend();
    QThread::msleep(1100); // a desk does not ask a dead server more than once a second
    expectNextSale();
}

// The answer to the commit is lost and the list cannot be read: the same once more would double the line.
TEST_F(ServerGone, WithTheLastAnswerStopsTheUserFromAddingTheLineTwice)
{
    ado::setPatience(nullptr);
    const auto operation = [](const char *name) {
        return *std::ranges::find(operations, std::string(name), &Operation::name);
    };
    const std::pair<Operation, int> lastCommits[]{{operation("adding a line"), 1}, {operation("taking goods back"), 3}};
    for (const auto &[add, commit] : lastCommits) {
        SCOPED_TRACE(add.name);
        prepare(add);
        wire_.cutAtWriting(commit, Wire::Moment::Unanswered, Wire::Then::Away);
        add.run(desk_);
        EXPECT_EQ(told(), add.told.back());
        wire_.mend();
        QThread::msleep(1100);

        desk_.boxes.messages.clear();
        desk_.window()->activateWindow();
        add.run(desk_);
        EXPECT_EQ(told(), "서버와 연결이 끊어진 동안 목록이 바뀌었습니다.\n목록을 확인한 뒤 다시 시도하십시오.");
        EXPECT_EQ(stored(), add.halves.front());
        expectShown();
        expectNextSale();
    }
}
