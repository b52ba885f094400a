#include "tests/support/DialogDriver.h"
#include "tests/support/SaleWindow.h"

#include <QInputMethodEvent>
#include <QScreen>

namespace {

/// A line of 3 at 1,000 less 100, sold on the 20th, and the button that takes it back.
class RefundDialog : public SaleWindow
{
protected:
    RefundDialog()
    {
        detail(order("2026-11-20"), product("홍삼 & 녹용", 1200), 1000, 100, 3);
        sell();
    }
    static void takeBack(const std::function<void(const DialogDriver &)> &act)
    {
        EXPECT_TRUE(inDialog([] { push("chkCmdRefund"); }, act));
    }
    Rows lines() { return rows("SELECT OrdD_UnitPrice, OrdD_Count FROM tPSOrderDetail ORDER BY OrdD_PK"); }
    Rows notes() { return rows("SELECT OrdD_RfndMemo FROM tPSOrderDetail ORDER BY OrdD_PK"); }
};

QColor color(const DialogDriver &form, const char *name)
{
    return form.find<QLineEdit>(name)->palette().color(QPalette::Active, QPalette::Text);
}

} // namespace

TEST_F(RefundDialog, ComesUpWithTheWholeLineAndLeavesEverythingWhenCancelled)
{
    for (const char *button : {"chkCmdCancel", ""}) { // the button, then Esc
        takeBack([&, button](const DialogDriver &form) {
            EXPECT_EQ(form.find<QDateEdit>("dtpUnitSoldDate")->date(), QDate(2026, 11, 20));
            EXPECT_EQ(form.find<QDateEdit>("dtpRfndDate")->date(), QDate::currentDate());
            const std::pair<const char *, const char *> texts[] = {
                {"txtUnitName", "홍삼 & 녹용"},
                {"txtUnitPrice", "\\1,000"},
                {"txtUnitDiscount", "\\100"},
                {"txtUnitCount", "3"},
                {"txtRfndUnitCount", "-3"},
                {"txtRfndUnitSalePrice", "\\900"},
                {"txtRfndMemo", ""},
            };
            for (const auto &[name, text] : texts)
                EXPECT_EQ(form.text(name), text) << name;
            form.type("txtRfndMemo", "x");
            if (*button)
                form.press(button);
            else
                form.key(Qt::Key_Escape);
            EXPECT_FALSE(form.window()->isVisible());
        });
    }
    EXPECT_THAT(lines(), ElementsAre("1000|3"));
    EXPECT_THAT(notes(), ElementsAre("NULL"));
    EXPECT_THAT(boxes_.take(), IsEmpty());
}

TEST_F(RefundDialog, StepsStayBetweenTheSoldQuantityAndNone)
{
    takeBack([](const DialogDriver &form) {
        const auto count = [&](const char *button, int times = 1) {
            for (; times > 0; --times)
                form.press(button);
            return form.text("txtRfndUnitCount");
        };
        EXPECT_EQ(color(form, "txtRfndUnitCount"), controls::ink(controls::Ink::Negative));
        EXPECT_EQ(count("udNoOfProdPlusMinus_down"), "-3");
        EXPECT_EQ(count("udNoOfProdPlusMinus_up", 2), "-1");
        EXPECT_EQ(color(form, "txtRfndUnitCount"), controls::ink(controls::Ink::Negative));
        EXPECT_EQ(count("udNoOfProdPlusMinus_up", 2), "0");
        EXPECT_EQ(color(form, "txtRfndUnitCount"), controls::ink(controls::Ink::Plain));
        form.type("txtRfndUnitCount", "-9");
        EXPECT_EQ(count("udNoOfProdPlusMinus_down"), "-9") << "typing isn't held to it, but stepping goes back only";
        EXPECT_EQ(count("udNoOfProdPlusMinus_up"), "-8");
    });
}

TEST_F(RefundDialog, ByKeysAloneAPriceAndARemarkAreTypedAndSaved)
{
    takeBack([](const DialogDriver &form) {
        EXPECT_EQ(form.focus(), "txtRfndUnitCount");
        form.find<QDateEdit>("dtpRfndDate")->setDate(QDate(2026, 11, 20));
        for (Qt::Key digit : {Qt::Key_Minus, Qt::Key_2})
            form.key(digit);
        EXPECT_EQ(form.text("txtRfndUnitCount"), "-2");
        form.key(Qt::Key_Return);
        EXPECT_EQ(form.focus(), "txtRfndUnitSalePrice");
        EXPECT_EQ(form.find<QLineEdit>("txtRfndUnitSalePrice")->selectedText(), QString());
        for (Qt::Key digit : {Qt::Key_Backspace, Qt::Key_5, Qt::Key_X, Qt::Key_0})
            form.key(digit);
        EXPECT_EQ(form.text("txtRfndUnitSalePrice"), "\\9,050");
        form.key(Qt::Key_Tab);
        QInputMethodEvent composed(QStringLiteral("심"), {}); // half-composed as the focus leaves
        composed.setCommitString(" 변");
        QApplication::sendEvent(form.window()->focusWidget(), &composed);
        form.key(Qt::Key_Enter);
        EXPECT_EQ(form.focus(), "chkCmdSave");
        form.key(Qt::Key_Return);
        EXPECT_TRUE(form.window()->isVisible()) << "Enter presses nothing";
        EXPECT_EQ(form.focus(), "chkCmdCancel");
        form.key(Qt::Key_Backtab);
        form.key(Qt::Key_Space);
    });
    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("1000|3", "9050|-2"));
    EXPECT_THAT(notes(), ElementsAre("▶2026-11-20일 (-2)개 반품", testing::EndsWith(" 메모: 변심")));
    // The lines were read anew; the newest, the return, stands first.
    EXPECT_EQ(cell("tdbCustSaleDetails", 0, 3), "-2");
    EXPECT_THAT(at<QPlainTextEdit>("txtCustOrderRfndMemo").toPlainText().toStdString(), testing::EndsWith("변심"));
    EXPECT_EQ(text("txtOrderMaster_9"), "-\\15,400");
}

TEST_F(RefundDialog, AQuantityThatIsNoneIsToldAndKeepsWhatWasTyped)
{
    takeBack([this](const DialogDriver &form) {
        form.find<QDateEdit>("dtpRfndDate")->setDate(QDate(2026, 11, 20));
        form.type("txtRfndMemo", "torn");
        for (const char *none : {"", "-", "all", "-32769"}) {
            form.type("txtRfndUnitCount", none);
            form.press("chkCmdSave");
            EXPECT_THAT(boxes_.take(), ElementsAre("반품: 반품 수량을 숫자로 입력하십시오.\n예: 1개 반품은 -1"));
            EXPECT_TRUE(form.window()->isVisible());
            EXPECT_EQ(form.text("txtRfndMemo"), "torn");
        }
        form.type("txtRfndUnitCount", "-1");
        form.press("chkCmdSave");
    });
    EXPECT_THAT(lines(), ElementsAre("1000|3", "900|-1"));
}

TEST_F(RefundDialog, ALineThatAnotherDeskDeletedFirstLeavesTheList)
{
    takeBack([this](const DialogDriver &form) {
        atOtherDesk("DELETE FROM tPSOrderDetail");
        form.press("chkCmdSave");
    });
    EXPECT_EQ(boxes_.take().size(), 1u);
    EXPECT_EQ(rowsShown("tdbCustSaleDetails"), 0);
}

TEST_F(RefundDialog, StandsBesideItsButton)
{
    window().move(0, 0);
    takeBack([](const DialogDriver &form) {
        auto &button = at<QWidget>("chkCmdRefund");
        EXPECT_FALSE(form.window()->frameGeometry().contains(button.mapToGlobal(button.rect().center())));
    });
}

TEST_F(RefundDialog, EveryDialogOfTheSaleStaysOnTheScreenWhereverItsButtonIs)
{
    atOtherDesk("INSERT INTO Customer (Customer_PK, name, sn) VALUES (41, '홍길동', 'C-1')");
    const QRect screen = window().screen()->availableGeometry();
    const auto expectOnScreen = [&](const DialogDriver &form, const char *name) {
        EXPECT_EQ(form.window()->objectName().toStdString(), name);
        const QRect place = form.window()->frameGeometry();
        EXPECT_TRUE(screen.contains(place)) << place.x() << ' ' << place.y();
    };
    const struct
    {
        const char *prepare;
        const char *button;
        const char *dialog;
    } cases[] = {
        {"DELETE FROM tPSTransaction", "chkCmdRefund", "frmRefund"},
        {"UPDATE tPSOrderMaster SET OrdM_Total = 3000, OrdM_Misugum = 500", "chkCmdAutomateReceipt",
         "frmSimpleReceipt"},
        {"INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Operator, tpstrans_Money) "
         "VALUES (41, 1, 3, 1000)",
         "chkCmdAutomateReceipt", "frmSimpleReceiptAdd"},
        {"DELETE FROM tPSTransaction", "chkCmdRunMisuMoneyManger", "frmMisuMoneyManager"},
    };
    for (const QPoint &place : {screen.bottomRight() - QPoint(300, 200), QPoint(-4000, -4000), QPoint(4000, 4000)}) {
        for (const auto &c : cases) {
            SCOPED_TRACE(c.dialog + std::string(" at ") + std::to_string(place.x()));
            atOtherDesk(QString::fromLatin1(c.prepare));
            sell();
            window().move(place);
            EXPECT_TRUE(inDialog([&] { push(c.button); },
                                 [&](const DialogDriver &form) {
                                     expectOnScreen(form, c.dialog);
                                     if (form.window()->objectName() != QLatin1String("frmMisuMoneyManager"))
                                         return;
                                     form.key(Qt::Key_Down);
                                     EXPECT_TRUE(inDialog([&] { form.press("cmdMisuMoneyPay"); },
                                                          [&](const DialogDriver &payment) {
                                                              expectOnScreen(payment, "frmMisuMoneyPay");
                                                          }));
                                 }));
        }
    }
}
