#include "tests/whole/SaleDesk.h"

#include <QAbstractButton>
#include <QDate>
#include <QWindow>

namespace {

using walk::settle;

/// A person without a mouse: keys go to the window in front, and only keys move the focus.
class Typist
{
public:
    explicit Typist(SaleDesk &desk)
        : desk_(desk)
    {
    }

    /// Waits until the window is in front; keys go to it from now on.
    void standBefore(QWidget *window)
    {
        front_ = window;
        if (!QTest::qWaitFor([window] { return QApplication::activeWindow() == window && QApplication::focusWidget(); },
                             3000))
            throw walk::Astray(QStringLiteral("'%1' never is in front").arg(window->objectName()));
    }
    void key(Qt::Key key) { desk_.actor.press(front_, key); }
    void keys(const char *text)
    {
        for (; *text; ++text)
            QTest::keyClick(front_->windowHandle(), *text);
        settle();
    }
    /// Tab until this control has the focus, once round the window at most.
    void tabTo(const char *name)
    {
        QWidget *target = desk_.actor.control(front_, QString::fromLatin1(name));
        tabUntil([target] { return QApplication::focusWidget() == target; }, QString::fromLatin1(name));
    }
    void push(const char *name)
    {
        tabTo(name);
        key(Qt::Key_Space);
    }
    void choose(const char *grid, Qt::Key where)
    {
        tabTo(grid);
        key(where);
    }
    /// Pushes a button of a box by its caption.
    void answer(const QString &caption)
    {
        tabUntil(
            [&] {
                auto *button = qobject_cast<QAbstractButton *>(QApplication::focusWidget());
                return button && button->text() == caption;
            },
            caption);
        key(Qt::Key_Space);
    }
    /// Works in the dialog that `open` brings up, which has to be gone by a key afterwards.
    void inDialog(const char *name, const std::function<void()> &open, const std::function<void()> &work)
    {
        QWidget *behind = front_;
        desk_.actor.inModalWindow(open, [&](QWidget *dialog) {
            EXPECT_EQ(dialog->objectName().toStdString(), name);
            standBefore(dialog);
            work();
            EXPECT_FALSE(dialog->isVisible()) << name;
        });
        behind->activateWindow(); // as a desktop does when a window in front goes
        standBefore(behind);
    }

private:
    void tabUntil(const std::function<bool()> &there, const QString &what)
    {
        constexpr int onceRound = 80;
        for (int presses = 0; !there(); ++presses) {
            if (presses == onceRound)
                throw walk::Astray(QStringLiteral("Tab never comes to '%1'").arg(what));
            QTest::keyClick(front_->windowHandle(), Qt::Key_Tab);
        }
        settle();
    }

    SaleDesk &desk_;
    QWidget *front_ = nullptr;
};

std::string today()
{
    return QDate::currentDate().toString(Qt::ISODate).toStdString();
}

/// A customer who owes 13,000 of an earlier order.
class ByKeyboard : public testing::TestWithParam<ado::Engine>
{
protected:
    void SetUp() override
    {
        desk_.database.run(
            "INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, OrdM_TaxFreeTotal, "
            "OrdM_HalinTotal, OrdM_Total, OrdM_Misugum) VALUES (7, '2026-03-02', 1, 0, 50000, 0, 50000, 13000)");
        controls::setMessageHandler({}); // boxes really open here, and are answered by keys
        desk_.open();
        typist_.standBefore(desk_.window());
    }

    void sellFour()
    {
        typist_.choose("tdbSaleProductLists", Qt::Key_Home);
        typist_.tabTo("txtSaleProductLists_5");
        typist_.keys("4");
        typist_.tabTo("cmdCSAppendDetail");
        // The customer has orders, none of today.
        typist_.inDialog(
            "", [&] { typist_.key(Qt::Key_Space); }, [&] { typist_.answer(QStringLiteral("예")); });
    }
    void payHalfAndHalf()
    {
        typist_.choose("tdbCustSaleMaster", Qt::Key_Home);
        typist_.inDialog(
            "frmSimpleReceipt", [&] { typist_.push("chkCmdAutomateReceipt"); },
            [&] {
                typist_.keys("2000"); // over the whole amount, which is selected
                typist_.push("chkGeneralRemain2Money_3");
                typist_.key(Qt::Key_F12);
            });
    }
    void takeOneBack()
    {
        typist_.choose("tdbCustSaleDetails", Qt::Key_Home);
        typist_.inDialog(
            "frmRefund", [&] { typist_.push("chkCmdRefund"); },
            [&] {
                typist_.key(Qt::Key_Return);
                typist_.keys("-1");
                typist_.push("chkCmdSave");
            });
    }
    void payTheRefund()
    {
        typist_.choose("tdbCustSaleMaster", Qt::Key_Home);
        typist_.inDialog(
            "frmSimpleReceiptAdd", [&] { typist_.push("chkCmdAutomateReceipt"); },
            [&] { typist_.key(Qt::Key_F12); }); // it offers what was paid too much
    }
    void collect(const char *money)
    {
        typist_.choose("tdbCustSaleMaster", Qt::Key_End);
        typist_.inDialog(
            "frmMisuMoneyManager", [&] { typist_.push("chkCmdRunMisuMoneyManger"); },
            [&] {
                typist_.choose("dgReceiptView", Qt::Key_Home);
                typist_.inDialog(
                    "frmMisuMoneyPay", [&] { typist_.key(Qt::Key_Space); },
                    [&] {
                        typist_.keys(money);
                        typist_.key(Qt::Key_Return);
                        typist_.key(Qt::Key_Down); // by card
                        typist_.key(Qt::Key_F12);
                    });
                typist_.key(Qt::Key_Escape);
            });
    }

    SaleDesk desk_{GetParam()};
    Typist typist_{desk_};
};

} // namespace

TEST_P(ByKeyboard, ASaleIsPaidReturnedRefundedAndAnOlderOneCollected)
{
    sellFour();
    payHalfAndHalf();
    takeOneBack();
    payTheRefund();
    collect("10000");

    // The window stays on the order that was collected for, and shows what is stored now.
    EXPECT_EQ(desk_.text("txtOrderMaster_7").toStdString(), "\\3,000");
    EXPECT_EQ(desk_.grid("tdbCustSaleMaster")->currentIndex().row(), 1);
    EXPECT_EQ(desk_.grid("tdbCustTranManage")->model()->rowCount(), 1);
    EXPECT_EQ(desk_.orders(), "1|7|2026-03-02|0|50000|0|50000|3000\n"
                              "2|7|"
                                  + today() + "|3000|0|0|3000|0");
    EXPECT_EQ(desk_.lines(), "2|1|1000|0|4|0\n"
                             "2|1|1000|0|-1|NULL");
    EXPECT_EQ(desk_.ledger(), "2|7|3|2000|00\n"
                              "2|7|3|2000|01\n"
                              "2|7|4|1000|\n"
                              "1|7|3|10000|11");
    EXPECT_EQ(desk_.joined("SELECT DISTINCT tpstrans_Date FROM tPSTransaction"), today());
}

INSTANTIATE_TEST_SUITE_P(Engines, ByKeyboard, testing::ValuesIn(allEngines), engineName);
