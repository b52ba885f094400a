#include "money/OutstandingFlow.h"
#include "money/OutstandingMoney.h"
#include "money/frmMisuMoneyManager.h"
#include "platform/controls/Appearance.h"
#include "platform/runtime/Conversions.h"
#include "tests/money/LedgerDesk.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/Refusal.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QWindow>

using testing::StartsWith;

namespace {

/// "미수금관리" pressed by a customer who owes for two orders, beside another one who owes too.
class OutstandingButton : public LedgerDesk
{
protected:
    using Act = std::function<void(const DialogDriver &)>;

    OutstandingButton()
    {
        runFile("money/owing.sql");
        loadOrders();
        session_.rsCustSaleMaster->setBookmark(first_);
    }
    void openList(const Act &act)
    {
        EXPECT_TRUE(inDialog([this] { press("chkCmdRunMisuMoneyManger"); }, act));
    }
    static controls::RecordsetGrid *grid(const DialogDriver &form)
    {
        return form.find<controls::RecordsetGrid>("dgReceiptView");
    }
    /// The list as it shows, a line each.
    static Rows shown(const DialogDriver &form)
    {
        Rows lines;
        const QAbstractItemModel *model = grid(form)->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column)
                cells += model->index(row, column).data().toString();
            lines.push_back(cells.join(u'|').toStdString());
        }
        return lines;
    }
    static std::string totals(const DialogDriver &form)
    {
        return form.text("txtCount") + " / " + form.text("txtTotal");
    }
    /// The dialog that the button brings up for the current row.
    static void inPayment(const DialogDriver &form, const Act &act)
    {
        EXPECT_TRUE(inDialog([&] { form.press("cmdMisuMoneyPay"); }, act));
    }
    /// The amount typed into the dialog that comes up for the current row, and saved.
    static void pay(const DialogDriver &form, const char *amount)
    {
        inPayment(form, [amount](const DialogDriver &payment) {
            payment.type("txtGeneralSunap", amount);
            payment.press("cmdConfirm");
        });
    }
    Rows owed() { return rows("SELECT OrdM_Misugum FROM tPSOrderMaster ORDER BY OrdM_PK"); }

    QSignalSpy done_{&session_, &SaleSession::done};
    OutstandingFlow outstanding_{session_, *pane_, &window_};
    const int first_ = 1;
    const int second_ = 2;
};

} // namespace

TEST_F(OutstandingButton, ListsWhatTheCustomerOwesAndTakesAPaymentForTheChosenOrder)
{
    openList([](const DialogDriver &form) {
        EXPECT_EQ(form.window()->objectName(), QStringLiteral("frmMisuMoneyManager"));
        EXPECT_THAT(shown(form),
                    ElementsAre("홍길동|C-1|2026-11-22|0|9,000|2,000", "홍길동|C-1|2026-11-20|300|12,340|5,000"));
        EXPECT_EQ(totals(form), "2 / 7,000");
        form.press("cmdMisuMoneyPay"); // no row is chosen yet: nothing comes up
        form.press("cmdMisuMoneySend2Excel");
        EXPECT_EQ(QApplication::activeModalWidget(), form.window());

        EXPECT_EQ(form.focus(), "dgReceiptView");
        form.key(Qt::Key_Down);
        form.key(Qt::Key_Down);
        const auto payThree = [](const DialogDriver &payment) {
            EXPECT_EQ(payment.text("txtReceiptTxDate"), "2026-11-20");
            EXPECT_EQ(payment.text("txtGeneralSunap"), "5000");
            payment.find<QDateEdit>("dtpTodat")->setDate(QDate(2026, 12, 1));
            payment.type("txtGeneralSunap", "3,000");
            payment.find<QComboBox>("cboGeneralPayMethod")->setCurrentIndex(1);
            payment.key(Qt::Key_F12);
        };
        EXPECT_TRUE(inDialog([&] { form.key(Qt::Key_Space); }, payThree));
        EXPECT_EQ(shown(form).at(1), "홍길동|C-1|2026-11-20|300|12,340|2,000");
        EXPECT_EQ(totals(form), "1 / 2,000") << "counted from the paid row on";
        EXPECT_EQ(form.focus(), "dgReceiptView");
        form.press("cmdMisuMoneyPay"); // at the end again
        form.key(Qt::Key_F12);
        EXPECT_FALSE(form.window()->isVisible());
    });
    EXPECT_THAT(owed(), ElementsAre("2000", "2000", "0", "900"));
    EXPECT_THAT(ledgerRows(), ElementsAre("2026-12-01|3|3000|11|"));
    EXPECT_THAT(rows("SELECT tpstrans_Customer_PK, tpstrans_OrderM_PK FROM tPSTransaction"),
                ElementsAre("41|" + std::to_string(first_)));
    EXPECT_EQ(session_.rsCustSaleMaster->bookmark(), first_) << "the window stays on its order";
    EXPECT_EQ(runtime::text(session_.rsCustSaleMaster->value("OrdM_Misugum")), QStringLiteral("2000"));
    EXPECT_THAT(boxes_.take(), IsEmpty());
}

TEST_F(OutstandingButton, APaidOrderStaysInTheListUntilItIsOpenedAnew)
{
    const std::string nothing = "미수금 수납: 현재 기록된 미수금이 없습니다.";
    openList([&](const DialogDriver &form) {
        form.key(Qt::Key_End);
        pay(form, "0"); // writes nothing and moves nothing
        pay(form, "5000");
        EXPECT_EQ(shown(form).at(1), "홍길동|C-1|2026-11-20|300|12,340|0");
        EXPECT_EQ(totals(form), "1 / ");
        form.key(Qt::Key_End);
        form.press("cmdMisuMoneyPay");
        EXPECT_THAT(boxes_.take(), ElementsAre(nothing));
        form.key(Qt::Key_Home);
        atOtherDesk(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Misugum = 0 WHERE OrdM_PK = %1").arg(second_));
        form.press("cmdMisuMoneyPay");
        EXPECT_THAT(boxes_.take(), ElementsAre(nothing)) << "collected by another desk in the meantime";
    });
    EXPECT_EQ(ledgerRows().size(), 1u);
    EXPECT_EQ(done_.takeFirst().at(0).toString().toStdString(), "미수금 수납 ₩5,000");

    openList([](const DialogDriver &form) {
        EXPECT_THAT(shown(form), IsEmpty());
        EXPECT_EQ(totals(form), " / ");
        form.key(Qt::Key_Down);
        form.press("cmdMisuMoneyPay");
    });
    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_EQ(done_.count(), 0) << "a list without a payment";
}

TEST_F(OutstandingButton, AFailedPaymentIsToldAndChangesNothing)
{
    openList([this](const DialogDriver &form) {
        for (const char16_t *event : {u"BEFORE UPDATE ON tPSOrderMaster", u"BEFORE INSERT ON tPSTransaction"}) {
            refuse(QString::fromUtf16(event));
            form.key(Qt::Key_Down);
            pay(form, "500");
            EXPECT_THAT(boxes_.take(),
                        ElementsAre(StartsWith(
                            "미수금 수납 기록 오류: 수납이 기록되지 않았으며 바뀐 내용이 없습니다.\n원인: ")));
            EXPECT_EQ(totals(form), "2 / 7,000");
            EXPECT_FALSE(gcnnMasterDB->inTransaction());
            allowAgain();
            form.key(Qt::Key_Home);
        }
        EXPECT_THAT(ledgerRows(), IsEmpty());
        EXPECT_THAT(owed(), ElementsAre("5000", "2000", "0", "900"));
        pay(form, "500"); // the row is still the current one
        EXPECT_THAT(boxes_.take(), IsEmpty());
    });
    EXPECT_EQ(owed().at(1), "1500");

    openList([this](const DialogDriver &form) { // another desk deletes the order meanwhile
        form.key(Qt::Key_End);
        inPayment(form, [this](const DialogDriver &payment) {
            atOtherDesk(QStringLiteral("DELETE FROM tPSOrderMaster WHERE OrdM_PK = %1").arg(first_));
            payment.press("cmdConfirm");
        });
        EXPECT_THAT(boxes_.take(), ElementsAre(StartsWith("미수금 수납 기록 오류: ")));
        form.key(Qt::Key_End);
        form.press("cmdMisuMoneyPay");
        EXPECT_THAT(boxes_.take(),
                    ElementsAre("미수금 수납: 다른 데스크에서 먼저 삭제한 거래입니다. 목록을 새로 가져왔습니다."));
        EXPECT_EQ(shown(form).size(), 1u);
        form.press("cmdMisuMoneyPay"); // nobody chose its neighbour
    });
    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_EQ(ledgerRows().size(), 1u);
}

TEST_F(OutstandingButton, WithoutTheDatabaseItSaysSoAndOpensNothing)
{
    gcnnMasterDB.reset();
    press("chkCmdRunMisuMoneyManger");
    EXPECT_THAT(boxes_.take(),
                ElementsAre("미수금 관리: 데이터베이스 접속에 오류가 발생했습니다. 네트워크를 확인하세요."));
    frmMisuMoneyManager form;
    EXPECT_EQ(form.MisuMoneyManager(gcnnMasterDB, nullptr, 1, Patient, 0), 0);
}

TEST_F(OutstandingButton, AllCustomersAreListedInTheOtherModeAndSortedByTheirHeads)
{
    const auto sortAndPay = [](const DialogDriver &form) {
        EXPECT_EQ(totals(form), "3 / 7,900");
        const auto clickHead = [&](int column, Qt::KeyboardModifiers modifiers) {
            const QHeaderView *head = grid(form)->horizontalHeader();
            const QPoint place(head->sectionViewportPosition(column) + 20, head->height() / 2);
            QTest::mouseClick(form.window()->windowHandle(), Qt::LeftButton, modifiers,
                              head->viewport()->mapTo(form.window(), place));
        };
        const auto amounts = [&] {
            std::string owed;
            for (const std::string &line : shown(form))
                owed += line.substr(line.rfind('|') + 1) + " ";
            return owed;
        };
        enum { Name, Chart, Date, Discount, Total, Owed };
        EXPECT_EQ(amounts(), "900 2,000 5,000 ");
        clickHead(Total, {});
        EXPECT_EQ(amounts(), "2,000 5,000 900 ");
        clickHead(Owed, {});
        EXPECT_EQ(amounts(), "900 2,000 5,000 ") << "as a number, not as a text";
        clickHead(Name, {});
        clickHead(Discount, Qt::ControlModifier);
        EXPECT_EQ(amounts(), "900 2,000 5,000 ");
        clickHead(Discount, {});
        clickHead(Total, Qt::ControlModifier);
        EXPECT_EQ(amounts(), "2,000 900 5,000 ");
        EXPECT_TRUE(inDialog([&] { form.key(Qt::Key_Space); }, // sorting stands on the first row
                             [](const DialogDriver &payment) { EXPECT_EQ(payment.text("txtGeneralSunap"), "2000"); }));
        form.key(Qt::Key_Escape);
    };
    frmMisuMoneyManager form;
    int result = 0;
    EXPECT_TRUE(inDialog([&] { result = form.MisuMoneyManager(gcnnMasterDB, nullptr, 0, Patient, 0); }, sortAndPay));
    EXPECT_EQ(result, -1);
    EXPECT_FALSE(outstanding::listSQL(2, Patient).contains("WHERE")) << "no other mode leaves anything out";
}

/// Acts as soon as a widget has been painted for the first time, and again behind all that this painting has set off.
class WhenPainted : public QObject
{
public:
    WhenPainted(QWidget *watched, std::function<void()> first, std::function<void()> last)
        : first_(std::move(first))
        , last_(std::move(last))
    {
        watched->installEventFilter(this);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !std::exchange(painted_, true))
            behind([this] { first_(), behind(last_); });
        return false;
    }

private:
    void behind(std::function<void()> act) { QMetaObject::invokeMethod(this, std::move(act), Qt::QueuedConnection); }

    std::function<void()> first_, last_;
    bool painted_ = false;
};

/// Everybody's list, long enough to come in two parts.
class LongOutstandingList : public OutstandingButton
{
protected:
    LongOutstandingList()
    {
        atOtherDesk(QStringLiteral(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) INSERT INTO tPSOrderMaster "
            "(Cust_PK, OrdM_Date, OrdM_Total, OrdM_Misugum) SELECT 42, date('2026-01-01', i || ' days'), i, i FROM n"));
        atOtherDesk(QStringLiteral("UPDATE Customer SET name = 'a' WHERE Customer_PK = 41"));
    }
    /// Acts on the first screen, before the rest is there, and then at the end, if the window is still open. The result, -2
    /// where an error came instead.
    int open(const Act &first, const Act &last)
    {
        frmMisuMoneyManager form;
        const DialogDriver driver(&form);
        const WhenPainted painted(
            grid(driver)->viewport(), [&] { first(driver); }, [&] { last(driver), stayed_ = true, form.close(); });
        int result = -2;
        error_ = errorOf([&] { result = form.MisuMoneyManager(gcnnMasterDB, nullptr, 0, 0, 0); });
        return result;
    }

    bool stayed_ = false; ///< until the end
    std::optional<runtime::ErrorNumber> error_;
};

TEST_F(LongOutstandingList, ShowsItsFirstScreenBeforeTheRestAndNoPartOfTheSums)
{
    const auto beginning = [](const DialogDriver &form) {
        Rows lines = shown(form);
        lines.resize(20);
        return lines;
    };
    Rows first;
    const auto look = [&](const DialogDriver &form) {
        first = beginning(form);
        EXPECT_LT(shown(form).size(), 100u);
        EXPECT_EQ(totals(form), " / ");
        EXPECT_FALSE(grid(form)->dataSource()->hasCurrent());
    };
    EXPECT_EQ(open(look,
                   [&](const DialogDriver &form) {
                       EXPECT_EQ(shown(form).size(), 2003u);
                       EXPECT_EQ(totals(form), "2,003 / 2,008,900");
                       EXPECT_EQ(beginning(form), first);
                       EXPECT_EQ(first.at(0), "a|C-1|2026-11-22|0|9,000|2,000");
                       EXPECT_EQ(first.at(2), "김영희|C-2|2031-06-24||2,000|2,000");
                   }),
              -1);
    EXPECT_TRUE(stayed_);
}

TEST_F(LongOutstandingList, GivesAFastUserTheWholeListToWorkOn)
{
    const auto sortAndPay = [](const DialogDriver &form) {
        grid(form)->dataSource()->moveTo(3);
        const QVariant chosen = grid(form)->dataSource()->bookmark();
        inPayment(form, [](const DialogDriver &payment) { EXPECT_EQ(payment.text("txtGeneralSunap"), "1999"); });
        EXPECT_EQ(grid(form)->dataSource()->bookmark(), chosen);
        emit grid(form)->headClick(5);
        EXPECT_EQ(shown(form).front(), "김영희|C-2|2026-01-02||1|1");
    };
    EXPECT_EQ(open(sortAndPay, [](const DialogDriver &form) { EXPECT_EQ(totals(form), "2,003 / 2,008,900"); }), -1);
    EXPECT_TRUE(stayed_);
}

TEST_F(LongOutstandingList, ThatCannotBeReadToItsEndCountsAsNotOpened)
{
    const auto nothing = [](const DialogDriver &) {};
    atOtherDesk(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Misugum = 2000000 WHERE Cust_PK = 42"));
    EXPECT_EQ(open(nothing, nothing), -2);
    EXPECT_EQ(error_, runtime::ErrorNumber::Overflow) << "more than the sum can hold";
    EXPECT_THAT(boxes_.take(), IsEmpty());

    const auto lose = [this](const DialogDriver &) {
        atOtherDesk(QStringLiteral("ALTER TABLE Customer RENAME TO Patients"));
    };
    EXPECT_EQ(open(lose, nothing), 0);
    EXPECT_FALSE(stayed_);
    EXPECT_THAT(boxes_.take(),
                ElementsAre("미수금 관리: 데이터베이스 접속에 오류가 발생했습니다. 네트워크를 확인하세요."));
}

TEST_F(OutstandingButton, TheKeyboardWorksTheList)
{
    openList([](const DialogDriver &form) {
        form.expectMoves({
            {"dgReceiptView", Qt::Key_Return, {}, "cmdMisuMoneyPay"},
            {"cmdMisuMoneyPay", Qt::Key_Enter, Qt::KeypadModifier,
             "cmdClose"}, // the button without work is passed over
            {"cmdClose", Qt::Key_Up, Qt::ControlModifier, "cmdMisuMoneyPay"},
            {"cmdMisuMoneyPay", Qt::Key_Up, Qt::ControlModifier, "dgReceiptView"},
            {"dgReceiptView", Qt::Key_Down, Qt::ControlModifier, "cmdMisuMoneyPay"},
        });
        for (const char *button : {"cmdMisuMoneyPay", "cmdMisuMoneySend2Excel", "cmdClose"})
            EXPECT_FALSE(form.find<QWidget>(button)->testAttribute(Qt::WA_InputMethodEnabled));

        form.find<QWidget>("cmdClose")->setFocus();
        const QRect cell = grid(form)->visualRect(grid(form)->model()->index(0, 0));
        const QPoint place = grid(form)->viewport()->mapTo(form.window(), cell.center());
        QTest::mouseClick(form.window()->windowHandle(), Qt::LeftButton, {}, place);
        EXPECT_EQ(form.focus(), "dgReceiptView");
        const auto rowIs = [&](controls::Ground ground) {
            const QColor painted =
                grid(form)->viewport()->grab().toImage().pixelColor(cell.right() - 3, cell.center().y());
            const QColor color = controls::colors(ground).back; // the style shades it a little
            return qAbs(painted.red() - color.red()) + qAbs(painted.green() - color.green())
                       + qAbs(painted.blue() - color.blue())
                   < 12;
        };
        EXPECT_TRUE(rowIs(controls::Ground::Accent));
        form.find<QWidget>("cmdClose")->setFocus();
        EXPECT_TRUE(rowIs(controls::Ground::Face));
        EXPECT_TRUE(inDialog([&] { QTest::mouseDClick(form.window()->windowHandle(), Qt::LeftButton, {}, place); },
                             [](const DialogDriver &payment) {
                                 EXPECT_EQ(payment.window()->objectName(), QStringLiteral("frmMisuMoneyPay"));
                             }));
    });
    EXPECT_THAT(boxes_.take(), IsEmpty());
}
