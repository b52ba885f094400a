#include "money/clsOperationMoney.h"

#include "data/StatementText.h"
#include "data/modGeneralSQL.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"

#include <array>

// The sums and the operations on single receipts; those that read whole periods stand in clsOperationMoneyPeriods.cpp.

using ado::ConnectionPtr;
using runtime::Attempt;

namespace {

enum class LedgerSum : std::size_t {
    CutByTransaction,
    CutByDate,
    CutByCustDate,
    DiscountByTransaction,
    DiscountByDate,
    DiscountByCustDate,
    PayByTransaction,
    PayByDate,
    PayByCustDate,
    PayByCustDateCatagory,
    RefundByTransaction,
    RefundByDate,
    RefundByCustDate,
    CutByReceiptBoninGeneral,
    DiscountByReceiptBoninGeneral,
    PayByReceiptBoninGeneral,
    RefundByReceiptBoninGeneral,
    Count,
};

/// In the order of LedgerSum. The last four spell two columns in a case of their own, which no engine minds.
constexpr std::array<const char16_t *, std::size_t(LedgerSum::Count)> conditions = {
    u"WHERE tpstrans_OrderM_PK=[ORDERMPK] AND tpstrans_Operator=1",
    u"WHERE tpstrans_Date=[OPERDATE] AND tpstrans_Operator=1",
    u"WHERE tpstrans_Customer_PK=[CUSTPK] AND tpstrans_Date=[OPERDATE] AND tpstrans_Operator=1",
    u"WHERE tpstrans_OrderM_PK=[ORDERMPK] AND tpstrans_Operator=2",
    u"WHERE tpstrans_Date=[OPERDATE] AND tpstrans_Operator=2",
    u"WHERE tpstrans_Customer_PK=[CUSTPK] AND tpstrans_Date=[OPERDATE] AND tpstrans_Operator=2",
    u"WHERE tpstrans_OrderM_PK=[ORDERMASTERPK] AND tpstrans_Operator=3",
    u"WHERE tpstrans_Date=[OPERDATE] AND tpstrans_Operator=3",
    u"WHERE tpstrans_Customer_PK=[CUSTPK] AND tpstrans_Date=[OPERDATE] AND tpstrans_Operator=3",
    u"WHERE tpstrans_Customer_PK=[CUSTPK] AND tpstrans_Date=[OPERDATE] AND tpstrans_Operator=3 "
    u"AND tpstrans_Method='[TRANSMETHOD]'",
    u"WHERE tpstrans_OrderM_PK=[ORDERMASTERPK] AND tpstrans_Operator=4",
    u"WHERE tpstrans_Date=[OPERDATE] AND tpstrans_Operator=4",
    u"WHERE tpstrans_Customer_PK=[CUSTPK] AND tpstrans_Date=[OPERDATE] AND tpstrans_Operator=4",
    u"WHERE tpstrans_OrderM_PK=[ORDMPK] AND tpsTrans_Operator=1 AND tpstrans_date = '[TRANSDATE]'",
    u"WHERE tpstrans_OrderM_PK=[ORDMPK] AND tpsTrans_Operator=2 AND tpstrans_date = '[TRANSDATE]'",
    u"WHERE tpstrans_OrderM_PK=[ORDMPK] AND tpsTrans_Operator=3 AND tpstrans_date = '[TRANSDATE]'",
    u"WHERE tpstrans_OrderM_PK=[ORDMPK] AND tpsTrans_Operator=4 AND tpstrans_date = '[TRANSDATE]'",
};

/// What a sum is asked for; a condition has places for some of it.
struct Asked
{
    qint32 receipt = 0;
    qint32 customer = 0;
    QDate day = {};
    QString method = {};
};

QString sumStatement(LedgerSum which, const Asked &asked)
{
    const QString receipt = statement::number(asked.receipt);
    return statement::fill(QStringLiteral("SELECT SUM(tpstrans_Money) AS Result FROM tPSTransaction ")
                               + QString::fromUtf16(conditions[std::size_t(which)]),
                           {{u"[ORDERMPK]", receipt},
                            {u"[ORDERMASTERPK]", receipt},
                            {u"[ORDMPK]", receipt},
                            {u"[CUSTPK]", statement::number(asked.customer)},
                            {u"[OPERDATE]", statement::quotedDate(asked.day)},
                            {u"[TRANSDATE]", statement::date(asked.day)},
                            {u"[TRANSMETHOD]", asked.method}});
}

QString countStatement(qint32 lngOrderMasterPK)
{
    return statement::fill(u"SELECT COUNT(*) AS Result FROM tPSTransaction WHERE tpstrans_OrderM_PK=[ORDERMPK]",
                           {{u"[ORDERMPK]", statement::number(lngOrderMasterPK)}});
}

/// Opens a forward-only, read-only recordset.
bool openedForReading(ado::Recordset &rows, const QString &statement, const ConnectionPtr &connection)
{
    Attempt attempt;
    attempt([&] { rows.Open(statement, connection, ado::CursorType::ForwardOnly, ado::LockType::ReadOnly); });
    return !attempt.failed();
}

QVariant resultOf(const ado::Recordset &rows)
{
    return rows[QStringLiteral("Result")];
}

qint32 zeroWhenNull(const QVariant &number)
{
    return runtime::isNull(number) ? 0 : runtime::CLng(number);
}

/// Quirk (docs/architecture.md): false only when the open failed; a sum that does not fit is 0 and counts as read.
bool sumInto(qint32 &money, LedgerSum which, const ConnectionPtr &connection, const Asked &asked)
{
    money = 0;
    ado::Recordset rows;
    if (!openedForReading(rows, sumStatement(which, asked), connection))
        return false;
    Attempt()([&] {
        if (rows.hasCurrent())
            money = zeroWhenNull(resultOf(rows));
    });
    return true;
}

} // namespace

void tellExistOperationByReceipt(ado::Foresight &next, qint32 lngOrderMasterPK)
{
    next.open(countStatement(lngOrderMasterPK), ado::CursorType::ForwardOnly);
}

void tellSumsOfTransaction(ado::Foresight &next, qint32 lngOrderMasterPK)
{
    for (const LedgerSum which : {LedgerSum::CutByTransaction, LedgerSum::DiscountByTransaction,
                                  LedgerSum::PayByTransaction, LedgerSum::RefundByTransaction})
        next.open(sumStatement(which, {.receipt = lngOrderMasterPK}), ado::CursorType::ForwardOnly);
}

clsOperationMoney::clsOperationMoney(QObject *parent)
    : QObject(parent)
{
}

bool clsOperationMoney::OPM_SetConnection(const ConnectionPtr &cnNew)
{
    connection_ = cnNew;
    return true;
}

bool clsOperationMoney::OPM_DestroyConnection()
{
    connection_.reset();
    return true;
}

qint16 clsOperationMoney::OPM_ExistOperationByReceipt(qint32 lngOrderMasterPK)
{
    ado::Recordset rows;
    if (!openedForReading(rows, countStatement(lngOrderMasterPK), connection_))
        return -1;
    bool exists = false;
    Attempt()([&] { exists = rows.hasCurrent() && zeroWhenNull(resultOf(rows)) != 0; });
    return exists ? 1 : 0;
}

qint16 clsOperationMoney::OPM_DeleteAllByReceipt(const ConnectionPtr &cnCon, qint32 lngOrderMasterPK,
                                                 const QString &strTransTemp)
{
    QString text = statement::fill(u"DELETE FROM tPSTransaction WHERE tpstrans_OrderM_PK=[ORDERMASTERPK]",
                                   {{u"[ORDERMASTERPK]", statement::number(lngOrderMasterPK)}});
    if (!strTransTemp.isEmpty())
        text += statement::fill(u" AND trans_temp='[TRANSTEMP]'", {{u"[TRANSTEMP]", sqlEscapeQuotes(strTransTemp)}});
    if (!cnCon)
        return -1;
    Attempt attempt;
    attempt([&] { cnCon->Execute(text); });
    return attempt.failed() ? -1 : 0;
}

bool clsOperationMoney::OPM_GetCutByTransaction(qint32 lngOrderMasterPK, qint32 &lngCut)
{
    return sumInto(lngCut, LedgerSum::CutByTransaction, connection_, {.receipt = lngOrderMasterPK});
}

bool clsOperationMoney::OPM_GetCutByDate(const QDate &dOperDate, qint32 &lngCut)
{
    return sumInto(lngCut, LedgerSum::CutByDate, connection_, {.day = dOperDate});
}

bool clsOperationMoney::OPM_GetCutByCustDate(qint32 lngCustPK, const QDate &dOperDate, qint32 &lngCut)
{
    return sumInto(lngCut, LedgerSum::CutByCustDate, connection_, {.customer = lngCustPK, .day = dOperDate});
}

bool clsOperationMoney::OPM_GetDiscountByTransaction(qint32 lngOrderMasterPK, qint32 &lngDiscount)
{
    return sumInto(lngDiscount, LedgerSum::DiscountByTransaction, connection_, {.receipt = lngOrderMasterPK});
}

bool clsOperationMoney::OPM_GetDiscountByDate(const QDate &dOperDate, qint32 &lngDiscount)
{
    return sumInto(lngDiscount, LedgerSum::DiscountByDate, connection_, {.day = dOperDate});
}

bool clsOperationMoney::OPM_GetDiscountByCustDate(qint32 lngCustPK, const QDate &dOperDate, qint32 &lngDiscount)
{
    return sumInto(lngDiscount, LedgerSum::DiscountByCustDate, connection_, {.customer = lngCustPK, .day = dOperDate});
}

bool clsOperationMoney::OPM_GetPayByTransaction(qint32 lngOrderMasterPK, qint32 &lngPay)
{
    return sumInto(lngPay, LedgerSum::PayByTransaction, connection_, {.receipt = lngOrderMasterPK});
}

bool clsOperationMoney::OPM_GetPayByDate(const QDate &dOperDate, qint32 &lngPay)
{
    return sumInto(lngPay, LedgerSum::PayByDate, connection_, {.day = dOperDate});
}

bool clsOperationMoney::OPM_GetPayByCustDate(qint32 lngCustPK, const QDate &dOperDate, qint32 &lngPay)
{
    return sumInto(lngPay, LedgerSum::PayByCustDate, connection_, {.customer = lngCustPK, .day = dOperDate});
}

bool clsOperationMoney::OPM_GetPayByCustDateCatagory(qint32 lngCustPK, const QDate &dOperDate,
                                                     const QString &strCatagory, qint32 &lngPayCatagory)
{
    return sumInto(lngPayCatagory, LedgerSum::PayByCustDateCatagory, connection_,
                   {.customer = lngCustPK, .day = dOperDate, .method = strCatagory});
}

bool clsOperationMoney::OPM_GetRefundByTransaction(const ConnectionPtr &cnCon, qint32 lngOrderMasterPK,
                                                   qint32 &lngRefund)
{
    return sumInto(lngRefund, LedgerSum::RefundByTransaction, cnCon, {.receipt = lngOrderMasterPK});
}

bool clsOperationMoney::OPM_GetRefundByDate(const QDate &dOperDate, qint32 &lngRefund)
{
    return sumInto(lngRefund, LedgerSum::RefundByDate, connection_, {.day = dOperDate});
}

bool clsOperationMoney::OPM_GetSumOfTransactionByReceipt(const ConnectionPtr &cnCon, qint32 lngOrderMasterPK,
                                                         qint32 &lngTransaction, qint32 &lngRefund)
{
    lngTransaction = 0;
    lngRefund = 0;
    ado::Recordset rows;
    const QString text = statement::fill(u"SELECT SUM(tpstrans_Money) AS Result FROM tPSTransaction "
                                         u"WHERE tpstrans_OrderM_PK=[ORDERMASTERPK] "
                                         u"AND (tpstrans_Operator=1 OR tpstrans_Operator=2 OR tpstrans_Operator=3)",
                                         {{u"[ORDERMASTERPK]", statement::number(lngOrderMasterPK)}});
    if (!openedForReading(rows, text, cnCon))
        return false;
    Attempt()([&] { lngTransaction = zeroWhenNull(resultOf(rows)); });
    const bool done = OPM_GetRefundByTransaction(cnCon, lngOrderMasterPK, lngRefund);
    if (!done)
        lngTransaction = lngRefund = 0;
    return done;
}

bool clsOperationMoney::OPM_GetRefundByCustDate(qint32 lngCustPK, const QDate &dOperDate, qint32 &lngRefund)
{
    return sumInto(lngRefund, LedgerSum::RefundByCustDate, connection_, {.customer = lngCustPK, .day = dOperDate});
}

bool clsOperationMoney::OPM_GetCutByReceiptBoninGeneral(const ConnectionPtr &cnCon, qint32 lngOrdMPK, qint32 &lngCut,
                                                        const QDate &dtDate)
{
    return sumInto(lngCut, LedgerSum::CutByReceiptBoninGeneral, cnCon, {.receipt = lngOrdMPK, .day = dtDate});
}

bool clsOperationMoney::OPM_GetDiscountByReceiptBoninGeneral(const ConnectionPtr &cnCon, qint32 lngOrdMPK,
                                                             qint32 &lngDiscount, const QDate &dtDate)
{
    return sumInto(lngDiscount, LedgerSum::DiscountByReceiptBoninGeneral, cnCon, {.receipt = lngOrdMPK, .day = dtDate});
}

bool clsOperationMoney::OPM_GetPayByReceiptBoninGeneral(const ConnectionPtr &cnCon, qint32 lngOrdMPK, qint32 &lngPay,
                                                        const QDate &dtDate)
{
    return sumInto(lngPay, LedgerSum::PayByReceiptBoninGeneral, cnCon, {.receipt = lngOrdMPK, .day = dtDate});
}

bool clsOperationMoney::OPM_GetRefundByReceiptBoninGeneral(const ConnectionPtr &cnCon, qint32 lngOrdMPK,
                                                           qint32 &lngRefund, const QDate &dtDate)
{
    return sumInto(lngRefund, LedgerSum::RefundByReceiptBoninGeneral, cnCon, {.receipt = lngOrdMPK, .day = dtDate});
}
