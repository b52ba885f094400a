#include "sales/clsFunctions.h"

#include "data/HeldOrder.h"
#include "data/OneStep.h"
#include "data/clsSQL.h"
#include "platform/ado/Foresight.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

#include <algorithm>
#include <limits>

using runtime::Currency;

namespace {

/// The named column of the statement's first row; NULL when there is no row.
QVariant firstValue(const ado::ConnectionPtr &connection, const QString &statement, const QString &column)
{
    ado::Recordset rows;
    rows.Open(statement, connection, ado::CursorType::ForwardOnly, ado::LockType::ReadOnly);
    return rows.hasCurrent() ? rows[column] : QVariant();
}

Currency firstMoney(const ado::ConnectionPtr &connection, const QString &statement, const QString &column)
{
    const QVariant money = firstValue(connection, statement, column);
    return runtime::isNull(money) ? Currency() : runtime::CCur(money);
}

struct Totals
{
    Currency tax;
    Currency taxFree;
    Currency discount;
};

Totals sumsOf(const ado::ConnectionPtr &connection, qint32 lngOrdMPK)
{
    const clsSQL sql;
    const QString taxOrFree = QStringLiteral("TAXORFREETOTAL");
    return {firstMoney(connection, sql.getSumTaxOrTaxFreeTotalSQL(lngOrdMPK, true), taxOrFree),
            firstMoney(connection, sql.getSumTaxOrTaxFreeTotalSQL(lngOrdMPK, false), taxOrFree),
            firstMoney(connection, sql.getSumHalinTotalSQL(lngOrdMPK), QStringLiteral("HALINTOTAL"))};
}

QString writing(qint32 lngOrdMPK, const Totals &sums)
{
    return clsSQL().updateOrderMasterTotalSQL(lngOrdMPK, sums.tax, sums.taxFree, sums.discount, sums.tax + sums.taxFree,
                                              Currency());
}

/// A count that leaves 16 bits must not read as none: a product in use would be deleted.
qint16 firstCount(const ado::ConnectionPtr &connection, const QString &statement, const QString &column)
{
    try {
        const QVariant count = firstValue(connection, statement, column);
        const qint32 most = std::numeric_limits<qint16>::max();
        return runtime::isNull(count) ? 0 : static_cast<qint16>(std::min(runtime::CLng(count), most));
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        return 0;
    }
}

} // namespace

clsFunctions::clsFunctions(QObject *parent)
    : QObject(parent)
{
}

qint16 clsFunctions::reCalculateOMTotal(ado::ConnectionPtr &cnnMasterDB, qint32 lngOrdMPK)
{
    const runtime::Operation operation("sum order", {{"order", lngOrdMPK}});
    if (!cnnMasterDB)
        return 0;
    try {
        // Held while it is summed: otherwise another desk adds a line between the sums and their writing, writes its own
        // sums first, and its line is missing from the total.
        OneStep step(*cnnMasterDB);
        const clsSQL sql;
        ado::Foresight next(cnnMasterDB);
        next.open(sql.getSumTaxOrTaxFreeTotalSQL(lngOrdMPK, true), ado::CursorType::ForwardOnly)
            .open(sql.getSumTaxOrTaxFreeTotalSQL(lngOrdMPK, false), ado::CursorType::ForwardOnly)
            .open(sql.getSumHalinTotalSQL(lngOrdMPK), ado::CursorType::ForwardOnly);
        orderIsHeld(*cnnMasterDB, lngOrdMPK); // one that is gone takes no totals, and that is no failure
        step.endWith(writing(lngOrdMPK, sumsOf(cnnMasterDB, lngOrdMPK)));
        return 1;
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        return 0;
    }
}

qint16 clsFunctions::countSameExistProductName(ado::ConnectionPtr &cnnMasterDB, const QString &strPMName)
{
    return firstCount(cnnMasterDB, clsSQL().getNumOfSameProdName(strPMName), QStringLiteral("NAMECOUNT"));
}

qint16 clsFunctions::CountNoOfProductUsed(ado::ConnectionPtr &conMasterDB, qint32 lngPMPK)
{
    return firstCount(conMasterDB, clsSQL().getNumOfUsedProdSQL(lngPMPK), QStringLiteral("NUMOFPRO"));
}
