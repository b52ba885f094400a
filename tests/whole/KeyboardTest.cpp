#include "tests/whole/SaleDesk.h"

#include <QAbstractButton>
#include <QDate>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QTimer>
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
    /// With the keys that are held meanwhile, each of which counts.
    void chord(Qt::Key key, Qt::KeyboardModifiers held = {}, int times = 1)
    {
        for (int time = 0; time < times; ++time)
            QTest::keyClick(front_->windowHandle(), key, held);
        presses += times + (held.testFlag(Qt::ShiftModifier) ? 1 : 0) + (held.testFlag(Qt::ControlModifier) ? 1 : 0);
        settle();
    }
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

    int presses = 0;

private:
    void tabUntil(const std::function<bool()> &there, const QString &what)
    {
        constexpr int onceRound = 80;
        for (int tabs = 0; !there(); ++tabs) {
            if (tabs == onceRound)
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

// The list of the keys is in docs/keys.md.
TEST_P(ByKeyboard, AWholeSaleTakesAtMostFourteenKeys)
{
    const QString paper = desk_.printRollReceiptsTo("roll.pdf");
    typist_.chord(Qt::Key_Tab, Qt::ShiftModifier, 2); // from the quantity over the kind to the products
    typist_.chord(Qt::Key_Down);
    typist_.chord(Qt::Key_F4);
    typist_.chord(Qt::Key_2);
    typist_.inDialog(
        "", [&] { typist_.chord(Qt::Key_F6); }, [&] { typist_.chord(Qt::Key_Y); });
    typist_.inDialog(
        "frmSimpleReceipt", [&] { typist_.chord(Qt::Key_F8); }, [&] { typist_.chord(Qt::Key_F12); });
    typist_.chord(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);

    EXPECT_LE(typist_.presses, 14);
    EXPECT_EQ(desk_.lines(), "2|2|50000|0|2|0");
    EXPECT_EQ(desk_.ledger(), "2|7|3|100000|00");
    EXPECT_TRUE(QFile::exists(paper));
}

INSTANTIATE_TEST_SUITE_P(Engines, ByKeyboard, testing::ValuesIn(allEngines), engineName);

namespace {

/// The window of a customer with orders of the 1st and the 2nd, boxes answered without opening.
class Keys : public testing::Test
{
protected:
    Keys()
    {
        runFile(desk_.database, "whole/orders.sql");
        desk_.open();
    }
    void press(const char *keys, bool held = false)
    {
        const QKeyCombination key = QKeySequence(QLatin1String(keys))[0];
        QTest::keyPress(desk_.window()->windowHandle(), key.key(), key.keyboardModifiers());
        if (held)
            QTest::simulateEvent(desk_.window()->windowHandle(), true, key.key(), key.keyboardModifiers(), {}, true);
        QTest::keyRelease(desk_.window()->windowHandle(), key.key(), key.keyboardModifiers());
        settle();
    }
    /// How many boxes and dialogs the keys bring up, which are all left at once.
    int opened(const char *keys)
    {
        desk_.boxes.answers = {controls::Answer::Cancel};
        int dialogs = 0;
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
            if (QWidget *dialog = QApplication::activeModalWidget()) {
                ++dialogs;
                dialog->close();
            }
        });
        watch.start(5);
        press(keys);
        desk_.window()->activateWindow(); // as a desktop does when a window in front goes
        settle();
        desk_.boxes.answers.clear();
        return dialogs + int(desk_.boxes.take().size());
    }
    std::string focus() const
    {
        const QWidget *control = QApplication::focusWidget();
        return control ? control->objectName().toStdString() : "nothing";
    }
    bool isMarked() const
    {
        return desk_.grid("tdbCustSaleMaster")->model()->headerData(0, Qt::Vertical).toString() == QStringLiteral("▶");
    }

    SaleDesk desk_;
};

} // namespace

TEST_F(Keys, EachActsWhereItsControlIsInReachAndIsToldThere)
{
    desk_.choose("tdbCustSaleMaster", 0);
    const struct
    {
        const char *keys, *control;
    } opening[] = {
        {"F6", "cmdCSAppendDetail"},
        {"F8", "chkCmdAutomateReceipt"},
        {"F7", "chkCmdRunMisuMoneyManger"},
        {"Ctrl+P", "chkCmdPrintReceipt_0"},
        {"Ctrl+Shift+P", "chkCmdPrintReceiptRollPrinter"},
    };
    for (const auto &[keys, control] : opening) {
        SCOPED_TRACE(keys);
        const auto *button = desk_.control(control);
        EXPECT_TRUE(button->toolTip().endsWith(QStringLiteral(" (%1)").arg(keys)));
        EXPECT_TRUE(button->accessibleDescription().endsWith(QLatin1String(keys)));
        EXPECT_EQ(opened(keys), 1);
        press("Ctrl+2");
        EXPECT_EQ(opened(keys), 0) << "out of sight";
        press("Ctrl+1");
        desk_.click("chkCmdOrderMasterED_0");
        EXPECT_EQ(focus(), "dtpOrderMasterDate");
        EXPECT_EQ(opened(keys), 0) << "during an edit";
        press("Esc");
        EXPECT_EQ(focus(), "tdbCustSaleMaster");
        EXPECT_EQ(opened(keys), 1) << "after it";
    }
    press("F4");
    EXPECT_EQ(focus(), "txtSaleProductLists_5");
    EXPECT_EQ(desk_.control<QLineEdit>("txtSaleProductLists_5")->selectedText(), "1");
    press("Return");
    EXPECT_EQ(focus(), "txtSaleProductLists_5");
}

TEST_F(Keys, OneThatIsHeldOrComesWhileItsFlowRunsActsOnce)
{
    desk_.boxes.answers = {controls::Answer::Yes};
    desk_.boxes.whileItStands = [this] { press("F6"); };
    press("F6", true);
    EXPECT_EQ(desk_.boxes.take().size(), 1u);
    EXPECT_EQ(desk_.joined("SELECT COUNT(*) FROM tPSOrderDetail"), "4") << "three were there";
}

TEST_F(Keys, F1ListsThemAll)
{
    press("F1");
    auto *sheet = desk_.window()->findChild<QDialog *>("dlgKeySheet");
    ASSERT_TRUE(sheet && sheet->isVisible());
    QStringList keys;
    const QAbstractItemModel &model = *sheet->findChild<QTableView *>("tblKeys")->model();
    for (int row = 0; row < model.rowCount(); ++row)
        keys << model.index(row, 1).data().toString();
    QStringList onPage;
    for (const QString &line : textOf("../docs/keys.md").split(u'\n')) {
        if (line.startsWith(QStringLiteral("| `")))
            onPage << line.section(u'`', 1, 1);
    }
    EXPECT_EQ(keys.join(u' ').toStdString(), onPage.join(u' ').toStdString());
}

TEST_F(Keys, TabGoesThroughTheSaleInTheOrderOfWorkAndPastWhatIsOnlyShown)
{
    desk_.control("tdbSaleProductLists")->setFocus();
    const QWidget *first = QApplication::focusWidget();
    QStringList stops;
    do {
        stops << QApplication::focusWidget()->objectName();
        const auto *box = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        EXPECT_FALSE(box && box->isReadOnly()) << stops.last().toStdString();
        QTest::keyClick(desk_.window()->windowHandle(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != first && stops.size() < 80);
    EXPECT_EQ(stops.first(9).join(u' ').toStdString(),
              "tdbSaleProductLists ssoptSellType_0 txtSaleProductLists_5 txtSaleProductLists_4 txtSaleProductLists_7 "
              "cmdCSAppendDetail chkCmdAutomateReceipt tdbCustSaleMaster tdbCustSaleDetails");
    EXPECT_EQ(stops.value(9).toStdString(), "tdbCustTranManage");
}

TEST_F(Keys, WorkOnAnOrderThatNobodyChoseChoosesIt)
{
    for (const char *keys : {"F6", "F8", "F7", "Ctrl+P", "Ctrl+Shift+P"}) {
        SCOPED_TRACE(keys);
        desk_.open();
        EXPECT_FALSE(isMarked());
        EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails"), 0);
        opened(keys);
        EXPECT_TRUE(isMarked());
        EXPECT_EQ(desk_.rowsOf("tdbCustSaleDetails"), 1);
        EXPECT_EQ(desk_.rowsOf("tdbCustTranManage"), 1);
    }
}

TEST_F(Keys, TheStatusLineTellsWhatIsOwedAndWhatWasDone)
{
    desk_.database.run("UPDATE tPSOrderMaster SET OrdM_Misugum = 12000");
    desk_.open();
    const auto label = [this](const char *name) { return desk_.control<QLabel>(name)->text().toStdString(); };
    EXPECT_EQ(label("lblOwed"), "미수금 ₩24,000 · 거래 2건");
    EXPECT_EQ(label("lblDone"), "");
    desk_.boxes.answers = {controls::Answer::Yes};
    desk_.addLine(1, "2");
    EXPECT_EQ(label("lblDone"), "경옥고 2개 추가 · 합계 ₩100,000");
    desk_.in("chkCmdAutomateReceipt", [this](QWidget *dialog) { desk_.press(dialog, "cmdConfirm"); });
    EXPECT_EQ(label("lblDone"), "수납 · 받을 금액 ₩0");
    desk_.choose("tdbCustSaleMaster", 2);
    desk_.answer("chkCmdOrderMasterED_1", controls::Answer::Yes);
    EXPECT_EQ(label("lblOwed"), "미수금 ₩12,000 · 거래 1건");
}
