#pragma once

#include "money/DialogForm.h"
#include "money/MoneyUpDown.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDialog>
#include <QGroupBox>

/// A further operation on an order that has ledger rows: shows what has been taken, proposes what is left, and hands one
/// operation back for the caller to write. Made for one showing.
class frmSimpleReceiptAdd : public QDialog
{
    Q_OBJECT
public:
    explicit frmSimpleReceiptAdd(QWidget *owner = nullptr);

    /// Shows the dialog centred over its owner and returns true when the user saved. An order that is settled is asked about
    /// first. Amounts are whole won, sums of the ledger so far. `bRecalc` comes in true when the order has outstanding
    /// money, and goes out as the user left the box; the outputs hold only when the result is true.
    bool OperationAdd(QWidget *frmOwner, const QDate &dtOrder, qint32 lngTotal, qint32 lngDiscount, qint32 lngCut,
                      qint32 lngPay, qint32 lngRefund, qint32 lngOrdMPK, const QString &strChartNum,
                      const QString &strName, QDate &dtOper, qint16 &intOperator, qint32 &lngMoney, QString &strMethod,
                      bool &bRecalc);

private:
    void createControls();
    QGroupBox *makeSummary();
    QGroupBox *makeEntry();
    void setTabOrderOfWork();
    void setKeys();

    /// Proposes an operation for what is left; false when the order is settled and the user has nothing to add.
    bool propose(qint32 rest);
    void operatorChosen(ledger::Operator code);
    void confirm();

    bool bConfirmed_ = false;

    dialogForm::ReceiptHead head_;
    QLineEdit *txtReceipt_PK_ = nullptr;
    QLineEdit *txtDiscount_ = nullptr;
    QLineEdit *txtCut_ = nullptr;
    QLineEdit *txtPay_ = nullptr;
    QLineEdit *txtRefund_ = nullptr;
    dialogForm::OperatorOptions optOperator_{};
    QLineEdit *txtMoney_ = nullptr;
    MoneyUpDown *mudOperationAdd_ = nullptr;
    QWidget *sspSunapInfo_ = nullptr;
    QComboBox *cboPayMothod_ = nullptr;
    QCheckBox *chkAutoMisuMoney_ = nullptr;
    QPushButton *cmdConfirm_ = nullptr;
    QPushButton *cmdCancel_ = nullptr;
};
