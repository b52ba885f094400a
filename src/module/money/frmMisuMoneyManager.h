#pragma once

#include "money/LedgerSight.h"
#include "platform/ado/Recordset.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"

#include <QDate>
#include <QDialog>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>

#include <exception>
#include <memory>
#include <vector>

/// The orders with outstanding money, from which a later payment against one of them is taken. Made for one showing.
class frmMisuMoneyManager : public QDialog
{
    Q_OBJECT
public:
    explicit frmMisuMoneyManager(QWidget *owner = nullptr);
    ~frmMisuMoneyManager() override;

    /// Shows the list and returns when it was closed: -1, or 0 when it could not be opened, which the user was told.
    /// `intMode` 0 lists all customers, 1 the one of `lngCustPK`; the last number has no meaning here.
    qint16 MisuMoneyManager(const ado::ConnectionPtr &cnCon, QWidget *frmOwner, qint16 intMode, qint32 lngCustPK,
                            qint32 lngUnused);
    /// All that was taken and saved while it was shown.
    runtime::Currency paid() const { return paid_; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// The current row as a payment wants it, money in whole won.
    struct Order
    {
        ShownOrder shown;
        QString strChartNum;
        QString strName;
        qint32 lngMisu;
        qint32 lngTotal;
    };
    struct Payment
    {
        QDate date;
        qint32 lngMoney = 0;
        QString strMethod;
    };

    // The form: controls and their places.
    void createControls();
    void makeGrid();
    QLayout *layOutTotals();
    QLayout *layOutButtons();
    void setKeys();

    void connectControls();
    bool openList();
    /// All that a long list has behind its first screen, and the sums, which no part of it shows. Where that fails the window
    /// closes, as if it had not opened.
    bool readRest();
    /// Quirk (docs/architecture.md): counts and adds up from the current row to the end, and stays there.
    void computeTotals();
    void sortBy(int column, bool asWell);
    void payCurrent();
    Order currentOrder() const;
    /// False when the user took no money, or when the window went while it was asked.
    bool readCurrentAgain();
    bool askPayment(const Order &order, Payment &payment);
    void record(const Order &order, const Payment &payment, LedgerSight &seen);
    /// The current order as it stands now, and the sums below the list.
    void showPaidOrder();

    qint16 intListMode_ = 0;
    qint32 lngCustPK_ = 0;
    runtime::Currency paid_;
    bool restAsked_ = false;
    bool readFailed_ = false;
    std::exception_ptr sumFailure_;
    ado::ConnectionPtr cnCon_;
    std::unique_ptr<ado::Recordset> rsReceiptView_;
    std::vector<int> sortColumns_; ///< in the order in which they were chosen

    controls::RecordsetGrid *dgReceiptView_ = nullptr;
    QLineEdit *txtCount_ = nullptr;
    QLineEdit *txtTotal_ = nullptr;
    controls::PushCheck *cmdMisuMoneyPay_ = nullptr;
    QPushButton *cmdMisuMoneySend2Excel_ = nullptr;
    QPushButton *cmdClose_ = nullptr;
};
