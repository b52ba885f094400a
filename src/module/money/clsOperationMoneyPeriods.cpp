#include "money/clsOperationMoney.h"

#include "data/Codes.h"
#include "data/StatementText.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"

using ado::ConnectionPtr;
using runtime::Attempt;
using runtime::Currency;

namespace {

/// Visits every row of an open recordset. A row whose visit fails is passed over; a failed step ends the walk.
template <typename Visit>
void forEachRow(ado::Recordset &rows, Visit visit)
{
    Attempt step;
    while (!step.failed() && rows.hasCurrent()) {
        Attempt()([&] { visit(); });
        step([&] { rows.MoveNext(); });
    }
}

bool reopened(ado::Recordset *rows, const QString &statement, const ConnectionPtr &connection, ado::CursorType cursor,
              ado::LockType lock)
{
    if (!rows)
        return false;
    Attempt attempt;
    attempt([&] {
        if (rows->isOpen())
            rows->Close();
        rows->Open(statement, connection, cursor, lock);
    });
    return !attempt.failed();
}

/// The number that the value shows, NULL as 0.
qint32 numberOf(const QVariant &value)
{
    const QString digits = runtime::text(value);
    return digits.isEmpty() ? 0 : runtime::CLng(digits);
}

} // namespace

bool clsOperationMoney::OPM_GetPayByCustPeriodCatagory(const ConnectionPtr &cnCon, qint32 lngCustPK,
                                                       const QDate &dSDate, const QDate &dEDate, qint32 &lngCashMoney,
                                                       qint32 &lngBankMoney, qint32 &lngCardMoney)
{
    lngCashMoney = lngBankMoney = lngCardMoney = 0;
    const QString text =
        statement::fill(u"SELECT SUM(tpstrans_Money) AS Result, tpstrans_Operator, tpstrans_Method "
                        u"FROM tPSTransaction "
                        u"WHERE (tpstrans_Customer_PK=[CUSTPK]) AND (tpstrans_Operator=3 or tpstrans_Operator=4) "
                        u"AND (tpstrans_Date BETWEEN [START] AND [END]) "
                        u"GROUP BY tpstrans_Operator, tpstrans_Method",
                        {{u"[CUSTPK]", statement::number(lngCustPK)},
                         {u"[START]", statement::quotedDate(dSDate)},
                         {u"[END]", statement::quotedDate(dEDate)}});
    ado::Recordset rows;
    if (!reopened(&rows, text, cnCon, ado::CursorType::Keyset, ado::LockType::ReadOnly))
        return false;

    forEachRow(rows, [&] {
        const QString method = runtime::text(rows[QStringLiteral("tpstrans_Method")]);
        qint32 &target = method.endsWith(u'1') ? lngCardMoney : method.endsWith(u'2') ? lngBankMoney : lngCashMoney;
        const int sign = numberOf(rows[QStringLiteral("tpstrans_Operator")]) == ledger::Refund ? -1 : 1;
        const Currency money = runtime::CCur(rows[QStringLiteral("Result")]);
        target = runtime::CLng(QVariant::fromValue(Currency::fromWon(target) + sign * money));
    });
    return true;
}

QString clsOperationMoney::buildTxDateClause(const QList<QDate> &dTxDate)
{
    QStringList pieces;
    for (const QDate &day : dTxDate)
        pieces += statement::fill(u"Receipt.TxDate=[TXDATE]", {{u"[TXDATE]", statement::quotedDate(day)}});
    return pieces.join(QStringLiteral(" OR "));
}

qint16 clsOperationMoney::OPM_MakeTransactionRecordSet(const ConnectionPtr &cnCon, qint32 lngCustPK,
                                                       const QList<QDate> &dTxDate, ado::Recordset *rsTarget,
                                                       qint32 &lngSumBonin, qint32 &lngSumHalin, qint32 &lngSumJeolsa,
                                                       qint32 &lngSumSunap, qint32 &lngSumRefund)
{
    lngSumBonin = lngSumHalin = lngSumJeolsa = lngSumSunap = lngSumRefund = 0;
    const QString days = buildTxDateClause(dTxDate);
    const QString dayCondition = days.isEmpty() ? QString() : QStringLiteral(" AND (") + days + QStringLiteral(")");
    const auto filled = [&](QStringView head, const QString &tail = QString()) {
        return statement::fill(head, {{u"[CUSTPK]", statement::number(lngCustPK)}}) + dayCondition + tail;
    };
    ado::Recordset rows;
    const auto openedForReading = [&](const QString &text) {
        return reopened(&rows, text, cnCon, ado::CursorType::ForwardOnly, ado::LockType::ReadOnly);
    };

    // The insurer's and the non-insured share are read along and not handed out.
    if (!openedForReading(filled(u"SELECT SUM(Receipt.Bonin_Money) AS BoninSum, "
                                 u"SUM(Receipt.Cheonggu_Money) AS CheongguSum, "
                                 u"SUM(Receipt.General_Money) AS GeneralSum "
                                 u"FROM Receipt WHERE (Receipt.Customer_PK = [CUSTPK])")))
        return -1;
    Attempt()([&] {
        if (rows.hasCurrent())
            lngSumBonin = numberOf(rows[QStringLiteral("BoninSum")]);
    });

    if (!openedForReading(
            filled(u"SELECT tPSTransaction.tpstrans_Operator, Sum(tPSTransaction.tpstrans_Money) AS Result "
                   u"FROM Receipt, tPSTransaction "
                   u"WHERE (Receipt.Receipt_PK = tPSTransaction.tpstrans_OrderM_PK) "
                   u"AND (Receipt.Customer_PK = [CUSTPK])",
                   QStringLiteral(" GROUP BY tPSTransaction.tpstrans_Operator"))))
        return -1;
    qint32 *const sumOfOperator[] = {&lngSumJeolsa, &lngSumHalin, &lngSumSunap, &lngSumRefund};
    forEachRow(rows, [&] {
        const qint32 operation = numberOf(rows[QStringLiteral("tpstrans_Operator")]);
        if (operation >= ledger::Cut && operation <= ledger::Refund)
            *sumOfOperator[operation - ledger::Cut] = numberOf(rows[QStringLiteral("Result")]);
    });

    const bool handedOut = reopened(
        rsTarget,
        filled(u"SELECT Receipt.TxDate, Receipt.Bonin_Money, Receipt.Cheonggu_Money, Receipt.General_Money, "
               u"tPSTransaction.tpstrans_Date , tPSTransaction.tpstrans_Operator, tPSTransaction.tpstrans_Money, "
               u"tPSTransaction.tpstrans_Method "
               u"FROM Receipt LEFT JOIN tPSTransaction "
               u"ON (Receipt.Receipt_PK = tPSTransaction.tpstrans_OrderM_PK) "
               u"WHERE (Receipt.Customer_PK = [CUSTPK])",
               QStringLiteral(" ORDER BY TxDate, tpstrans_Date, tpstrans_Operator")),
        cnCon, ado::CursorType::Keyset, ado::LockType::Optimistic);
    return handedOut ? 0 : -1;
}

qint16 clsOperationMoney::OPM_MakeTransactionForSunapRefund(const ConnectionPtr &cnCon, const QDate &dStart,
                                                            const QDate &dLast, bool bIncludeAll,
                                                            ado::Recordset *rsTarget)
{
    const QString submitted =
        bIncludeAll ? QString() : QStringLiteral("AND (trans_NotSubmit=0 OR (trans_NotSubmit is null)) ");
    const QString text = QStringLiteral("SELECT Customer.name, Customer.ssn1, Customer.ssn2, Customer.Insu_Type, "
                                        "Customer.Insu_Symbol, Customer.Insu_No, tPSTransaction.tpstrans_Date, "
                                        "tPSTransaction.tpstrans_Operator, "
                                        "SUM(tPSTransaction.tpstrans_Money) As tpstrans_Money "
                                        "FROM tPSTransaction INNER JOIN Customer "
                                        "ON tPSTransaction.tpstrans_Customer_PK=Customer.Customer_PK "
                                        "WHERE (tPSTransaction.tpstrans_Operator=3 "
                                        "OR tPSTransaction.tpstrans_Operator= 4) "
                                        "AND (tPSTransaction.tpstrans_Date BETWEEN '[TRANSSTART]' AND '[TRANSEND]') "
                                        "AND (tPSTransaction.tpstrans_Money <> 0) ")
                         + submitted
                         + QStringLiteral("GROUP BY Customer.Customer_PK, tPSTransaction.tpstrans_Date, "
                                          "tPSTransaction.tpstrans_Operator, "
                                          "Customer.name, Customer.ssn1, Customer.ssn2, Customer.Insu_Type, "
                                          "Customer.Insu_Symbol, Customer.Insu_No "
                                          "ORDER BY tPSTransaction.tpstrans_Date, Customer.name");
    const QString filled =
        statement::fill(text, {{u"[TRANSSTART]", statement::date(dStart)}, {u"[TRANSEND]", statement::date(dLast)}});
    return reopened(rsTarget, filled, cnCon, ado::CursorType::Keyset, ado::LockType::Optimistic) ? 0 : -1;
}
