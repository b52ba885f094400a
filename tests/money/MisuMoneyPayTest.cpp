#include "money/frmMisuMoneyPay.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/money/LedgerDesk.h"
#include "tests/support/DialogDriver.h"

namespace {

/// The payment dialog for an order of 12,340 of 2026-11-20 that owes 5,000.
class OutstandingPayment : public LedgerDesk
{
protected:
    OutstandingPayment() { order_ = order("2026-11-20"); }

    bool ask(const std::function<void(const DialogDriver &)> &act, qint32 total = 12340)
    {
        bool taken = false;
        const auto open = [&] {
            frmMisuMoneyPay dialog;
            taken = dialog.MisuMoneyPayBoninGeneral(gcnnMasterDB, QStringLiteral("C-1"), QStringLiteral("홍길동"),
                                                    QDate(2026, 11, 20), order_, 5000, total, date_, money_, method_);
        };
        EXPECT_TRUE(inDialog(open, act));
        return taken;
    }

    int order_ = 0;
    QDate date_;
    qint32 money_ = 0;
    QString method_;
};

} // namespace

TEST_F(OutstandingPayment, ShowsTheOrderAndWhatWasTakenOnItsDay)
{
    for (const char *row :
         {"'2026-11-20', 1, 40, '', ''", "'2026-11-20', 2, 300, '', ''", "'2026-11-20', 3, 7000, '00', ''",
          "'2026-11-20', 3, 1000, '01', ''", "'2026-11-20', 4, 1000, '00', ''",
          "'2026-11-21', 3, 2000, '10', ''"}) // a later payment does not show
        ledgerRow(order_, row);
    EXPECT_FALSE(ask([](const DialogDriver &form) {
        EXPECT_EQ(form.window()->windowTitle(), QStringLiteral("미수금 수납"));
        const struct
        {
            const char *name, *text;
        } cases[] = {
            {"txtName", "홍길동"},           {"txtChartnum", "C-1"},        {"txtReceiptTxDate", "2026-11-20"},
            {"txtReceiptGeneral", "12,340"}, {"txtReceiptBonin", ""},       {"txtReceiptCheonggu", ""},
            {"txtGeneralCut", "40"},         {"txtGeneralDiscount", "300"}, {"txtGeneralPay", "8,000"},
            {"txtGeneralRefund", "1,000"},   {"txtGeneralSunap", "5000"},   {"txtBoninCut", ""},
            {"txtBoninDiscount", ""},        {"txtBoninPay", ""},           {"txtBoninRefund", ""},
        };
        for (const auto &c : cases)
            EXPECT_EQ(form.text(c.name), c.text) << c.name;
        EXPECT_EQ(form.find<QDateEdit>("dtpTodat")->date(), QDate::currentDate());
        EXPECT_EQ(form.find<QComboBox>("cboGeneralPayMethod")->currentText(), QStringLiteral("미수(현금)"));
    }));
    EXPECT_EQ(money_, 5000) << "what is left of the order by this summary";
}

TEST_F(OutstandingPayment, HandsBackWhatWasTypedAndChosen)
{
    const struct
    {
        const char *typed;
        int entry;
        qint32 money;
        const char *method;
    } cases[] = {
        {"5000", 0, 5000, "10"}, {"1,500", 1, 1500, "11"}, {"-300", 2, -300, "12"},
        {"0", 0, 0, "10"},       {"2.5", 0, 2, "10"},      {"3.5", 0, 4, "10"},
    };
    for (const auto &c : cases) {
        EXPECT_TRUE(ask([&](const DialogDriver &form) {
            form.find<QDateEdit>("dtpTodat")->setDate(QDate(2026, 12, 1));
            form.type("txtGeneralSunap", c.typed);
            form.find<QComboBox>("cboGeneralPayMethod")->setCurrentIndex(c.entry);
            form.key(Qt::Key_F12);
        }));
        EXPECT_EQ(money_, c.money) << c.typed;
        EXPECT_EQ(method_, QString::fromLatin1(c.method));
        EXPECT_EQ(date_, QDate(2026, 12, 1));
    }
}

TEST_F(OutstandingPayment, OnlyANumberThatFitsIsTaken)
{
    EXPECT_FALSE(ask([this](const DialogDriver &form) {
        for (const char *noNumber : {"", "12a"}) {
            form.type("txtGeneralSunap", noNumber);
            form.press("cmdConfirm");
            EXPECT_THAT(boxes_.take(), ElementsAre("미수금 수납: 수납 금액을 수값으로 입력하십시오."));
            EXPECT_TRUE(form.window()->isVisible());
        }
        form.key(Qt::Key_F9);
        EXPECT_FALSE(form.window()->isVisible());
    }));
    EXPECT_FALSE(ask([](const DialogDriver &form) { form.key(Qt::Key_Escape); }));
    EXPECT_THROW(ask([](const DialogDriver &form) {
                     form.type("txtGeneralSunap", "99999999999");
                     form.press("cmdConfirm");
                 }),
                 runtime::RuntimeError);
    ledgerRow(order_, "'2026-11-20', 4, 2000000000, '00', ''");
    frmMisuMoneyPay dialog;
    EXPECT_THROW(dialog.MisuMoneyPayBoninGeneral(gcnnMasterDB, QString(), QString(), QDate(2026, 11, 20), order_, 1,
                                                 2000000000, date_, money_, method_),
                 runtime::RuntimeError);
    EXPECT_THAT(boxes_.take(), IsEmpty());
}
