#include "money/frmSimpleReceipt.h"
#include "tests/money/LedgerDesk.h"
#include "tests/support/DialogDriver.h"

#include <QSignalSpy>

namespace {

const std::string connectionFailure =
    "데이터베이스 접속에 문제가 생겼습니다.\r프로그램을 종료하고 네트워크를 확인한 후\r다시 시도해 보십시오.";

/// "수납" pressed on an order, with the dialog driven through its controls.
class ReceiptButton : public LedgerDesk
{
protected:
    void takeReceipt(const std::function<void(const DialogDriver &)> &act)
    {
        EXPECT_TRUE(inDialog([this] { press("chkCmdAutomateReceipt"); }, act));
    }
};

} // namespace

TEST_F(ReceiptButton, AmountsRoundHalfToEvenAndOneThatRoundsToZeroIsWritten)
{
    const ShownOrder first{OrderKey(1), CustomerKey(Patient), {}};
    const QDate day(2026, 11, 24);
    openOrder(1000);
    const struct
    {
        ledger::FirstPayment payment;
        Rows rows;
    } cases[] = {
        {{first, day, 0, 2.5F, 3.5F, 0}, {"2026-11-24|1|2||", "2026-11-24|3|4|00|"}}, // half to even
        {{first, day, 0.4F, 0, 0, 12345600}, {"2026-11-24|2|0||", "2026-11-24|3|12345600|01|"}},
    };
    for (const auto &c : cases) {
        ledger::appendFirstPayment(*gcnnMasterDB, c.payment);
        EXPECT_EQ(ledgerRows(), c.rows);
        atOtherDesk("DELETE FROM tPSTransaction");
    }
}

TEST_F(ReceiptButton, AnUnpaidOrderOfZeroStaysWithoutALedger)
{
    openOrder(0);
    for (int press : {1, 2}) {
        SCOPED_TRACE(press);
        takeReceipt([](const DialogDriver &form) {
            EXPECT_EQ(form.window()->objectName(), QStringLiteral("frmSimpleReceipt"));
            form.press("cmdConfirm");
        });
        EXPECT_THAT(ledgerRows(), IsEmpty());
    }
}

TEST_F(ReceiptButton, AFailureHalfWayIsToldLeavesTheEarlierRowsAndClosesTheDialog)
{
    const struct
    {
        const char16_t *event;
        Rows rows;
    } cases[] = {
        {u"BEFORE INSERT ON tPSTransaction WHEN NEW.tpstrans_Method = '01'",
         {"2026-11-20|1|40||", "2026-11-20|3|300|00|"}},
        {u"BEFORE UPDATE ON tPSOrderMaster", {"2026-11-20|1|40||", "2026-11-20|3|300|00|", "2026-11-20|3|1000|01|"}},
    };
    for (const auto &c : cases) {
        openOrder(12340, QStringLiteral("5"));
        refuse(QString::fromUtf16(c.event));
        bool closed = false;
        takeReceipt([&](const DialogDriver &form) {
            form.type("txtGeneralSuNapMoney_0", "300");
            form.type("txtGeneralSuNapMoney_1", "1000");
            form.press("chkGeneralRemainToMisuMoney");
            form.press("cmdConfirm");
            closed = !form.window()->isVisible();
        });
        EXPECT_TRUE(closed);
        EXPECT_EQ(boxes_.take().size(), 1u);
        EXPECT_EQ(ledgerRows(), c.rows);
        EXPECT_EQ(session_.rsCustTranManage->rowCount(), int(c.rows.size())) << "the list shows what was written";
        EXPECT_EQ(outstanding(), "5");
        EXPECT_FALSE(gcnnMasterDB->inTransaction());
        allowAgain();
        // Nothing of the failed save rides along with a later one.
        ledger::addOutstanding(*gcnnMasterDB, *session_.rsCustSaleMaster, shownOrder(*session_.rsCustSaleMaster),
                               runtime::Currency::fromWon(1));
        EXPECT_EQ(outstanding(), "6");
        atOtherDesk("DELETE FROM tPSTransaction");
    }
}

TEST_F(ReceiptButton, WithoutTheDatabaseOrTheLedgersSumsItSaysSoAndOpensNothing)
{
    ledgerRow(openOrder(12340), "'2026-11-20', 3, 10000, '00', ''");
    // That there are rows can be read, what they come to cannot: all would be asked for once more.
    atOtherDesk("ALTER TABLE tPSTransaction RENAME COLUMN tpstrans_Money TO hidden");
    for (const bool connected : {true, false}) {
        if (!connected)
            gcnnMasterDB.reset();
        EXPECT_FALSE(inDialog([this] { press("chkCmdAutomateReceipt"); }, [](const DialogDriver &) {}));
        EXPECT_THAT(boxes_.take(), ElementsAre("수납 작업: " + connectionFailure));
    }
}

TEST_F(ReceiptButton, AnOrderWithALedgerGetsTheFurtherReceipt)
{
    // outstanding: of the order before; option: chosen
    const struct
    {
        const char *outstanding, *option;
        int method;
        bool recalculates;
        const char *row, *outstandingAfter;
    } cases[] = {
        {"0", "optOperator_2", 0, false, "2026-11-20|3|1000||", "0"},
        {"NULL", "optOperator_2", 1, false, "2026-11-20|3|1000|01|", "NULL"},
        {"5000", "optOperator_2", 2, true, "2026-11-20|3|1000|10|", "4000"},
        {"5000", "optOperator_2", 4, false, "2026-11-20|3|1000|12|", "5000"},
        {"5000", "optOperator_3", 3, true, "2026-11-20|4|1000|11|", "4000"}, // a refund lessens it as well
        {"5000", "optOperator_0", 3, true, "2026-11-20|1|1000||", "4000"},   // a cut bears no method
        {"-300", "optOperator_1", 0, true, "2026-11-20|2|1000||", "-1300"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.row);
        atOtherDesk("DELETE FROM tPSTransaction");
        const int key = openOrder(12340, QString::fromLatin1(c.outstanding));
        ledgerRow(key, "'2026-11-20', 3, 10000, '00', ''");
        takeReceipt([&](const DialogDriver &form) {
            EXPECT_EQ(form.window()->objectName(), QStringLiteral("frmSimpleReceiptAdd"));
            EXPECT_EQ(form.text("txtBonin"), "12,340");
            EXPECT_EQ(form.text("txtPay"), "10,000");
            EXPECT_EQ(form.text("txtMoney"), "2340");
            auto *recalculate = form.find<QCheckBox>("chkAutoMisuMoney");
            const bool owes = QByteArray(c.outstanding) != "0" && QByteArray(c.outstanding) != "NULL";
            EXPECT_EQ(recalculate->isVisible(), owes);
            EXPECT_EQ(recalculate->isChecked(), owes);
            form.press(c.option);
            form.find<QComboBox>("cboPayMothod")->setCurrentIndex(c.method);
            recalculate->setChecked(c.recalculates);
            form.type("txtMoney", "1,000");
            form.press("cmdConfirm");
        });
        EXPECT_EQ(ledgerRows().back(), c.row);
        EXPECT_EQ(ledgerRows().size(), 2u);
        EXPECT_EQ(outstanding(), c.outstandingAfter);
        EXPECT_EQ(session_.rsCustTranManage->rowCount(), 2);
    }
    takeReceipt([this](const DialogDriver &form) {
        ledgerRow(1, "'2026-11-21', 3, 70, '00', ''"); // at another desk
        atOtherDesk("UPDATE tPSTransaction SET tpstrans_OrderM_PK = (SELECT MAX(OrdM_PK) FROM tPSOrderMaster)");
        form.press("cmdCancel");
    });
    EXPECT_EQ(ledgerRows().size(), 3u);
    EXPECT_EQ(session_.rsCustTranManage->rowCount(), 3) << "the ledger is read anew after a cancellation as well";
    EXPECT_EQ(outstanding(), "-1300");
    EXPECT_THAT(boxes_.take(), IsEmpty());

    refuse("BEFORE UPDATE ON tPSOrderMaster");
    takeReceipt([](const DialogDriver &form) { form.press("cmdConfirm"); });
    EXPECT_EQ(ledgerRows().size(), 4u);
    EXPECT_EQ(session_.rsCustTranManage->rowCount(), 4) << "a row that is written shows, whatever comes after it";
    EXPECT_EQ(boxes_.take().size(), 1u);
}

TEST_F(ReceiptButton, WhatIsSavedIsToldOnceAndWhatAnotherDeskWroteIsReadAnew)
{
    QSignalSpy done(&session_, &SaleSession::done);
    QSignalSpy anew(&session_, &SaleSession::changedElsewhere);
    const std::string changed = "변경된 내용:\n2026-11-20 수납 300원 (현금) → 2026-11-20 수납 0원 (현금)\n"
                                "미수금 4,700원 → 4,000원";
    const struct
    {
        bool meanwhile; ///< another desk writes while the dialog stands
        const char *amount, *pressed, *told;
    } cases[] = {
        {false, "txtGeneralSuNapMoney_0", "cmdConfirm", "수납 · 받을 금액 ₩12,000"},
        {false, "txtMoney", "cmdCancel", ""},
        {false, "txtMoney", "cmdConfirm", "수납 · 받을 금액 ₩11,700"},
        {true, "txtMoney", "cmdConfirm", ""}, // answered No
    };
    openOrder(12340, QStringLiteral("5000"));
    for (const auto &c : cases) {
        SCOPED_TRACE(c.amount + std::string(c.pressed));
        takeReceipt([&](const DialogDriver &form) {
            if (c.meanwhile) {
                atOtherDesk("UPDATE tPSTransaction SET tpstrans_Money = NULL WHERE tpstrans_PK = 2");
                atOtherDesk("UPDATE tPSOrderMaster SET OrdM_Misugum = 4000");
            }
            form.type(c.amount, "300");
            form.press(c.pressed);
        });
        EXPECT_EQ(done.isEmpty() ? "" : done.takeFirst().at(0).toString().toStdString(), c.told);
        EXPECT_TRUE(done.isEmpty());
        EXPECT_EQ(anew.count(), c.meanwhile ? 1 : 0);
    }
    EXPECT_THAT(boxes_.take(), ElementsAre(testing::EndsWith(changed)));
}

TEST_F(ReceiptButton, ARowIsChangedButForItsMethodAndMemo)
{
    const int key = openOrder(12340, QStringLiteral("5"));
    ledgerRow(key, "'2026-11-20', 3, 10000, '01', '메모'");
    pane_->requeryCustTranManage();
    const auto edit = [this](const char *option) {
        const auto change = [option](const DialogDriver &form) {
            EXPECT_EQ(form.find<QDateEdit>("dtpTodat")->date(), QDate::currentDate());
            EXPECT_EQ(form.text("txtMoney"), "0");
            form.find<QDateEdit>("dtpTodat")->setDate(QDate(2026, 11, 23));
            form.type("txtMoney", "4000");
            if (option)
                form.press(option);
            form.press("cmdConfirm");
        };
        EXPECT_TRUE(inDialog([this] { press("chkcmdAddEditDelTran_1"); }, change));
    };
    edit("optOperator_3");
    EXPECT_THAT(ledgerRows(), ElementsAre("2026-11-23|4|4000|01|메모"));
    EXPECT_EQ(outstanding(), "5");
    EXPECT_EQ(text("txtTranTotalAmount"), "\\16,340");
    // Without a choice it keeps its operator, and none.
    for (const char *kept : {"1", "2", "3", "4", "NULL"}) {
        atOtherDesk(QStringLiteral("UPDATE tPSTransaction SET tpstrans_Operator = %1").arg(QLatin1String(kept)));
        pane_->requeryCustTranManage();
        edit(nullptr);
        EXPECT_THAT(ledgerRows(), ElementsAre("2026-11-23|" + std::string(kept) + "|4000|01|메모"));
    }

    refuse("BEFORE UPDATE ON tPSTransaction");
    edit("optOperator_0");
    EXPECT_THAT(boxes_.take(), ElementsAre("데이터베이스 접속 오류: " + connectionFailure));
    EXPECT_THAT(ledgerRows(), ElementsAre("2026-11-23|NULL|4000|01|메모"));
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    allowAgain();
}

TEST_F(ReceiptButton, DiscountsCanBeSwitchedOffForTheShop)
{
    for (const bool off : {false, true}) {
        SCOPED_TRACE(off);
        atOtherDesk("DELETE FROM tPSProperties");
        atOtherDesk(
            QStringLiteral("INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('수납시할인사용안함', '%1')")
                .arg(off ? QStringLiteral("1") : QStringLiteral("yes")));
        frmSimpleReceipt dialog;
        const DialogDriver form(&dialog);
        EXPECT_EQ(form.find<QWidget>("txtGeneralHalInMoney")->isEnabled(), !off);
        EXPECT_EQ(form.find<QWidget>("optOperator_1")->isEnabled(), !off);
        dialog.Operation(0, 41, QString(), QString(), QDate(2026, 11, 20), 1000, 1, -1, QDate(2026, 11, 20), 0,
                         QStringLiteral("할인"), nullptr);
        EXPECT_TRUE(form.checked(off ? "optOperator_2" : "optOperator_1"));
    }
}

TEST_F(ReceiptButton, TellsWhatIsOwedAlreadyAndWhichRowIsChanged)
{
    const struct
    {
        const char *owed, *told;
    } debts[] = {{"NULL", ""}, {"0", ""}, {"-5", ""}, {"12000", "이미 기록된 미수금 ₩12,000"}};
    for (const auto &debt : debts) {
        openOrder(20000, QString::fromLatin1(debt.owed));
        takeReceipt([&](const DialogDriver &form) {
            const auto *label = form.find<QLabel>("lblOutstanding");
            EXPECT_EQ(label->isVisible() ? label->text().toStdString() : "", debt.told);
        });
    }
    const std::string chosen = "선택한 내역: 2026-04-04 · ";
    const struct
    {
        const char *row;
        std::string line;
    } cases[] = {
        {"'2026-04-04', 3, 310000, '01', ''", chosen + "수납 · ₩310,000 · 카드"},
        {"'2026-04-04', 3, 2000, NULL, ''", chosen + "수납 · ₩2,000 · 현금"},
        {"'2026-04-04', 1, -50, '', ''", chosen + "절사 · -₩50"},
    };
    for (const auto &c : cases) {
        const int key = openOrder(0);
        ledgerRow(key, c.row);
        pane_->loadCustTranManage(Patient, key);
        EXPECT_TRUE(inDialog([this] { press("chkcmdAddEditDelTran_1"); },
                             [&](const DialogDriver &form) {
                                 const auto warned = [&] {
                                     const QColor red =
                                         form.find<QLabel>("lblEditedRow")->palette().windowText().color();
                                     return form.text("lblZeroMoney") + (red == QColor(0xB3, 0x26, 0x1E) ? " red" : "");
                                 };
                                 EXPECT_EQ(form.text("lblEditedRow"), c.line);
                                 EXPECT_EQ(form.focus(), "txtMoney");
                                 EXPECT_EQ(form.text("txtMoney"), "0");
                                 EXPECT_EQ(warned(), "금액이 0으로 바뀝니다 red");
                                 form.type("txtMoney", "5");
                                 EXPECT_EQ(warned(), "");
                             }));
    }
}
