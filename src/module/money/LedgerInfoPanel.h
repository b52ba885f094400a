#pragma once

#include "data/Codes.h"
#include "forms/MoneyBox.h"
#include "forms/PaneContract.h"
#include "money/LedgerEntry.h"
#include "platform/ado/Recordset.h"
#include "platform/controls/PushCheck.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Currency.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QWidget>

#include <array>
#include <optional>

/// The form beside the ledger: one row's date, kind, medium and memo, the balance of the order, and an amount to be typed
/// with what it would leave. The row's own amount is not shown here.
class LedgerInfoPanel : public QWidget
{
    Q_OBJECT
public:
    explicit LedgerInfoPanel(QWidget *parent = nullptr);

    /// Empties the form; the balance stays.
    void reset();
    /// Shows the current row. `balance` is nothing where there is no current order: what stands then stays.
    void showRow(const ado::Recordset &ledger, std::optional<runtime::Currency> balance);
    /// Without a row: the balance alone, and 0 for both amounts where there is no order.
    void showWithoutRow(std::optional<runtime::Currency> balance);
    void showBalance(runtime::Currency balance);
    /// As it stands there, with the won sign itself.
    QString shownBalance() const;
    void showMemo(const QVariant &memo);
    /// Sets the typed amount to 0, so that the balance is what is left.
    void clearMoney();

    /// Raises RuntimeError when the amount is none.
    LedgerEntry entry() const;
    QString memo() const { return runtime::Trim(txtTransMemo_->text()); }

    controls::PushCheck *chkCmdSaveTrans(int index) const { return chkCmdSaveTrans_[index]; }
    controls::PushCheck *chkCmdSaveMemo() const { return chkCmdSaveMemo_; }

    ControlGroup colTrans() const;
    QList<QWidget *> saveButtons() const;
    QList<EntryColor> entryColors() const;
    QList<EntryColor> editColors() const;

private:
    void makeControls();
    void placeControls();
    void connectControls();
    QRadioButton *option(ledger::Operator code) const;
    void showOperator(const QVariant &stored);
    void showMethod(const QVariant &stored);
    void operatorChosen(ledger::Operator code);
    void moneyTyped();
    void showLeftAmount();

    QDateEdit *dtpTransReceiveDate_ = nullptr;
    std::array<QRadioButton *, 4> optTransOperator_{};
    MoneyBox *txtTransMoney_ = nullptr;
    QComboBox *cboPayMethod_ = nullptr;
    MoneyBox *txtTransMemo_ = nullptr;
    QLineEdit *txtTranTotalAmount_ = nullptr;
    QLineEdit *txtTranLeftAmount_ = nullptr;
    QCheckBox *chkTransMisuMoneyRecalculate_ = nullptr;
    QCheckBox *chkTranMisuRecord_ = nullptr;
    QList<controls::PushCheck *> chkCmdSaveTrans_;
    controls::PushCheck *chkCmdSaveMemo_ = nullptr;
};
