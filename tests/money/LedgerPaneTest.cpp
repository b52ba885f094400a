#include "platform/controls/Appearance.h"
#include "tests/money/LedgerDesk.h"

namespace {

class LedgerOfAnOrder : public LedgerDesk
{
protected:
    /// Index of the operator option that is on, and of the method chosen.
    std::pair<int, int> choices() const
    {
        int option = -1;
        for (int index = 0; index < 4; ++index) {
            if (find<QRadioButton>(qPrintable(QStringLiteral("optTransOperator_%1").arg(index)))->isChecked())
                option = index;
        }
        return {option, find<QComboBox>("cboPayMethod")->currentIndex()};
    }
    /// "total left typed"
    std::string amounts() const
    {
        return text("txtTranTotalAmount") + " " + text("txtTranLeftAmount") + " " + text("txtTransMoney");
    }
    QDate shownDate() const { return find<QDateEdit>("dtpTransReceiveDate")->date(); }
};

} // namespace

TEST_F(LedgerOfAnOrder, ARowShowsItsKindAndMediumButNotItsAmount)
{
    const QDate day(2026, 11, 21);
    const QDate never(1900, 1, 1);
    const struct
    {
        const char *row;
        QDate date;
        int option, method;
        const char *memo;
    } cases[] = {
        {"'2026-11-21', 1, 40, '', '절사함'", day, 1, 0, "절사함"},
        {"'2026-11-21', 2, 300, NULL, NULL", day, 0, 0, ""},
        {"NULL, NULL, 500, '00', ''", never, 2, 1, ""},
        {"'2026-11-21', 3, 500, '01', ''", day, 2, 2, ""},
        {"'2026-11-21', 4, 500, '10', ''", day, 3, 3, ""},
        {"'2026-11-21', 3, 500, '11', ''", day, 2, 4, ""},
        {"'2026-11-21', 3, 500, '12', ''", day, 2, 5, ""},
        // Codes that the form has no place for leave what stands.
        {"'2026-11-21', 9, 500, '02', ''", day, 2, 0, ""},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.row);
        ledgerRow(openOrder(12340), c.row);
        pane_->requeryCustTranManage();
        EXPECT_EQ(shownDate(), c.date);
        EXPECT_EQ(choices(), std::pair(c.option, c.method));
        EXPECT_EQ(text("txtTransMemo"), c.memo);
        EXPECT_EQ(text("txtTransMoney"), "\\0");
        EXPECT_EQ(text("txtTranLeftAmount"), text("txtTranTotalAmount"));
        EXPECT_EQ(find<QAbstractButton>("chkTransMisuMoneyRecalculate")->isChecked(), c.option == 3);
    }
}

TEST_F(LedgerOfAnOrder, ATypedAmountLessensWhatIsLeftUnlessItIsARefund)
{
    ledgerRow(openOrder(2700), "'2026-11-21', 1, 700, '', ''");
    pane_->requeryCustTranManage();
    auto *money = find<QLineEdit>("txtTransMoney");
    money->setText("\\500");
    EXPECT_EQ(amounts(), "\\2,000 \\1,500 \\500");
    auto *recalculate = find<QCheckBox>("chkTransMisuMoneyRecalculate");
    const bool recalculated[] = {false, false, true, true}; // discount, cut, payment, refund
    for (int option : {0, 1, 2, 3}) {
        find<QRadioButton>(qPrintable(QStringLiteral("optTransOperator_%1").arg(option)))->setChecked(true);
        EXPECT_EQ(recalculate->isChecked(), recalculated[option]) << option;
        EXPECT_EQ(controls::foreColor(find<QLineEdit>("txtTranLeftAmount")),
                  controls::ink(option == 3 ? controls::Ink::Faint : controls::Ink::Plain))
            << option;
    }
    money->setText("\\1,000");
    EXPECT_EQ(amounts(), "\\2,000 \\1,500 \\1,000");
}

TEST_F(LedgerOfAnOrder, WithoutOrderOrSessionTheFormIsEmptyAndTheButtonsDoNothing)
{
    const auto pressAll = [this] {
        for (const char *name : {"chkCmdAutomateReceipt", "chkCmdRunMisuMoneyManger", "chkcmdAddEditDelTran_0",
                                 "chkcmdAddEditDelTran_1", "chkCmdSaveMemo"})
            press(name);
        pane_->showRow();
        pane_->requeryCustTranManage();
        flow_->takeReceipt();
        flow_->editCurrentRow();
    };
    pressAll();
    EXPECT_THAT(boxes_.take(), IsEmpty());
    pane_->loadCustTranManage(-1, -1);
    pressAll();
    EXPECT_EQ(amounts(), "\\0 \\0 \\0");
    EXPECT_THAT(boxes_.take(), IsEmpty());

    press("chkcmdAddEditDelTran_2");
    openOrder(2700);
    press("chkcmdAddEditDelTran_1");
    flow_->editCurrentRow();
    QTest::mouseDClick(find<QTableView>("tdbCustTranManage")->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_THAT(boxes_.take(), ElementsAre(": 선택된 수납내역이 없습니다.", ": 선택된 수납내역이 없습니다.",
                                           ": 선택된 수납내역이 없습니다."));

    gcnnMasterDB.reset();
    pane_->loadCustTranManage(Patient, 1);
    EXPECT_THAT(boxes_.take(), ElementsAre("데이터 가져오기: 수납 정보를 가져오지 못했습니다."));
}

TEST_F(LedgerOfAnOrder, AMemoIsSavedTrimmedAndARowIsDeletedWithoutAQuestion)
{
    const int key = openOrder(2700, QStringLiteral("500"));
    ledgerRow(key, "'2026-11-21', 3, 1000, '00', '첫째'");
    ledgerRow(key, "'2026-11-22', 3, 700, '01', '둘째'");
    pane_->requeryCustTranManage();
    find<QLineEdit>("txtTransMemo")->setText("  it's paid ");
    press("chkCmdSaveMemo");
    EXPECT_THAT(ledgerRows(), ElementsAre("2026-11-21|3|1000|00|it's paid", "2026-11-22|3|700|01|둘째"));

    pane_->requeryCustTranManage();
    refuse("BEFORE DELETE ON tPSTransaction");
    press("chkcmdAddEditDelTran_2");
    EXPECT_THAT(boxes_.take(), ElementsAre("수납삭제: 수납내역을 삭제하지 못했습니다. "));
    allowAgain();
    press("chkcmdAddEditDelTran_2");
    EXPECT_THAT(ledgerRows(), ElementsAre("2026-11-22|3|700|01|둘째"));
    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_EQ(outstanding(), "500");
}
