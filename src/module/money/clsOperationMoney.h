#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/Foresight.h"
#include "platform/ado/Recordset.h"

#include <QDate>
#include <QList>
#include <QObject>
#include <QString>

/// The ledger as the module and the host read it. A "receipt" is an order, or a treatment receipt of the host: the
/// ledger's key column holds either, and only the caller knows which.
///
/// Amounts are whole won. Nothing is shown or raised. An operation fails only when its statement cannot be opened; a
/// failure after that leaves the result good and the amount as far as it came. An empty ledger is 0 and no failure.
/// Operations without a connection of their own use the one lent by OPM_SetConnection.
class clsOperationMoney : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit clsOperationMoney(QObject *parent = nullptr);

    /// Both always true.
    Q_INVOKABLE bool OPM_SetConnection(const ado::ConnectionPtr &cnNew);
    Q_INVOKABLE bool OPM_DestroyConnection();

    /// 1 rows exist, 0 none, -1 failure.
    Q_INVOKABLE qint16 OPM_ExistOperationByReceipt(qint32 lngOrderMasterPK);
    /// Deletes the key's rows that carry the mark; with an empty mark all of them, whoever wrote them. 0 done,
    /// -1 failure.
    Q_INVOKABLE qint16 OPM_DeleteAllByReceipt(const ado::ConnectionPtr &cnCon, qint32 lngOrderMasterPK,
                                              const QString &strTransTemp = QString());

    Q_INVOKABLE bool OPM_GetCutByTransaction(qint32 lngOrderMasterPK, qint32 &lngCut);
    Q_INVOKABLE bool OPM_GetCutByDate(const QDate &dOperDate, qint32 &lngCut);
    Q_INVOKABLE bool OPM_GetCutByCustDate(qint32 lngCustPK, const QDate &dOperDate, qint32 &lngCut);
    Q_INVOKABLE bool OPM_GetDiscountByTransaction(qint32 lngOrderMasterPK, qint32 &lngDiscount);
    Q_INVOKABLE bool OPM_GetDiscountByDate(const QDate &dOperDate, qint32 &lngDiscount);
    Q_INVOKABLE bool OPM_GetDiscountByCustDate(qint32 lngCustPK, const QDate &dOperDate, qint32 &lngDiscount);
    Q_INVOKABLE bool OPM_GetPayByTransaction(qint32 lngOrderMasterPK, qint32 &lngPay);
    Q_INVOKABLE bool OPM_GetPayByDate(const QDate &dOperDate, qint32 &lngPay);
    Q_INVOKABLE bool OPM_GetPayByCustDate(qint32 lngCustPK, const QDate &dOperDate, qint32 &lngPay);
    /// `strCatagory` is a method code; its quotes are not doubled.
    Q_INVOKABLE bool OPM_GetPayByCustDateCatagory(qint32 lngCustPK, const QDate &dOperDate, const QString &strCatagory,
                                                  qint32 &lngPayCatagory);
    /// Payments less refunds per medium, both ends of the period included. The medium is the method's last character, so
    /// money taken at the sale and against outstanding money is not told apart; what names no medium is cash.
    Q_INVOKABLE bool OPM_GetPayByCustPeriodCatagory(const ado::ConnectionPtr &cnCon, qint32 lngCustPK,
                                                    const QDate &dSDate, const QDate &dEDate, qint32 &lngCashMoney,
                                                    qint32 &lngBankMoney, qint32 &lngCardMoney);
    Q_INVOKABLE bool OPM_GetRefundByTransaction(const ado::ConnectionPtr &cnCon, qint32 lngOrderMasterPK,
                                                qint32 &lngRefund);
    Q_INVOKABLE bool OPM_GetRefundByDate(const QDate &dOperDate, qint32 &lngRefund);
    /// `lngTransaction`: cuts, discounts and payments together. Both are 0 when either cannot be read.
    Q_INVOKABLE bool OPM_GetSumOfTransactionByReceipt(const ado::ConnectionPtr &cnCon, qint32 lngOrderMasterPK,
                                                      qint32 &lngTransaction, qint32 &lngRefund);
    Q_INVOKABLE bool OPM_GetRefundByCustDate(qint32 lngCustPK, const QDate &dOperDate, qint32 &lngRefund);

    /// The customer's treatment receipts of the given days (all days when there is none): five sums, and in `rsTarget`
    /// one row per receipt and ledger row, receipts without ledger rows included. `rsTarget` is the caller's, who closes
    /// it. 0 done, -1 failure.
    Q_INVOKABLE qint16 OPM_MakeTransactionRecordSet(const ado::ConnectionPtr &cnCon, qint32 lngCustPK,
                                                    const QList<QDate> &dTxDate, ado::Recordset *rsTarget,
                                                    qint32 &lngSumBonin, qint32 &lngSumHalin, qint32 &lngSumJeolsa,
                                                    qint32 &lngSumSunap, qint32 &lngSumRefund);
    /// Payments and refunds of a period over all customers, one row per customer, day and operator; rows marked as not to
    /// be submitted only with `bIncludeAll`. 0 done, -1 failure.
    Q_INVOKABLE qint16 OPM_MakeTransactionForSunapRefund(const ado::ConnectionPtr &cnCon, const QDate &dStart,
                                                         const QDate &dLast, bool bIncludeAll,
                                                         ado::Recordset *rsTarget);

    // Sums of one receipt's rows of one day.
    Q_INVOKABLE bool OPM_GetCutByReceiptBoninGeneral(const ado::ConnectionPtr &cnCon, qint32 lngOrdMPK, qint32 &lngCut,
                                                     const QDate &dtDate);
    Q_INVOKABLE bool OPM_GetDiscountByReceiptBoninGeneral(const ado::ConnectionPtr &cnCon, qint32 lngOrdMPK,
                                                          qint32 &lngDiscount, const QDate &dtDate);
    Q_INVOKABLE bool OPM_GetPayByReceiptBoninGeneral(const ado::ConnectionPtr &cnCon, qint32 lngOrdMPK, qint32 &lngPay,
                                                     const QDate &dtDate);
    Q_INVOKABLE bool OPM_GetRefundByReceiptBoninGeneral(const ado::ConnectionPtr &cnCon, qint32 lngOrdMPK,
                                                        qint32 &lngRefund, const QDate &dtDate);

private:
    /// "Receipt.TxDate='2026-11-24' OR ..."; empty without dates.
    static QString buildTxDateClause(const QList<QDate> &dTxDate);

    ado::ConnectionPtr connection_;
};

/// The four sums of an order, cut, discount, payment and refund, are to be read in this order.
void tellSumsOfTransaction(ado::Foresight &next, qint32 lngOrderMasterPK);
/// What OPM_ExistOperationByReceipt() will read.
void tellExistOperationByReceipt(ado::Foresight &next, qint32 lngOrderMasterPK);
