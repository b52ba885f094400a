#include "money/frmSimpleReceipt.h"
#include "platform/controls/Modal.h"
#include "tests/support/DialogDriver.h"

#include <gmock/gmock.h>

#include <optional>

using testing::ElementsAre;

namespace {

struct Payment
{
    QDate date;
    std::vector<float> amounts; ///< discount, cut, cash, card, outstanding
};

/// The dialog as it comes up for a new payment, without a database.
class SimpleReceipt : public testing::Test
{
protected:
    void open(qint32 total)
    {
        payment_.reset();
        dialog_ = std::make_unique<frmSimpleReceipt>();
        QObject::connect(dialog_.get(), &frmSimpleReceipt::AppendDBGeneral,
                         [this](qint32 customer, const QDate &date, float discount, float cut, float cash, float card,
                                float outstanding, qint32 order, const QString &chart) {
                             EXPECT_EQ(customer, 41);
                             EXPECT_EQ(order, 7);
                             EXPECT_EQ(chart, QStringLiteral("C-1"));
                             payment_ = Payment{date, {discount, cut, cash, card, outstanding}};
                         });
        dialog_->Operation(0, 41, QStringLiteral("홍길동"), QStringLiteral("C-1"), QDate(2026, 11, 20), total, 7, 0,
                           QDate(2026, 11, 24), 0, QStringLiteral("0"), nullptr);
        form_.emplace(dialog_.get());
    }
    void chooseCut(int entry) { form_->find<QComboBox>("cboGeneralJeolsaGubun")->setCurrentIndex(entry); }
    void applyPercent(const char *percent)
    {
        form_->find<QComboBox>("cboGeneralPercent")->setEditText(QString::fromLatin1(percent));
        form_->press("chkGeneralHalinConfirm");
    }
    std::vector<float> save()
    {
        form_->press("cmdConfirm");
        EXPECT_FALSE(dialog_->isVisible());
        return payment_ ? payment_->amounts : std::vector<float>{};
    }
    /// "discount cut cash card remain | amount after discount and cut"
    std::string figures() const
    {
        const auto text = [this](const char *name) { return form_->text(name) + " "; };
        return text("txtGeneralHalInMoney") + text("txtGeneralJeolSaMoney") + text("txtGeneralSuNapMoney_0")
               + text("txtGeneralSuNapMoney_1") + text("lblGeneralRemain") + "| " + form_->text("lblMustReceipt_2");
    }

    std::unique_ptr<frmSimpleReceipt> dialog_;
    std::optional<DialogDriver> form_;
    std::optional<Payment> payment_;
};

} // namespace

TEST_F(SimpleReceipt, ComesUpWithTheOrdersDayAndTheTotalInCashButForTheSmallMoney)
{
    open(12340);
    EXPECT_EQ(form_->text("lblGeneral"), "12,340");
    EXPECT_EQ(form_->text("lblMustReceipt_0"), "12,340");
    EXPECT_EQ(form_->text("txtGeneral"), "12340");
    EXPECT_EQ(form_->text("txtDate"), "2026-11-20");
    EXPECT_EQ(form_->find<QDateEdit>("dtpTodat")->date(), QDate(2026, 11, 20));
    EXPECT_EQ(figures(), "0 40 12300 0 0 | 12,300");
    EXPECT_TRUE(form_->find<QWidget>("fraNewSunap")->isVisible());
    EXPECT_FALSE(form_->find<QWidget>("fraOldSunap")->isVisible());

    form_->find<QCheckBox>("chkBonin100")->setChecked(true); // no shares here: the base stays
    EXPECT_EQ(form_->text("lblMustReceipt_0"), form_->text("lblGeneral"));
    EXPECT_THAT(save(), ElementsAre(0, 40, 12300, 0, 0));
    EXPECT_EQ(payment_->date, QDate(2026, 11, 20));
}

TEST_F(SimpleReceipt, DiscountAndCutLeaveTheCashToBePaid)
{
    const struct
    {
        qint32 total;
        int cutEntry;
        const char *discount, *figures;
    } cases[] = {
        {12340, 0, "0", "0 0 12340 0 0 | 12,340"},     {12345, 1, "0", "0 5 12340 0 0 | 12,340"},
        {12340, 2, "0", "0 40 12300 0 0 | 12,300"},    {12340, 3, "340", "340 0 12000 0 0 | 12,000"},
        {12340, 2, "", " 40 12300 0 0 | 12,300"},      // an empty discount is 0
        {1000, 2, "1250", "1250 -50 -200 0 0 | -200"}, // the cut follows the sign
        {-1250, 2, "0", "0 -50 -1200 0 0 | -1,200"},   // an order of returns
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.figures);
        open(c.total);
        chooseCut(c.cutEntry);
        form_->type("txtGeneralHalInMoney", c.discount);
        EXPECT_EQ(figures(), c.figures);
    }
}

TEST_F(SimpleReceipt, APercentRoundsHalfToEven)
{
    const struct
    {
        qint32 total;
        const char *percent;
        int cutEntry;
        const char *figures;
    } cases[] = {
        {9999, "10", 2, "1000 99 8900 0 0 | 8,900"}, {125, "10", 0, "12 0 113 0 0 | 113"},
        {135, "10", 0, "14 0 121 0 0 | 121"},        {12340, "", 2, "0 40 12300 0 0 | 12,300"},
        {12340, "100", 2, "12340 0 0 0 0 | 0"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.total);
        open(c.total);
        chooseCut(c.cutEntry);
        applyPercent(c.percent);
        EXPECT_EQ(figures(), c.figures);
    }
}

// Single precision and seven digits of text: that is how the dialog counts, and it is meant to stay.
TEST_F(SimpleReceipt, AmountsOfEightDigitsLoseTheirLastOnes)
{
    open(12345678);
    EXPECT_EQ(form_->text("lblGeneral"), "12,345,678");
    EXPECT_EQ(form_->text("lblMustReceipt_0"), "12,345,680");
    EXPECT_EQ(figures(), "0 78 1.23456E+07 0 0 | 12,345,600");
    EXPECT_THAT(save(), ElementsAre(0, 78, 12345600, 0, 0));

    open(33333333); // no single has this value; the next one is 33,333,332
    chooseCut(0);
    EXPECT_EQ(figures(), "0 0 3.333333E+07 0 2 | 33,333,330");
}

TEST_F(SimpleReceipt, ButtonsPutTheRestWhereTheySay)
{
    const struct
    {
        const char *button, *cash, *card, *figures;
    } cases[] = {
        {"chkGeneralRemain2Money_0", "1", "2", "300 40 12000 0 0 | 12,000"},
        {"chkGeneralRemain2Money_1", "1", "2000", "300 40 10000 2000 0 | 12,000"},
        {"chkGeneralRemain2Money_2", "1", "2", "300 40 0 12000 0 | 12,000"},
        {"chkGeneralRemain2Money_3", "5000", "2", "300 40 5000 7000 0 | 12,000"},
        {"chkAllSetting_0", "1", "2", "300 40 0 12000 0 | 12,000"},
        {"chkAllSetting_1", "1", "2", "300 40 12000 0 0 | 12,000"},
        {"chkAllSetting_2", "1", "2", "300 40 0 0 12,000 | 12,000"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.button);
        open(12340);
        form_->type("txtGeneralHalInMoney", "300");
        form_->type("txtGeneralSuNapMoney_0", c.cash);
        form_->type("txtGeneralSuNapMoney_1", c.card);
        form_->press(c.button);
        EXPECT_EQ(figures(), c.figures);
        EXPECT_EQ(form_->checked("chkGeneralRemainToMisuMoney"),
                  QLatin1String(c.button) == QLatin1String("chkAllSetting_2"));
    }
}

TEST_F(SimpleReceipt, TheRemainderGoesToOnePlaceOrNone)
{
    // box: ticked, nullptr for none
    const struct
    {
        const char *box, *cash;
        std::vector<float> saved;
    } cases[] = {
        {nullptr, "10000", {0, 40, 10000, 0, 0}},
        {"chkGeneralRemainToHalin", "10000", {2300, 40, 10000, 0, 0}},
        {"chkGeneralRemainToMisuMoney", "10000", {0, 40, 10000, 0, 2300}},
        // Too much paid: the remainder is negative and stays so.
        {nullptr, "15000", {0, 40, 15000, 0, 0}},
        {"chkGeneralRemainToHalin", "15000", {-2700, 40, 15000, 0, 0}},
        {"chkGeneralRemainToMisuMoney", "15000", {0, 40, 15000, 0, -2700}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.saved));
        open(12340);
        form_->type("txtGeneralSuNapMoney_0", c.cash);
        if (c.box)
            form_->find<QCheckBox>(c.box)->setChecked(true);
        EXPECT_EQ(save(), c.saved);
    }

    open(10050);
    form_->press("chkAllSetting_2");
    EXPECT_THAT(save(), ElementsAre(0, 50, 0, 0, 10000));

    open(12340);
    form_->press("chkGeneralRemainToHalin");
    form_->press("chkGeneralRemainToMisuMoney");
    EXPECT_FALSE(form_->checked("chkGeneralRemainToHalin"));
    form_->press("chkGeneralRemainToHalin");
    EXPECT_FALSE(form_->checked("chkGeneralRemainToMisuMoney"));
}

// The discount typed makes up for the cash that was typed before: what is left is nothing, not what was left then.
TEST_F(SimpleReceipt, TheRemainderFollowsAlsoWhenThePaymentStaysTheSame)
{
    open(12340);
    form_->type("txtGeneralSuNapMoney_0", "12000");
    EXPECT_EQ(form_->text("lblGeneralRemain"), "300");
    form_->type("txtGeneralHalInMoney", "300");
    EXPECT_EQ(figures(), "300 40 12000 0 0 | 12,000");

    QTest::keyClicks(form_->find<QLineEdit>("txtGeneralJeolSaMoney"), QStringLiteral("0"));
    EXPECT_EQ(figures(), "300 400 12000 0 -360 | 11,640");
}

TEST_F(SimpleReceipt, ItsWindowMayGoWhileTheAmountsAreBeingWritten)
{
    auto *window = new QWidget;
    window->show();
    const controls::Modal<frmSimpleReceipt> dialog(window);
    QObject::connect(dialog.get(), &frmSimpleReceipt::AppendDBGeneral, [window] { delete window; });
    const auto open = [&] {
        dialog->Operation(1, 41, QStringLiteral("홍길동"), QStringLiteral("C-1"), QDate(2026, 11, 20), 10000, 7, 0,
                          QDate(2026, 11, 24), 0, QStringLiteral("0"), window);
    };
    EXPECT_TRUE(inDialog(open, [](const DialogDriver &form) { form.press("cmdConfirm"); }));
    EXPECT_FALSE(dialog);
}

TEST_F(SimpleReceipt, NotesARemainderThatNobodyRecords)
{
    const std::string note = "미수금에 기록되지 않습니다";
    open(10000);
    const auto noteAfter = [&](const char *box, bool on, const char *cash) {
        if (*box)
            form_->find<QCheckBox>(box)->setChecked(on);
        form_->type("txtGeneralSuNapMoney_0", cash);
        return form_->text("lblRemainNote");
    };
    EXPECT_EQ(form_->text("lblRemainNote"), "");
    EXPECT_EQ(noteAfter("", false, "9000"), note);
    EXPECT_EQ(noteAfter("chkGeneralRemainToMisuMoney", true, "9000"), "");
    EXPECT_EQ(noteAfter("chkGeneralRemainToMisuMoney", false, "9000"), note);
    EXPECT_EQ(noteAfter("chkGeneralRemainToHalin", true, "9000"), "");
    EXPECT_EQ(noteAfter("chkGeneralRemainToHalin", false, "11000"), "") << "paid too much";
}
