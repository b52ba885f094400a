#include "money/LedgerEntry.h"
#include "tests/money/LedgerDesk.h"

using runtime::Currency;

namespace {

const std::string notSaved = "저장: 저장을 하지 못했습니다. 서버와의 연결을 확인하십시오.";

/// The form's own save, which no button of the window opens.
class LedgerSave : public LedgerDesk, public testing::WithParamInterface<ado::Engine>
{
protected:
    LedgerSave()
        : LedgerDesk(GetParam())
    {
    }
    void fill(int option, int method, const char *money, bool recalculates)
    {
        find<QDateEdit>("dtpTransReceiveDate")->setDate(QDate(2026, 11, 23));
        find<QRadioButton>(qPrintable(QStringLiteral("optTransOperator_%1").arg(option)))->setChecked(true);
        find<QComboBox>("cboPayMethod")->setCurrentIndex(method);
        find<QLineEdit>("txtTransMoney")->setText(QString::fromLatin1(money));
        find<QLineEdit>("txtTransMemo")->setText(" 메모 ");
        find<QCheckBox>("chkTransMisuMoneyRecalculate")->setChecked(recalculates);
    }
};

} // namespace

TEST_P(LedgerSave, AnAddedRowHoldsTheFormAndTheOutstandingMoneyFollowsPaymentsAndRefunds)
{
    // outstanding: before, of an order of 10,000
    const struct
    {
        int option, method;
        bool recalculates;
        const char *outstanding, *row, *outstandingAfter;
    } cases[] = {
        {0, 0, true, "700", "2026-11-23|2|5000|NULL|메모", "700"},
        {1, 1, true, "700", "2026-11-23|1|5000|00|메모", "700"},
        {2, 2, true, "700", "2026-11-23|3|5000|01|메모", "5000"}, // what is left of the order
        {2, 3, true, "NULL", "2026-11-23|3|5000|10|메모", "5000"},
        {2, 4, false, "700", "2026-11-23|3|5000|11|메모", "700"},
        {3, 5, true, "NULL", "2026-11-23|4|5000|12|메모", "0"},
        {3, 0, true, "1000", "2026-11-23|4|5000|NULL|메모", "6000"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.row);
        atOtherDesk("DELETE FROM tPSTransaction");
        const int key = openOrder(10000, QString::fromLatin1(c.outstanding));
        fill(c.option, c.method, "\\5,000", c.recalculates);
        pane_->saveTrans(0);
        EXPECT_THAT(ledgerRows(), ElementsAre(c.row));
        EXPECT_THAT(rows("SELECT tpstrans_Customer_PK, tpstrans_OrderM_PK FROM tPSTransaction"),
                    ElementsAre("41|" + std::to_string(key)));
        EXPECT_EQ(outstanding(), c.outstandingAfter);
        EXPECT_EQ(text("txtTransMoney"), "\\0");
        EXPECT_EQ(shell_.left.back(), "02");
    }
    EXPECT_THAT(boxes_.take(), IsEmpty());
}

TEST_P(LedgerSave, AChangedRowKeepsItsOperatorAndTheOutstandingMoneyFollowsWhateverItIs)
{
    const int key = openOrder(10000, QStringLiteral("700"));
    ledgerRow(key, "'2026-11-20', 2, 300, '01', '옛것'");
    for (const bool recalculates : {false, true}) {
        pane_->requeryCustTranManage();
        fill(2, 5, "\\4,000", recalculates);
        pane_->saveTrans(1);
        EXPECT_THAT(ledgerRows(), ElementsAre("2026-11-23|2|4000|12|메모"));
        EXPECT_EQ(outstanding(), recalculates ? "6000" : "700");
    }
    EXPECT_THAT(boxes_.take(), IsEmpty());
}

TEST_P(LedgerSave, AFailureIsToldAndLeavesEverythingAsItWas)
{
    const int key = openOrder(10000, QStringLiteral("700"));
    ledgerRow(key, "'2026-11-20', 3, 300, '01', '옛것'");
    const struct
    {
        qint16 mode;
        const char16_t *event;
        const char *money;
    } cases[] = {
        {0, u"BEFORE INSERT ON tPSTransaction", "\\5,000"},
        {1, u"BEFORE UPDATE ON tPSTransaction", "\\5,000"},
        {1, u"BEFORE UPDATE ON tPSOrderMaster", "\\5,000"}, // the row has been changed by then
        {0, u"BEFORE DELETE ON tPSTransaction", "none"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(qPrintable(QString::fromUtf16(c.event)));
        pane_->requeryCustTranManage();
        refuse(QString::fromUtf16(c.event));
        fill(3, 1, c.money, true);
        pane_->saveTrans(c.mode);
        EXPECT_THAT(boxes_.take(), ElementsAre(notSaved));
        EXPECT_THAT(ledgerRows(), ElementsAre("2026-11-20|3|300|01|옛것"));
        EXPECT_EQ(outstanding(), "700");
        EXPECT_EQ(session_.rsCustTranManage->rowCount(), 1);
        EXPECT_EQ(text("txtTransMemo"), "옛것");
        EXPECT_FALSE(gcnnMasterDB->inTransaction());
        allowAgain();
    }
    const ado::ConnectionPtr connection = std::exchange(gcnnMasterDB, nullptr);
    for (const qint16 mode : {0, 1}) {
        fill(3, 1, "\\5,000", true);
        pane_->saveTrans(mode);
        EXPECT_THAT(boxes_.take(), ElementsAre(notSaved)) << "without a connection";
    }
    gcnnMasterDB = connection;
    // The row of an addition is saved before the outstanding money, which fails on its own.
    refuse("BEFORE UPDATE ON tPSOrderMaster");
    fill(2, 1, "\\500", true);
    pane_->saveTrans(0);
    EXPECT_EQ(ledgerRows().size(), 2u);
    EXPECT_EQ(outstanding(), "700");
    ASSERT_EQ(boxes_.boxes.size(), 1u);
    EXPECT_EQ(boxes_.boxes[0].title, QStringLiteral("미수금 재계산"));
}

INSTANTIATE_TEST_SUITE_P(Engines, LedgerSave, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL),
                         engineName);
