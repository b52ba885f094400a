#include "platform/controls/Appearance.h"
#include "settings/clsUserSetting.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/SaleWindow.h"

#include <QFile>
#include <QRadioButton>

using controls::Answer;

namespace {

class OrderPaneTest : public SaleWindow
{
protected:
    void twoOrders() { runFile("sales/two-orders.sql"); }

    std::string form()
    {
        std::string all = at<QDateEdit>("dtpOrderMasterDate").date().toString(Qt::ISODate).toStdString();
        all += at<QRadioButton>("optTakBae_0").isChecked() ? " pickup" : " courier";
        for (int index = 0; index < 10; ++index)
            all += '|' + text(("txtOrderMaster_" + std::to_string(index)).c_str());
        return all;
    }

    void select(int row) { list("tdbCustSaleMaster").moveTo(row); }
    /// The name of the dialog that it opens, "" for none; it is closed again.
    static std::string opened(const std::function<void()> &open)
    {
        std::string name;
        inDialog(open, [&](const DialogDriver &form) { name = form.window()->objectName().toStdString(); });
        return name;
    }
    void editCell(int row, int column, const char *keys);
};

void OrderPaneTest::editCell(int row, int column, const char *keys)
{
    QTableView &orders = at<QTableView>("tdbCustSaleMaster");
    orders.setFocus();
    orders.setCurrentIndex(orders.model()->index(row, column));
    orders.edit(orders.currentIndex());
    auto *editor = orders.findChild<QLineEdit *>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    if (*keys == '\0')
        QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, QString::fromUtf8(keys));
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents(); // a box waits until the cell is done with
}

const char *const fullForm = "2026-11-20 courier|\\2,700|\\100|서울|010|02|단골|문앞|\\500|\\300|\\3,000";

} // namespace

TEST_F(OrderPaneTest, TheFormShowsTheCurrentOrder)
{
    twoOrders();
    sell();
    EXPECT_EQ(form(), fullForm);
    const auto owed = [] { return controls::foreColor(&at("txtOrderMaster_7")) == controls::ink(controls::Ink::Owed); };
    EXPECT_TRUE(owed());
    atOtherDesk("UPDATE tPSOrderMaster SET OrdM_Misugum = 0");
    list("tdbCustSaleMaster").Requery();
    EXPECT_FALSE(owed()) << "whatever the order comes to";
    choose("tdbCustSaleMaster", 1);
    EXPECT_EQ(form(), "2026-01-02 pickup|\\0|\\0||||||\\0|\\0|\\0");

    atOtherDesk("DELETE FROM tPSOrderMaster");
    pane<OrderPane>().loadCustSaleMaster();
    EXPECT_EQ(form(), "2026-01-02 pickup||||||||||");
}

TEST_F(OrderPaneTest, AnEditIsSavedAndEnds)
{
    twoOrders();
    sell();
    push("chkCmdOrderMasterED_0");
    EXPECT_EQ(inEdit(), "order");
    for (const char *sum : {"txtOrderMaster_0", "txtOrderMaster_8", "txtOrderMaster_9"})
        EXPECT_TRUE(at<QLineEdit>(sum).isReadOnly()) << sum << " comes from the lines";

    type("txtOrderMaster_1", "250");
    type("txtOrderMaster_2", " 부산 ");
    type("txtOrderMaster_7", "1234");
    at<QDateEdit>("dtpOrderMasterDate").setDate(QDate(2026, 11, 21));
    push("optTakBae_0");
    push("chkcmdCSSaveInfo_0");

    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_THAT(rows("SELECT OrdM_Date, OrdM_Gubun, OrdM_Address, OrdM_Misugum, OrdM_HalinTotal, OrdM_Tel FROM "
                     "tPSOrderMaster WHERE OrdM_PK = 1"),
                ElementsAre("2026-11-21|1|부산|1234|250|02"));
    EXPECT_EQ(inEdit(), "");
    EXPECT_TRUE(at<QLineEdit>("txtOrderMaster_1").isReadOnly());
    EXPECT_EQ(window().focusWidget(), &at("tdbCustSaleMaster"));
    EXPECT_EQ(text("txtOrderMaster_2"), "부산");
}

TEST_F(OrderPaneTest, ACancelledEditShowsTheOrderAsItIs)
{
    twoOrders();
    sell();
    push("chkCmdOrderMasterED_0");
    type("txtOrderMaster_2", "부산");
    push("chkcmdCSSaveInfo_1");
    EXPECT_EQ(form(), fullForm);
    EXPECT_THAT(rows("SELECT OrdM_Address FROM tPSOrderMaster WHERE OrdM_PK = 1"), ElementsAre("서울"));
    EXPECT_EQ(inEdit(), "");
}

TEST_F(OrderPaneTest, AnEditLeavesAloneWhatAnotherDeskWroteToOtherFields)
{
    twoOrders();
    sell();
    push("chkCmdOrderMasterED_0");
    type("txtOrderMaster_2", "부산");
    atOtherDesk(
        "UPDATE tPSOrderMaster SET OrdM_Tel = '031', OrdM_HalinTotal = 300, OrdM_Misugum = 70, OrdM_Total = 9000 "
        "WHERE OrdM_PK = 1"); // a line, a payment and a telephone
    push("chkcmdCSSaveInfo_0");
    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_THAT(
        rows("SELECT OrdM_Address, OrdM_Tel, OrdM_HalinTotal, OrdM_Misugum FROM tPSOrderMaster WHERE OrdM_PK = 1"),
        ElementsAre("부산|031|300|70"));
    EXPECT_EQ(text("txtOrderMaster_4"), "031");
}

TEST_F(OrderPaneTest, AFieldThatBothDesksWroteIsToldOnceAndTheTypedTextStays)
{
    const QStringList changes{QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Address = '대구' WHERE OrdM_PK = 1"),
                              QStringLiteral("DELETE FROM tPSOrderMaster WHERE OrdM_PK = 1")};
    const Rows written[] = {{"1|부산", "2|NULL"}, {"2|NULL"}};
    twoOrders();
    sell();
    for (qsizetype at = 0; at < changes.size(); ++at) {
        SCOPED_TRACE(qPrintable(changes[at]));
        push("chkCmdOrderMasterED_0");
        type("txtOrderMaster_2", "부산");
        atOtherDesk(changes[at]);
        push("chkcmdCSSaveInfo_0");
        EXPECT_THAT(boxes_.take(),
                    ElementsAre("저장: 저장을 하지 못했습니다. 서버와의 연결을 확인하십시오. "
                                "{다른 데스크에서 먼저 수정하거나 삭제했습니다. 입력한 내용은 화면에 그대로 "
                                "있습니다.\n확인한 뒤 다시 저장하거나 취소하십시오.}"));
        EXPECT_FALSE(gcnnMasterDB->inTransaction());
        EXPECT_EQ(text("txtOrderMaster_2"), "부산");
        EXPECT_EQ(inEdit(), "order") << "the user decides over what was typed";
        push("chkcmdCSSaveInfo_0"); // told once: the last writer wins, but never over a row that is gone
        EXPECT_EQ(rows("SELECT OrdM_PK, OrdM_Address FROM tPSOrderMaster ORDER BY OrdM_PK"), written[at]);
        if (inEdit() == "order")
            push("chkcmdCSSaveInfo_1");
        boxes_.take();
    }
    EXPECT_EQ(inEdit(), "");
}

TEST_F(OrderPaneTest, AReloadDoesNotWipeAFormInEdit)
{
    twoOrders();
    sell();
    push("chkCmdOrderMasterED_0");
    type("txtOrderMaster_2", "부산");
    list("tdbCustSaleMaster").Requery();
    pane<OrderPane>().showOrderTotals();
    EXPECT_EQ(text("txtOrderMaster_2"), "부산");
}

TEST_F(OrderPaneTest, OutstandingMoneyIsTypedIntoTheGridAndSavedAtOnce)
{
    twoOrders();
    sell();
    const QString stored = QStringLiteral("SELECT OrdM_Misugum FROM tPSOrderMaster WHERE OrdM_PK = 1");
    editCell(0, 7, "2500");
    EXPECT_THAT(rows(stored), ElementsAre("2500"));
    EXPECT_EQ(text("txtOrderMaster_7"), "\\2,500") << "a save of the form must not bring the old amount back";
    editCell(0, 7, "");
    EXPECT_THAT(rows(stored), ElementsAre("0"));
    EXPECT_THAT(boxes_.take(), IsEmpty());

    EXPECT_FALSE(
        at<QTableView>("tdbCustSaleMaster").model()->flags(at<QTableView>("tdbCustSaleMaster").model()->index(0, 6))
        & Qt::ItemIsEditable);
}

TEST_F(OrderPaneTest, AnOrderIsDeletedOnlyOnYes)
{
    twoOrders();
    const int ginseng = product("홍삼", 1000);
    detail(1, ginseng, 1000, 0, 1);
    atOtherDesk("INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK) VALUES (41, 1), (42, 1)");
    sell();
    for (Answer answer : {Answer::No, Answer::Yes}) {
        boxes_.answers = {answer};
        push("chkCmdOrderMasterED_1");
        ASSERT_EQ(boxes_.messages.size(), 1u);
        EXPECT_EQ(boxes_.messages[0].flags, controls::YesNo | controls::QuestionIcon);
        EXPECT_THAT(boxes_.take(), ElementsAre("판매 마스터 삭제: 선택한 고객 판매 마스터을 삭제 하시겠습니까?\n"
                                               "(고객 판매 디테일도 모두 삭제됩니다.)"));
        const std::size_t left = answer == Answer::Yes ? 1 : 2;
        EXPECT_THAT(rows("SELECT * FROM tPSOrderMaster"), testing::SizeIs(left));
        EXPECT_THAT(rows("SELECT * FROM tPSOrderDetail"), testing::SizeIs(left - 1));
    }
    EXPECT_THAT(rows("SELECT tpstrans_Customer_PK FROM tPSTransaction"), ElementsAre("42"))
        << "another customer's row under the same key is not the order's";
    EXPECT_EQ(text("txtOrderMaster_2"), "");
    EXPECT_EQ(rowsShown("tdbCustSaleDetails"), 0);
}

TEST_F(OrderPaneTest, AnOrderThatAnotherDeskDeletedFirstLeavesTheList)
{
    twoOrders();
    sell();
    atOtherDesk("DELETE FROM tPSOrderMaster WHERE OrdM_PK = 1");
    boxes_.answers = {Answer::Yes};
    push("chkCmdOrderMasterED_1");
    EXPECT_EQ(boxes_.messages.back().text, QStringLiteral("고객 판매 마스터를 삭제하지 못했습니다."));
    EXPECT_EQ(rowsShown("tdbCustSaleMaster"), 1);
}

TEST_F(OrderPaneTest, ADeleteThatFailsAtAnyOfItsStepsIsToldAndShowsTheOrderAgain)
{
    twoOrders();
    detail(1, product("홍삼", 1000), 1000, 0, 1);
    atOtherDesk(
        "INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, "
        "tpstrans_Money) SELECT Cust_PK, OrdM_PK, OrdM_Date, 3, 1000 FROM tPSOrderMaster WHERE OrdM_PK = 1");
    sell();
    for (const char16_t *table : {u"tPSOrderDetail", u"tPSTransaction", u"tPSOrderMaster"}) {
        SCOPED_TRACE(qPrintable(QString::fromUtf16(table)));
        refuse(QStringLiteral("BEFORE DELETE ON ") + QString::fromUtf16(table));
        boxes_.answers = {Answer::Yes};
        push("chkCmdOrderMasterED_1");
        EXPECT_EQ(boxes_.messages.back().text, QStringLiteral("고객 판매 마스터를 삭제하지 못했습니다."));
        EXPECT_FALSE(gcnnMasterDB->inTransaction());
        allowAgain();
        for (const char16_t *kept : {u"tPSOrderDetail", u"tPSTransaction"})
            EXPECT_THAT(rows(QStringLiteral("SELECT * FROM ") + QString::fromUtf16(kept)), testing::SizeIs(1));
        EXPECT_EQ(rowsShown("tdbCustSaleMaster"), 2);
        EXPECT_EQ(rowsShown("tdbCustSaleDetails"), 1);
        EXPECT_EQ(form(), fullForm);
    }
}

TEST_F(OrderPaneTest, NamesComeFromTheProductsAndStayEmptyForThoseThatAreGone)
{
    twoOrders();
    const int ginseng = product("홍삼", 1000);
    detail(1, 999, 500, 0, 1);
    detail(1, ginseng, 1000, 0, 2);
    sell();
    EXPECT_EQ(cell("tdbCustSaleDetails", 0, 2), "홍삼");
    EXPECT_EQ(cell("tdbCustSaleDetails", 1, 2), "");
    EXPECT_EQ(cell("tdbCustSaleDetails", 0, 6), "일반판매");

    atOtherDesk("UPDATE tPSProductMaster SET PM_Name = '산삼'");
    pane<DetailPane>().rebind();
    EXPECT_EQ(cell("tdbCustSaleDetails", 0, 2), "산삼");
    atOtherDesk("UPDATE tPSProductMaster SET PM_Name = '홍삼'");
    list("tdbCustSaleDetails").Requery();
    EXPECT_EQ(cell("tdbCustSaleDetails", 0, 2), "홍삼");
    atOtherDesk("ALTER TABLE tPSProductMaster RENAME TO away");
    pane<DetailPane>().rebind();
    EXPECT_EQ(cell("tdbCustSaleDetails", 0, 2), "#오류") << "a name that cannot be read is not one that is gone";
}

TEST_F(OrderPaneTest, ALineIsDeletedOnlyOnYesAndTheSumsFollow)
{
    twoOrders();
    detail(1, product("홍삼", 1000), 1000, 0, 1);
    sell();
    for (Answer answer : {Answer::No, Answer::Yes}) {
        boxes_.answers = {answer};
        push("chkCmdDelOrderDetail");
        EXPECT_THAT(boxes_.take(), ElementsAre("판매 상세 내역: 판매 상세 내역을 삭제 하시겠습니까?"));
        EXPECT_THAT(rows("SELECT COUNT(*) FROM tPSOrderDetail"), ElementsAre(answer == Answer::Yes ? "0" : "1"));
    }
    EXPECT_EQ(text("txtOrderMaster_9"), "\\0");
    EXPECT_EQ(text("txtOrderMaster_7"), "\\500") << "outstanding money stays";
    push("chkCmdDelOrderDetail");
    EXPECT_THAT(boxes_.take(), IsEmpty()) << "nothing to delete, nothing to ask";
}

TEST_F(OrderPaneTest, OnlyASoldLineAsksForItsReceiptOrItsReturn)
{
    const struct
    {
        const char *type;
        int count;
        const char *receipt; ///< the dialog that a double click opens
        const char *refund;  ///< and the one of the button
        std::vector<std::string> refusal;
    } cases[] = {
        {"0", 1, "frmSimpleReceipt", "frmRefund", {}},
        {"1", 2, "", "frmRefund", {}},
        {"2", 2, "", "", {"반품처리: 망실 처리된 물품이므로 반품을 할 수 없습니다. 삭제를 하십시오."}},
        {"NULL", -1, "", "", {"반품: 반품된 물품이므로 반품처리를 할 수 없습니다."}},
        {"0", 0, "", "", {"반품: 반품된 물품이므로 반품처리를 할 수 없습니다."}},
    };
    twoOrders();
    detail(1, 1, 1000, 0, 1);
    sell();
    for (const auto &c : cases) {
        SCOPED_TRACE(c.type);
        atOtherDesk(QStringLiteral("UPDATE tPSOrderDetail SET OrdD_OrderType = %1, OrdD_Count = %2, OrdD_RfndMemo = "
                                   "'a' || char(10) || 'b'")
                        .arg(QString::fromLatin1(c.type))
                        .arg(c.count));
        list("tdbCustSaleDetails").Requery();
        EXPECT_EQ(text("txtCustOrderRfndMemo"), "a\nb");
        EXPECT_EQ(opened([] { emit at<controls::RecordsetGrid>("tdbCustSaleDetails").rowDoubleClicked(); }), c.receipt);
        EXPECT_EQ(opened([] { push("chkCmdRefund"); }), c.refund);
        EXPECT_EQ(boxes_.take(), c.refusal);
    }
}

TEST_F(OrderPaneTest, ReceiptsAskForAnOrderAndAPeriodThatRunsForwards)
{
    sell();
    const std::string noOrder = "영수증 출력: 거래 내역이 없어 출력할 수 없습니다.";
    for (const char *button : {"chkCmdPrintReceipt_0", "chkCmdPrintReceipt_1", "chkCmdPrintReceiptRollPrinter"}) {
        push(button);
        EXPECT_THAT(boxes_.take(), ElementsAre(noOrder)) << button;
    }
    twoOrders();
    sell();
    EXPECT_TRUE(inDialog([] { push("chkCmdPrintReceipt_0"); },
                         [](const DialogDriver &preview) {
                             EXPECT_EQ(preview.window()->objectName(), QStringLiteral("frmPrinter"));
                             EXPECT_EQ(preview.window()->windowTitle().toStdString(), "영수증출력");
                             EXPECT_TRUE(preview.window()->isMaximized());
                             preview.key(Qt::Key_Escape);
                             EXPECT_FALSE(preview.window()->isVisible());
                         }));
    const QTemporaryDir folder;
    const QString roll = folder.filePath(QStringLiteral("roll.pdf")); // a printer of this name is a file
    clsUserSetting().setReceiptPrinter(roll);
    push("chkCmdPrintReceiptRollPrinter");
    EXPECT_TRUE(QFile::exists(roll));
    const auto printPeriod = [] { return opened([] { push("chkCmdPrintReceipt_1"); }); };
    EXPECT_EQ(printPeriod(), "frmPrinter");
    at<QDateEdit>("uxStartDateDTP").setDate(at<QDateEdit>("uxEndDateDTP").date());
    EXPECT_EQ(printPeriod(), "frmPrinter") << "of one day";
    at<QDateEdit>("uxStartDateDTP").setDate(at<QDateEdit>("uxEndDateDTP").date().addDays(1));
    EXPECT_EQ(printPeriod(), "");
    EXPECT_THAT(boxes_.take(), ElementsAre("물품판매관리: 시작일이 종료일 보다 큽니다. 날짜를 변경하십시오."));
}
