#include "data/Codes.h"
#include "money/frmSimpleReceiptAdd.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/SaleDatabase.h"

namespace {

/// What has been taken of an order of 10,000.
struct Taken
{
    qint32 discount = 0;
    qint32 cut = 0;
    qint32 pay = 0;
    qint32 refund = 0;
};

class FurtherReceipt : public testing::Test
{
protected:
    bool operationAdd(const Taken &taken)
    {
        frmSimpleReceiptAdd dialog;
        return dialog.OperationAdd(nullptr, QDate(2026, 11, 20), 10000, taken.discount, taken.cut, taken.pay,
                                   taken.refund, 7, QStringLiteral("C-1"), QStringLiteral("홍길동"), date_, operator_,
                                   money_, method_, recalculates_);
    }
    bool operationAdd(const Taken &taken, const std::function<void(const DialogDriver &)> &act)
    {
        bool saved = false;
        EXPECT_TRUE(inDialog([&] { saved = operationAdd(taken); }, act));
        return saved;
    }

    MessageRecorder boxes_;
    QDate date_;
    qint16 operator_ = 0;
    qint32 money_ = 0;
    QString method_;
    bool recalculates_ = false;
};

} // namespace

TEST_F(FurtherReceipt, ProposesWhatIsLeftAsAPaymentAndWhatWasTooMuchAsARefund)
{
    const struct
    {
        Taken taken;
        qint16 code;
        qint32 money;
    } cases[] = {
        {{.discount = 500, .cut = 50, .pay = 4000}, ledger::Payment, 5450},
        {{.discount = 500, .cut = 50, .pay = 4000, .refund = 1000}, ledger::Payment, 6450},
        {{.pay = 12000}, ledger::Refund, 2000},
    };
    for (const auto &c : cases) {
        EXPECT_TRUE(operationAdd(c.taken, [](const DialogDriver &form) {
            EXPECT_EQ(form.text("txtDate"), "2026-11-20");
            EXPECT_EQ(form.text("txtReceipt_PK"), "7");
            EXPECT_EQ(form.focus(), "txtMoney");
            form.press("cmdConfirm");
        }));
        EXPECT_EQ(operator_, c.code);
        EXPECT_EQ(money_, c.money);
        EXPECT_EQ(date_, QDate(2026, 11, 20));
        EXPECT_EQ(method_, QString());
    }
    EXPECT_THAT(boxes_.take(), IsEmpty());
}

TEST_F(FurtherReceipt, ASettledOrderIsAskedAboutFirst)
{
    const Taken settled{.pay = 10000};
    boxes_.answers = {controls::Answer::No};
    EXPECT_FALSE(operationAdd(settled));
    ASSERT_EQ(boxes_.messages.size(), 1u);
    EXPECT_EQ(boxes_.messages[0].flags, controls::YesNo | controls::QuestionIcon | controls::SecondButtonDefault);
    EXPECT_THAT(boxes_.take(),
                ElementsAre("수납 내역 추가: 물품판매 수납이 완결된 상태입니다.\r추가적으로 기록할 수납 등의 "
                            "내용이 있습니까?"));

    boxes_.answers = {controls::Answer::Yes};
    const auto look = [](const DialogDriver &form) {
        EXPECT_TRUE(form.checked("optOperator_1"));
        EXPECT_EQ(form.text("txtMoney"), "0");
        EXPECT_FALSE(form.find<QWidget>("sspSunapInfo")->isEnabled());
        form.press("optOperator_3");
        EXPECT_TRUE(form.find<QWidget>("sspSunapInfo")->isEnabled());
    };
    EXPECT_FALSE(operationAdd(settled, look)) << "closed without saving";
}

TEST_F(FurtherReceipt, OnlyANumberIsTakenAndItMayBeNegative)
{
    const auto typeAndStep = [this](const DialogDriver &form) {
        for (const char *noNumber : {"", "십만", "12a"}) {
            form.type("txtMoney", noNumber);
            form.press("cmdConfirm");
            EXPECT_THAT(boxes_.take(), ElementsAre("추가 수납: 수납 금액을 수값으로 입력하십시오."));
            EXPECT_TRUE(form.window()->isVisible());
        }
        form.type("txtMoney", "3000");
        auto *steps = form.find<QWidget>("mudOperationAdd");
        form.find<QWidget>("optOperator_2")->setFocus();
        EXPECT_FALSE(steps->isEnabled());
        form.find<QWidget>("txtMoney")->setFocus();
        steps->findChild<QAbstractButton *>("ssrUpDown_3")->click();
        EXPECT_EQ(form.text("txtMoney"), "-7000");
        QTest::keyClick(form.window()->focusWidget(), Qt::Key_F12);
    };
    EXPECT_TRUE(operationAdd({}, typeAndStep));
    EXPECT_EQ(money_, -7000);
}
