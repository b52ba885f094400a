#include "data/clsSQL.h"

#include "data/StatementText.h"
#include "data/modGeneralSQL.h"

using statement::date;
using statement::fill;
using statement::number;

namespace {

/// `intOperator` is what the operator is set to, a number or the column's own name.
QString updateTransaction(qint32 Customer_PK, const QDate &TxDate, const QString &intOperator, qint32 lngMoney,
                          qint32 lngOrderMasterPK, qint32 lngTpstrans_PK)
{
    return fill(u"Update tPSTransaction SET tpstrans_Customer_PK=[CUSTPK], "
                u"tpstrans_Date='[TRANSDATE]', tpstrans_Operator=[INTOPER], "
                u"tpstrans_Money=[MONEY], tpstrans_OrderM_PK=[ORDERMASTERPK] WHERE tpstrans_PK=[TRANSPK]",
                {{u"[CUSTPK]", number(Customer_PK)},
                 {u"[TRANSDATE]", date(TxDate)},
                 {u"[INTOPER]", intOperator},
                 {u"[MONEY]", number(lngMoney)},
                 {u"[ORDERMASTERPK]", number(lngOrderMasterPK)},
                 {u"[TRANSPK]", number(lngTpstrans_PK)}});
}

/// The sums of the receipts over ledger rows. Unlike getAllTranAmount they label operators 1 and 2 as the ledger does.
/// Quirk (docs/architecture.md): their cash column lacks parentheses, so a NULL method counts as cash whatever the operator.
QString totalsOf(const QString &ledgerRows)
{
    return QStringLiteral("SELECT   SUM(할인) AS 할인토탈, SUM(절사) AS 절사토탈, SUM(수납) AS 수납토탈, "
                          "SUM(환불) AS 환불토탈, SUM(현금) AS 현금토탈, SUM(카드) AS 카드토탈, "
                          "SUM(현금미수) AS 현금미수토탈, SUM(카드미수) AS 카드미수토탈, SUM(통장미수) AS 통장미수토탈 "
                          "FROM      "
                          "(SELECT   "
                          "CASE tranoperator WHEN 1 THEN SUM(ttt1.tranmoney) END AS 절사, "
                          "CASE tranoperator WHEN 2 THEN SUM(ttt1.tranmoney) END AS 할인, "
                          "CASE tranoperator WHEN 3 THEN SUM(ttt1.tranmoney) END AS 수납, "
                          "CASE tranoperator WHEN 4 THEN SUM(ttt1.tranmoney) END AS 환불, "
                          "CASE WHEN tranmethod IS NULL OR tranmethod = '00' "
                          "AND tranoperator = 3 THEN SUM(ttt1.tranmoney) END AS 현금, "
                          "CASE WHEN tranmethod = '01' AND tranoperator = 3 THEN SUM(ttt1.tranmoney) END AS 카드, "
                          "CASE WHEN tranmethod = '10' AND tranoperator = 3 THEN SUM(ttt1.tranmoney) END AS 현금미수, "
                          "CASE WHEN tranmethod = '11' AND tranoperator = 3 THEN SUM(ttt1.tranmoney) END AS 카드미수, "
                          "CASE WHEN tranmethod = '12' AND tranoperator = 3 THEN SUM(ttt1.tranmoney) END AS 통장미수 "
                          "FROM      ")
           + ledgerRows + QStringLiteral(" TTT1 GROUP BY TRANOPERATOR, TRANMETHOD) TTT2");
}

} // namespace

QString clsSQL::InsertTransactionSQL(qint32 Customer_PK, const QDate &TxDate, qint16 intOperator, qint32 lngMoney,
                                     qint32 lngOrderMasterPK, const QString &strMethod, const QString &strMemo) const
{
    return fill(u"INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_Date, "
                u"tpstrans_Operator, tpstrans_Money, tpstrans_OrderM_PK, tpstrans_Method, tpstrans_Memo) "
                u"VALUES ([CUSTPK], '[TRANSDATE]', [INTOPER], [MONEY], [ORDERMASTERPK], '[TRANSMETHOD]', '[MEMO]')",
                {{u"[CUSTPK]", number(Customer_PK)},
                 {u"[TRANSDATE]", date(TxDate)},
                 {u"[INTOPER]", number(intOperator)},
                 {u"[MONEY]", number(lngMoney)},
                 {u"[ORDERMASTERPK]", number(lngOrderMasterPK)},
                 {u"[TRANSMETHOD]", sqlEscapeQuotes(strMethod)},
                 {u"[MEMO]", sqlEscapeQuotes(strMemo)}});
}

QString clsSQL::UpdateTransactionSQL(qint32 Customer_PK, const QDate &TxDate, qint16 intOperator, qint32 lngMoney,
                                     qint32 lngOrderMasterPK, qint32 lngTpstrans_PK) const
{
    return updateTransaction(Customer_PK, TxDate, number(intOperator), lngMoney, lngOrderMasterPK, lngTpstrans_PK);
}

QString clsSQL::updateButOperatorSQL(qint32 Customer_PK, const QDate &TxDate, qint32 lngMoney, qint32 lngOrderMasterPK,
                                     qint32 lngTpstrans_PK)
{
    return updateTransaction(Customer_PK, TxDate, QStringLiteral("tpstrans_Operator"), lngMoney, lngOrderMasterPK,
                             lngTpstrans_PK);
}

QString clsSQL::InsertPSTransaction(qint32 Customer_PK, const QDate &TxDate, qint16 intOperator, qint32 lngMoney,
                                    qint32 lngOrdMPK, const QString &strMethod, const QString &, const QString &) const
{
    return fill(u"INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, "
                u"tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo) "
                u"VALUES ([CUSTPK], [ORDMPK], '[TRANSDATE]', [INTOPER], [MONEY], '[TRANSMETHOD]', '[TRANSMEMO]')",
                {{u"[CUSTPK]", number(Customer_PK)},
                 {u"[ORDMPK]", number(lngOrdMPK)},
                 {u"[TRANSDATE]", date(TxDate)},
                 {u"[INTOPER]", number(intOperator)},
                 {u"[MONEY]", number(lngMoney)},
                 {u"[TRANSMETHOD]", sqlEscapeQuotes(strMethod)},
                 {u"[TRANSMEMO]", QString()}});
}

QString clsSQL::getCustTranSQL(qint32 lngCustPK, qint32 lngOrderMPK) const
{
    return fill(u"SELECT * FROM tPSTransaction WHERE tpstrans_Customer_PK = [CUSTPK] and tpstrans_OrderM_PK = "
                u"[ORDERPK] ORDER BY tpstrans_Date ASC",
                {{u"[CUSTPK]", number(lngCustPK)}, {u"[ORDERPK]", number(lngOrderMPK)}});
}

QString clsSQL::delCustTranSQL(qint32 lngOrdM_PK, qint32 lngCustPK) const
{
    return fill(u"DELETE FROM tPSTransaction WHERE tpstrans_OrderM_PK = [ORDMPK] AND tpstrans_Customer_PK = [CUSTPK]",
                {{u"[ORDMPK]", number(lngOrdM_PK)}, {u"[CUSTPK]", number(lngCustPK)}});
}

QString clsSQL::getTranTotalReceiveAmountSQL(qint32 lngCustPK, qint32 lngOrdMPK) const
{
    return fill(u"SELECT SUM(tpstrans_Money) AS TOTALRECAMOUNT FROM tPSTransaction "
                u"WHERE tpstrans_Customer_PK = [CUSTPK] AND tpstrans_OrderM_PK = [ORDMPK] "
                u"AND (tpstrans_Operator <> 4 OR tpstrans_Operator IS NULL)",
                {{u"[CUSTPK]", number(lngCustPK)}, {u"[ORDMPK]", number(lngOrdMPK)}});
}

QString clsSQL::getAllTranAmount(qint32 lngCustPK, qint32 lngOrdMPK) const
{
    return fill(u"SELECT   SUM(할인) AS 할인토탈, SUM(절사) AS 절사토탈, SUM(수납) AS 수납토탈, "
                u"SUM(환불) AS 환불토탈, SUM(현금) AS 현금토탈, SUM(카드) AS 카드토탈, "
                u"SUM(현금미수) AS 현금미수토탈, SUM(카드미수) AS 카드미수토탈 "
                u"FROM      "
                u"(SELECT   "
                u"CASE ttt1.TRANOPERATOR WHEN 1 THEN SUM(ttt1.TRANMONEY) END AS 할인, "
                u"CASE ttt1.TRANOPERATOR WHEN 2 THEN SUM(ttt1.TRANMONEY) END AS 절사, "
                u"CASE ttt1.TRANOPERATOR WHEN 3 THEN SUM(ttt1.TRANMONEY) END AS 수납, "
                u"CASE ttt1.TRANOPERATOR WHEN 4 THEN SUM(ttt1.TRANMONEY) END AS 환불, "
                u"CASE WHEN ttt1.TRANMETHOD IS NULL OR ttt1.TRANMETHOD = '00' THEN SUM(ttt1.TRANMONEY) END AS 현금, "
                u"CASE WHEN ttt1.TRANMETHOD = '01' THEN SUM(ttt1.TRANMONEY) END AS 카드, "
                u"CASE WHEN ttt1.TRANMETHOD = '10' THEN SUM(ttt1.TRANMONEY) END AS 현금미수, "
                u"CASE WHEN ttt1.TRANMETHOD = '11' THEN SUM(ttt1.TRANMONEY) END As 카드미수 "
                u"FROM      "
                u"(SELECT   tpstrans_Operator AS TRANOPERATOR, tpstrans_Money AS TRANMONEY, "
                u"tpstrans_Method As TRANMETHOD FROM tPSTransaction "
                u"WHERE   tpstrans_Customer_PK = [CUSTPK] AND tpstrans_OrderM_PK = [ORDMPK]) TTT1 "
                u"GROUP BY TRANOPERATOR, TRANMETHOD, TRANMONEY) TTT2",
                {{u"[CUSTPK]", number(lngCustPK)}, {u"[ORDMPK]", number(lngOrdMPK)}});
}

// The next two serve the receipts.

QString clsSQL::getTranAllEachTotalByOrdMPKSQL(qint32 lngOrdMPK) const
{
    return fill(totalsOf(QStringLiteral(
                    "(SELECT   tPSTransaction.tpstrans_OrderM_PK AS ORDMPK, "
                    "tPSTransaction.tpstrans_Date AS TRANDATE, "
                    "tPSTransaction.tpstrans_Operator AS TRANOPERATOR, "
                    "tPSTransaction.tpstrans_Money AS TRANMONEY, "
                    "tPSTransaction.tpstrans_Method AS TRANMETHOD, tPSTransaction.tpstrans_PK FROM      tPSTransaction "
                    "WHERE tpsTransaction.tpstrans_OrderM_PK = '[ORDMPK]' "
                    "GROUP BY tPSTransaction.tpstrans_Date, "
                    "tPSTransaction.tpstrans_OrderM_PK, "
                    "tPSTransaction.tpstrans_Operator, tPSTransaction.tpstrans_Money, "
                    "tPSTransaction.tpstrans_Method, tPSTransaction.tpstrans_PK)")),
                {{u"[ORDMPK]", number(lngOrdMPK)}});
}

QString clsSQL::getTranAllEachTotalByPeriodSQL(const QDate &startDate, const QDate &endDate) const
{
    return fill(
        totalsOf(QStringLiteral("(SELECT   tPSTransaction.tpstrans_OrderM_PK AS ORDMPK, "
                                "tPSTransaction.tpstrans_Date AS TRANDATE, "
                                "tPSTransaction.tpstrans_Operator AS TRANOPERATOR, "
                                "tPSTransaction.tpstrans_Money AS TRANMONEY, "
                                "tPSTransaction.tpstrans_Method AS TRANMETHOD, "
                                "tPSTransaction.tpstrans_PK, tPSOrderMaster.OrdM_Date, tPSOrderMaster.OrdM_PK "
                                "FROM      tPSTransaction INNER JOIN tPSOrderMaster ON tPSOrderMaster.OrdM_PK = "
                                "tPSTransaction.tpstrans_OrderM_PK  "
                                "WHERE tPSOrderMaster.OrdM_Date BETWEEN '[STARTDATE]' AND '[ENDDATE]' "
                                "GROUP BY tPSTransaction.tpstrans_Date, "
                                "tPSTransaction.tpstrans_OrderM_PK, "
                                "tPSTransaction.tpstrans_Operator, tPSTransaction.tpstrans_Money, "
                                "tPSTransaction.tpstrans_Method, tPSTransaction.tpstrans_PK, "
                                "tPSOrderMaster.OrdM_Date, tPSOrderMaster.OrdM_PK)")),
        {{u"[STARTDATE]", date(startDate)}, {u"[ENDDATE]", date(endDate)}});
}
