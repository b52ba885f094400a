#pragma once

#include "platform/runtime/Currency.h"

#include <QDate>
#include <QObject>
#include <QString>
#include <QVariant>

/// The catalogue of statements. Each method gives the text of one statement and runs nothing; no state is held.
///
/// Keys and amounts of the ledger are 32-bit, quantities and kinds 16-bit. Quirk (docs/architecture.md): texts are
/// inserted as given, so a ' breaks the statement at the server; only arguments marked "quotes doubled" are protected.
class clsSQL : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit clsSQL(QObject *parent = nullptr);

    /// `strMethod` and `strMemo`: quotes doubled.
    Q_INVOKABLE QString InsertTransactionSQL(qint32 Customer_PK, const QDate &TxDate, qint16 intOperator,
                                             qint32 lngMoney, qint32 lngOrderMasterPK,
                                             const QString &strMethod = QString(),
                                             const QString &strMemo = QString()) const;
    /// Leaves method and memo of the row untouched.
    Q_INVOKABLE QString UpdateTransactionSQL(qint32 Customer_PK, const QDate &TxDate, qint16 intOperator,
                                             qint32 lngMoney, qint32 lngOrderMasterPK, qint32 lngTpstrans_PK) const;
    /// The same, but the operator stays as stored too, even NULL.
    static QString updateButOperatorSQL(qint32 Customer_PK, const QDate &TxDate, qint32 lngMoney,
                                        qint32 lngOrderMasterPK, qint32 lngTpstrans_PK);
    /// All products, or without the hidden ones.
    Q_INVOKABLE QString getProductMasterSQL(bool bShowAll = true) const;
    /// Its first row is the customer's first order of that date.
    Q_INVOKABLE QString getOrderMasterPKSQL(qint32 lngCustPK, const QVariant &dtDate) const;
    Q_INVOKABLE QString getOrderMasterSQL(qint32 lngCustPK) const;
    /// Key -1 gives an empty set.
    Q_INVOKABLE QString getOrderDetailSQL(qint32 lngOrdMPK) const;
    Q_INVOKABLE QString getCustTranSQL(qint32 lngCustPK, qint32 lngOrderMPK) const;
    /// Quirk (docs/architecture.md): amounts are narrowed to 16 bits, beyond which Overflow is raised. Not called.
    Q_INVOKABLE QString insDB2OrderMasterSQL(qint32 lngCustPK, const QDate &dtDate, qint16 intGubun,
                                             const QString &strAddress, const QString &strTel, const QString &strCell,
                                             const QString &strTakBaeMemo, runtime::Currency curTaxTotal,
                                             runtime::Currency curTaxFreeTotal, runtime::Currency curHalinTotal,
                                             runtime::Currency curTotal, runtime::Currency curMisuGum,
                                             const QString &strETCMemo) const;
    Q_INVOKABLE QString insDB2OrderDetailSQL(qint32 lngOrdMPK, qint32 lngPMPK, runtime::Currency curUnitPrice,
                                             runtime::Currency curHalinUnit, qint16 intOrderCount,
                                             qint16 intSellType) const;
    /// The kind of line stays NULL, which reads as a normal sale.
    Q_INVOKABLE QString insDB2RfndOrderDetailSQL(qint32 lngOrdMPK, qint32 lngPMPK,
                                                 runtime::Currency curRfndUnitSalePricee, qint16 intOrderCount,
                                                 const QString &strRfndMemo) const;
    Q_INVOKABLE QString getCountOrderMasterSQL(qint32 lngCustPK, const QDate &dtTdyDate) const;
    /// Quirk (docs/architecture.md): no server runs it: WHERE holds the word lngOrdMPK, not the key. Not called.
    Q_INVOKABLE QString updateOrderMasterFullSQL(qint32 lngOrdMPK, qint16 intGubun, const QString &strAddress,
                                                 const QString &strTel, const QString &strCell,
                                                 const QString &strTakBaeMemo, runtime::Currency curTaxTotal,
                                                 runtime::Currency curTaxFreeTotal, runtime::Currency curHalinTotal,
                                                 runtime::Currency curTotal, runtime::Currency curMisuGum,
                                                 const QString &strETCMemo) const;
    /// Quirk (docs/architecture.md): `curMisuGum` is not used; the outstanding money stays as it is.
    Q_INVOKABLE QString updateOrderMasterTotalSQL(qint32 lngOrdMPK, runtime::Currency curTaxTotal,
                                                  runtime::Currency curTaxFreeTotal, runtime::Currency curHalinTotal,
                                                  runtime::Currency curTotal, runtime::Currency curMisuGum) const;
    /// TAXORFREETOTAL, NULL when no line matches.
    Q_INVOKABLE QString getSumTaxOrTaxFreeTotalSQL(qint32 lngOrdMPK, bool bIsTaxed) const;
    Q_INVOKABLE QString getHalinTotalSQL(qint32 lngOrdMPK) const;
    /// HALINTOTAL, NULL without lines.
    Q_INVOKABLE QString getSumHalinTotalSQL(qint32 lngOrdMPK) const;
    Q_INVOKABLE QString getOrderMasterMisuEtcPartSQL(qint32 lngOrdMPK) const;
    Q_INVOKABLE QString delCustSaleDetailSQL(qint32 lngOrdDPK) const;
    Q_INVOKABLE QString delCustSaleDetailByOrdMPKSQL(qint32 lngOrdMPK) const;
    Q_INVOKABLE QString delCustTranSQL(qint32 lngOrdM_PK, qint32 lngCustPK) const;
    /// The date in its default text form.
    Q_INVOKABLE QString delCustSaleMasterSQL(qint32 lngOrdMPK, qint32 lngCustPK, const QDate &dtDate) const;
    /// Quirk (docs/architecture.md): no server runs this form of UPDATE; the keys are not used. Not called.
    Q_INVOKABLE QVariant updateOrderMasterMemoSQL(qint32 lngOrdMPK, qint32 lngCustPK, const QString &strMemo) const;
    Q_INVOKABLE QString getTranTotalReceiveAmountSQL(qint32 lngCustPK, qint32 lngOrdMPK) const;
    /// Ledger totals of one order. Quirk (docs/architecture.md): the labels 할인 and 절사 of 1 and 2 are exchanged.
    Q_INVOKABLE QString getAllTranAmount(qint32 lngCustPK, qint32 lngOrdMPK) const;
    /// All dealers for an empty name. Quirk (docs/architecture.md): for any other the place [CPNAME] stays unfilled,
    /// and LIKE reads it as a class: every dealer whose name holds one of the letters C, P, N, A, M, E.
    Q_INVOKABLE QString getDealerSQL(const QString &strDealerName) const;
    Q_INVOKABLE QString getCmpnyMstrSQL() const;
    /// The key of each product, then what it is searched by; likewise of the dealers.
    static QString getProductTextsSQL();
    static QString getDealerTextsSQL();
    Q_INVOKABLE QString getCmpnyNameSQL(qint32 lngCMPK) const;
    Q_INVOKABLE QString getProdIncomingSQL(qint32 lngPMPK) const;
    Q_INVOKABLE QString getNumOfSameProdName(const QString &strPMName) const;
    /// NUMOFPRO: lines of the product, 0 for one that is not handled.
    Q_INVOKABLE QString getNumOfUsedProdSQL(qint32 lngPMPK) const;
    Q_INVOKABLE QString getNumOfUsedCmpnySQL(qint32 lngCMPK) const;
    Q_INVOKABLE QString delAProductSQL(qint32 lngPMPK) const;
    Q_INVOKABLE QString getStockIncomingTotCountSQL(qint32 lngPMPK) const;
    Q_INVOKABLE QString getStockSaleTotCountSQL(qint32 lngPMPK) const;
    Q_INVOKABLE QString getPropValues() const;
    /// Lines for a receipt; loss lines stay out.
    Q_INVOKABLE QString getOrderDetailWithNameSQL(qint32 lngOrdMPK) const;
    /// Ledger totals for a receipt; here operator 1 is 절사 and 2 is 할인. A NULL method counts as cash, whatever the
    /// operator.
    Q_INVOKABLE QString getTranAllEachTotalByOrdMPKSQL(qint32 lngOrdMPK) const;
    /// The same over the orders of a period, both ends included.
    Q_INVOKABLE QString getTranAllEachTotalByPeriodSQL(const QDate &startDate, const QDate &endDate) const;
    Q_INVOKABLE QString UpdatePSMisuMoney(qint32 lngOrdMPK, qint32 lngMoney) const;
    /// `strMethod`: quotes doubled. The memo is always empty; `strTransTemp` and `strBoninGeneralGubun` are not used.
    Q_INVOKABLE QString InsertPSTransaction(qint32 Customer_PK, const QDate &TxDate, qint16 intOperator,
                                            qint32 lngMoney, qint32 lngOrdMPK, const QString &strMethod = QString(),
                                            const QString &strTransTemp = QString(),
                                            const QString &strBoninGeneralGubun = QString()) const;
};
