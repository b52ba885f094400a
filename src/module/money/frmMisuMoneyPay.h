#pragma once

#include "money/DialogForm.h"
#include "money/MoneyUpDown.h"
#include "platform/ado/Connection.h"

#include <QComboBox>
#include <QDate>
#include <QDialog>
#include <QGroupBox>

#include <array>

/// A later payment against the outstanding money of one order. It writes nothing: the payment is handed back. Made for one
/// showing.
class frmMisuMoneyPay : public QDialog
{
    Q_OBJECT
public:
    explicit frmMisuMoneyPay(QWidget *owner = nullptr);

    /// Shows the dialog centred over its owner; true when the user saved. Amounts are whole won. The summary counts what the
    /// ledger holds of the day of the order only, so later payments do not show in it. `lngPay` may come out 0 or negative;
    /// the outputs hold only when the result is true. Raises Overflow for amounts beyond 32 bits.
    bool MisuMoneyPayBoninGeneral(const ado::ConnectionPtr &cnCon, const QString &strChartNum, const QString &strName,
                                  const QDate &dtOrder, qint32 lngOrdMPK, qint32 lngMisu, qint32 lngTotal, QDate &dtPay,
                                  qint32 &lngPay, QString &strMethod);

private:
    // The form: controls and their places.
    void createControls();
    QGroupBox *makeSummary();
    QGroupBox *makeEntry();
    void setKeys();

    /// Fills the summary; what is left of the order by it.
    qint32 showSummary(const ado::ConnectionPtr &cnCon, const QDate &dtOrder, qint32 lngOrdMPK, qint32 lngTotal);
    void confirm();

    bool bConfirmed_ = false;

    dialogForm::ReceiptHead head_; ///< its boxes are txtReceiptTxDate, txtReceiptBonin and so on
    // Discount, cut, payment, refund. The patient's own shares are those of treatments: a sale has none, they stay empty.
    std::array<QLineEdit *, 4> txtGeneral_{};
    std::array<QLineEdit *, 4> txtBonin_{};
    QLineEdit *txtGeneralSunap_ = nullptr;
    MoneyUpDown *mudMisuSunap_ = nullptr;
    QComboBox *cboGeneralPayMethod_ = nullptr;
    QPushButton *cmdConfirm_ = nullptr;
    QPushButton *cmdCancel_ = nullptr;
};
