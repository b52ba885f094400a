#include "tests/desk/SaleDesk.h"

#include <QDate>

namespace {

class OutstandingRoad : public testing::TestWithParam<ado::Engine>
{
};

} // namespace

TEST_P(OutstandingRoad, CollectsAnAmountOfAnEarlierOrderFromTheWindow)
{
    SaleDesk desk(GetParam());
    desk.database.run(QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum) "
                                     "VALUES (7, '2026-03-02', 1, 0, 53000, 13000), (7, '2026-03-09', 1, 500, 7500, 2500)"));
    desk.open();
    desk.choose("tdbCustSaleMaster", 1); // the earlier one
    auto &actor = desk.actor;
    actor.inModalWindow([&] { desk.click("chkCmdRunMisuMoneyManger"); },
                        [&](QWidget *list) {
                            actor.picture(QStringLiteral("outstanding"), list);
                            actor.clickRow(actor.control<QTableView>(list, QStringLiteral("dgReceiptView")), 1);
                            actor.inModalWindow([&] { actor.click(actor.control(list, QStringLiteral("cmdMisuMoneyPay"))); },
                                                [&](QWidget *payment) {
                                                    actor.typeInto(actor.control(payment, QStringLiteral("txtGeneralSunap")),
                                                                   QStringLiteral("10000"));
                                                    actor.picture(QStringLiteral("outstanding-payment"), payment);
                                                    actor.press(payment, Qt::Key_F12);
                                                });
                            actor.picture(QStringLiteral("outstanding-paid"), list);
                            actor.press(list, Qt::Key_F12);
                        });
    EXPECT_TRUE(desk.boxes.messages.isEmpty()) << desk.boxes.texts().join(u'\n').toStdString();
    EXPECT_EQ(desk.joined(QStringLiteral("SELECT OrdM_Misugum FROM tPSOrderMaster ORDER BY OrdM_PK")), "3000\n2500");
    EXPECT_EQ(desk.ledger(), "1|7|3|10000|10");
    EXPECT_EQ(desk.joined(QStringLiteral("SELECT tpstrans_Date FROM tPSTransaction")), QDate::currentDate().toString(Qt::ISODate).toStdString());

    // The window stays on the order and shows what is stored now.
    EXPECT_EQ(desk.text("txtOrderMaster_7").toStdString(), "\\3,000");
    EXPECT_EQ(desk.grid("tdbCustSaleMaster")->currentIndex().row(), 1);
    EXPECT_TRUE(desk.grid("tdbCustSaleMaster")->selectionModel()->hasSelection());
    EXPECT_EQ(desk.grid("tdbCustTranManage")->model()->rowCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(Engines, OutstandingRoad, testing::ValuesIn(allEngines), engineName);
