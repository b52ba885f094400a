#pragma once

#include "forms/MoneyBox.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/Stepper.h"
#include "platform/runtime/Currency.h"

#include <QDate>
#include <QDateEdit>
#include <QDialog>
#include <QGroupBox>
#include <QLineEdit>

/// Asks what is taken back of a sold line: date, quantity, price and remark. It writes nothing. Made for one showing.
class frmRefund : public QDialog
{
    Q_OBJECT
public:
    explicit frmRefund(QWidget *owner = nullptr);

    /// Shows the dialog beside the button that asked for it and returns 1 when the user saved, otherwise 0; the outputs hold
    /// only with 1. The whole line is offered: minus the sold quantity, at its price less its discount (won for each).
    qint16 ShowRefundForm(const QString &strUnitName, runtime::Currency curUnitPrice, runtime::Currency curUnitDiscount,
                          qint16 intUnitCount, const QDate &dtUnitSold, const QWidget *ownerButton,
                          qint16 &intRfndUnitCount, QDate &dtRfnd, QString &strRfndMemo,
                          runtime::Currency &curRfndUnitSalePrice);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    // The form: controls and their places.
    void createControls();
    QGroupBox *makeSoldPane();
    QGroupBox *makeRefundPane();
    QLayout *layOutButtons();

    void step(int by);
    void colorCount();
    void save();
    void placeBeside(const QWidget &button);

    bool bSaved_ = false;
    qint16 intUnitCount_ = 0; ///< the sold quantity, which the stepper does not go beyond

    QDateEdit *dtpUnitSoldDate_ = nullptr;
    QLineEdit *txtUnitName_ = nullptr;
    QLineEdit *txtUnitPrice_ = nullptr;
    QLineEdit *txtUnitDiscount_ = nullptr;
    QLineEdit *txtUnitCount_ = nullptr;
    QDateEdit *dtpRfndDate_ = nullptr;
    QLineEdit *txtRfndUnitCount_ = nullptr;
    controls::Stepper *udNoOfProdPlusMinus_ = nullptr;
    MoneyBox *txtRfndUnitSalePrice_ = nullptr;
    QLineEdit *txtRfndMemo_ = nullptr;
    controls::PushCheck *chkCmdSave_ = nullptr;
    controls::PushCheck *chkCmdCancel_ = nullptr;
};
