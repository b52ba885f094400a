#include "tests/desk/SaleDesk.h"

namespace {

/// A customer with one order of an earlier day: two lines, 3,000 taxed and 50,000 tax-free.
class OrderInWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        auto &database = desk_.database;
        database.run(QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_Address, OrdM_Tel, OrdM_Cel, "
                                    "OrdM_TakbaeMemo, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, "
                                    "OrdM_ETCMemo) VALUES (7, '2026-03-02', 1, '집', '1', '2', '', 3000, 50000, 0, 53000, 0, '')"));
        database.run(QStringLiteral("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, "
                                    "OrdD_OrderType) VALUES (1, 1, 1000, 0, 3, 0), (1, 2, 50000, 0, 1, 0)"));
        database.run(QStringLiteral("INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, "
                                    "tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo) VALUES "
                                    "(7, 1, '2026-03-02', 3, 53000, '00', '')"));
        desk_.open();
        desk_.choose("tdbCustSaleMaster", 0);
    }

    QString order(const char *column) { return desk_.database.value(QStringLiteral("SELECT %1 FROM tPSOrderMaster").arg(QLatin1String(column))); }

    SaleDesk desk_;
};

} // namespace

TEST_F(OrderInWindow, IsEditedAndSavedOrLeftAlone)
{
    desk_.click("chkCmdOrderMasterED_0");
    EXPECT_FALSE(desk_.control("tdbSaleProductLists")->isEnabled());
    desk_.type("txtOrderMaster_5", "call first");
    desk_.click("optTakBae_1");
    desk_.click("chkcmdCSSaveInfo_0");
    EXPECT_EQ(order("OrdM_ETCMemo").toStdString(), "call first");
    EXPECT_EQ(order("OrdM_Gubun").toStdString(), "2");

    desk_.choose("tdbCustSaleMaster", 0);
    desk_.click("chkCmdOrderMasterED_0");
    desk_.type("txtOrderMaster_5", "forget this");
    desk_.click("chkcmdCSSaveInfo_1");
    EXPECT_EQ(order("OrdM_ETCMemo").toStdString(), "call first");
    EXPECT_TRUE(desk_.control("tdbCustSaleMaster")->hasFocus());
    EXPECT_TRUE(desk_.control("tdbSaleProductLists")->isEnabled());
    EXPECT_TRUE(desk_.boxes.messages.isEmpty());
}

TEST_F(OrderInWindow, TellsWhenAnotherDeskWasFasterAndKeepsItsWork)
{
    desk_.click("chkCmdOrderMasterED_0");
    desk_.type("txtOrderMaster_5", "mine");
    desk_.database.run(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_ETCMemo = 'theirs'"));
    desk_.click("chkcmdCSSaveInfo_0");
    ASSERT_EQ(desk_.boxes.messages.size(), 1);
    EXPECT_EQ(desk_.boxes.messages.front().title.toStdString(), "저장");
    EXPECT_EQ(desk_.boxes.messages.front().text.toStdString(), "저장을 하지 못했습니다. 서버와의 연결을 확인하십시오.");
    EXPECT_EQ(order("OrdM_ETCMemo").toStdString(), "theirs");

    // The window shows what is stored, and the next edit works.
    desk_.choose("tdbCustSaleMaster", 0);
    EXPECT_EQ(desk_.text("txtOrderMaster_5").toStdString(), "theirs");
    desk_.click("chkCmdOrderMasterED_0");
    desk_.type("txtOrderMaster_5", "both");
    desk_.click("chkcmdCSSaveInfo_0");
    EXPECT_EQ(order("OrdM_ETCMemo").toStdString(), "both");
}

TEST_F(OrderInWindow, LosesALineOrAllOnlyWhenAsked)
{
    desk_.choose("tdbCustSaleDetails", 0); // newest first: the tax-free line
    desk_.click("chkCmdDelOrderDetail");   // answered with No
    EXPECT_EQ(desk_.lines(), "1|1|1000|0|3|0\n1|2|50000|0|1|0");

    desk_.boxes.answers = {controls::Answer::Yes};
    desk_.choose("tdbCustSaleDetails", 0);
    desk_.click("chkCmdDelOrderDetail");
    EXPECT_EQ(desk_.lines(), "1|1|1000|0|3|0");
    EXPECT_EQ(order("OrdM_Total").toStdString(), "3000");
    EXPECT_EQ(desk_.ledger(), "1|7|3|53000|00") << "money taken stays in the ledger";

    desk_.choose("tdbCustSaleMaster", 0);
    desk_.click("chkCmdOrderMasterED_1");
    EXPECT_NE(desk_.orders(), "");
    desk_.boxes.answers = {controls::Answer::Yes};
    desk_.click("chkCmdOrderMasterED_1");
    EXPECT_EQ(desk_.orders() + desk_.lines() + desk_.ledger(), "");
    EXPECT_EQ(desk_.grid("tdbCustSaleDetails")->model()->rowCount(), 0);
    EXPECT_EQ(desk_.text("txtOrderMaster_9").toStdString(), "");
}

TEST_F(OrderInWindow, TakesOutstandingMoneyTypedIntoTheList)
{
    QTableView *grid = desk_.grid("tdbCustSaleMaster");
    constexpr int misugum = 7;
    grid->scrollTo(grid->model()->index(0, misugum));
    walk::settle();
    const QPoint cell = grid->viewport()->mapTo(grid->window(), grid->visualRect(grid->model()->index(0, misugum)).center());
    QWindow *handle = grid->window()->windowHandle();
    QTest::mouseClick(handle, Qt::LeftButton, {}, cell);
    QTest::mouseDClick(handle, Qt::LeftButton, {}, cell);
    walk::settle();
    for (char key : {'7', '0', '0', '0'})
        QTest::keyClick(handle, key);
    QTest::keyClick(handle, Qt::Key_Return);
    walk::settle();
    EXPECT_EQ(order("OrdM_Misugum").toStdString(), "7000");
    EXPECT_EQ(desk_.text("txtOrderMaster_7").toStdString(), "\\7,000");
}

TEST_F(OrderInWindow, IsNotWrittenWithTextsOfTheCustomerBefore)
{
    desk_.click("chkCmdOrderMasterED_0");
    desk_.type("txtOrderMaster_5", "meant for the first");
    desk_.open(8); // the host calls for the next patient
    EXPECT_TRUE(desk_.control("tdbSaleProductLists")->isEnabled());
    desk_.addLine(0, "1");
    EXPECT_EQ(desk_.joined(QStringLiteral("SELECT Cust_PK, OrdM_ETCMemo FROM tPSOrderMaster ORDER BY OrdM_PK")), "7|\n8|");
}

TEST_F(OrderInWindow, TakesALineByKeyboardAlone)
{
    // The entry puts the cursor into the quantity; every stop on the way is reached by Tab.
    QWidget *window = desk_.window();
    desk_.control("tdbSaleProductLists")->setFocus();
    desk_.actor.press(window, Qt::Key_Down);
    const auto tabTo = [&](const char *name) {
        for (int presses = 0; presses < 20 && QApplication::focusWidget() != desk_.control(name); ++presses)
            desk_.actor.press(window, Qt::Key_Tab);
        ASSERT_EQ(QApplication::focusWidget(), desk_.control(name)) << name;
    };
    tabTo("txtSaleProductLists_5");
    desk_.actor.press(window, Qt::Key_4);
    tabTo("cmdCSAppendDetail");
    desk_.boxes.answers = {controls::Answer::No}; // to the order that is chosen
    desk_.actor.press(window, Qt::Key_Space);
    ASSERT_EQ(desk_.boxes.messages.size(), 1);
    EXPECT_EQ(desk_.lines(), "1|1|1000|0|3|0\n"
                             "1|2|50000|0|1|0\n"
                             "1|2|50000|0|4|0");
}
