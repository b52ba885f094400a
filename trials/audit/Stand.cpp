#include "trials/audit/Stand.h"

#include <stdexcept>

namespace trial {

namespace {

/// Counts and sums of the rows up to a key, each money column by itself.
QString sumsOf(const ado::Connection &clinic, const char *table, const char *key, qint32 last, const char *sums)
{
    const ado::CellTable rows = clinic.read(QStringLiteral("SELECT COUNT(*), %4 FROM %1 WHERE %2 <= %3")
                                                .arg(QLatin1String(table), QLatin1String(key))
                                                .arg(last)
                                                .arg(QLatin1String(sums)));
    QString text;
    for (int column = 0; column < rows.columnCount(); ++column)
        text += rows.raw(0, column).toString() + u' ';
    return text;
}

qint32 lastKey(const ado::Connection &clinic, const char *table, const char *key)
{
    return clinic.read(QStringLiteral("SELECT MAX(%1) FROM %2").arg(QLatin1String(key), QLatin1String(table)))
        .raw(0, 0)
        .toInt();
}

QString sumsOfOldRows(const ado::Connection &clinic, const Before &before)
{
    return sumsOf(clinic, "tPSOrderMaster", "OrdM_PK", before.lastOrder,
                  "SUM(OrdM_Total), SUM(OrdM_HalinTotal), SUM(OrdM_Misugum)")
           + sumsOf(clinic, "tPSOrderDetail", "OrdD_PK", before.lastLine,
                    "SUM(OrdD_UnitPrice), SUM(OrdD_HalinUnit), SUM(OrdD_Count)")
           + sumsOf(clinic, "tPSTransaction", "tpstrans_PK", before.lastEntry, "SUM(tpstrans_Money)")
           + sumsOf(clinic, "tPSProductMaster", "PM_PK", before.lastProduct, "SUM(PM_UnitPrice)");
}

void readOrders(const ado::Connection &clinic, const Before &before, Stand &stand)
{
    // The totals as the lines give them now, beside those that are stored.
    const ado::CellTable rows = clinic.read(
        QStringLiteral(
            "SELECT m.OrdM_PK, m.OrdM_Address, m.OrdM_ETCMemo, m.OrdM_Misugum, m.OrdM_TaxTotal, m.OrdM_TaxFreeTotal, "
            "m.OrdM_HalinTotal, m.OrdM_Total, s.taxed, s.free, s.discount FROM tPSOrderMaster m LEFT JOIN "
            "(SELECT d.OrdM_PK AS pk, SUM(CASE WHEN p.PM_IsTaxed = 1 THEN (d.OrdD_UnitPrice - d.OrdD_HalinUnit) * "
            "d.OrdD_Count "
            "ELSE 0 END) AS taxed, SUM(CASE WHEN p.PM_IsTaxed = 1 THEN 0 ELSE (d.OrdD_UnitPrice - d.OrdD_HalinUnit) * "
            "d.OrdD_Count END) AS free, SUM(d.OrdD_HalinUnit * d.OrdD_Count) AS discount FROM tPSOrderDetail d JOIN "
            "tPSProductMaster p ON p.PM_PK = d.PM_PK WHERE d.OrdM_PK > %1 GROUP BY d.OrdM_PK) s ON s.pk = m.OrdM_PK "
            "WHERE m.OrdM_PK > %1")
            .arg(before.lastOrder));
    for (int row = 0; row < rows.rowCount(); ++row) {
        const auto number = [&](int column) { return qRound64(rows.raw(row, column).toDouble()); };
        Stand::Order &order = stand.orders[rows.raw(row, 0).toInt()];
        order.address = rows.raw(row, 1).toLongLong();
        order.memo = rows.raw(row, 2).toLongLong();
        order.owed = number(3);
        order.summed = number(4) == number(8) && number(5) == number(9) && number(6) == number(10)
                       && number(7) == number(8) + number(9);
    }
}

void readProducts(const ado::Connection &clinic, const Before &before, Stand &stand)
{
    const ado::CellTable products = clinic.read(
        QStringLiteral("SELECT PM_PK, PM_EtcMemo FROM tPSProductMaster WHERE PM_PK > %1").arg(before.lastProduct));
    for (int row = 0; row < products.rowCount(); ++row)
        stand.products[products.raw(row, 0).toInt()] = products.raw(row, 1).toLongLong();
    const ado::CellTable lines = clinic.read(
        QStringLiteral("SELECT d.OrdM_PK FROM tPSOrderDetail d WHERE d.OrdD_PK > %1 AND NOT EXISTS (SELECT 1 "
                       "FROM tPSProductMaster p WHERE p.PM_PK = d.PM_PK)")
            .arg(before.lastLine));
    for (int row = 0; row < lines.rowCount(); ++row)
        stand.linesWithoutProduct.push_back(lines.raw(row, 0).toInt());
}

} // namespace

Before before(const ado::Connection &clinic)
{
    Before before;
    before.lastOrder = lastKey(clinic, "tPSOrderMaster", "OrdM_PK");
    before.lastLine = lastKey(clinic, "tPSOrderDetail", "OrdD_PK");
    before.lastEntry = lastKey(clinic, "tPSTransaction", "tpstrans_PK");
    before.lastProduct = lastKey(clinic, "tPSProductMaster", "PM_PK");
    before.sums = sumsOfOldRows(clinic, before);
    return before;
}

Stand readStand(const ado::Connection &clinic, const Before &before)
{
    if (sumsOfOldRows(clinic, before) != before.sums)
        throw std::runtime_error("rows from before the trial were touched");
    Stand stand;
    readOrders(clinic, before, stand);
    readProducts(clinic, before, stand);
    const ado::CellTable lines =
        clinic.read(QStringLiteral("SELECT OrdM_PK, CASE WHEN OrdD_Count < 0 THEN OrdD_UnitPrice ELSE OrdD_HalinUnit "
                                   "END FROM tPSOrderDetail WHERE OrdD_PK > %1")
                        .arg(before.lastLine));
    stand.lines = lines.rowCount();
    for (int row = 0; row < stand.lines; ++row)
        stand.rows.insert({qRound64(lines.raw(row, 1).toDouble()), {lines.raw(row, 0).toInt(), false}});
    const ado::CellTable entries =
        clinic.read(QStringLiteral("SELECT tpstrans_OrderM_PK, tpstrans_Money FROM tPSTransaction "
                                   "WHERE tpstrans_PK > %1")
                        .arg(before.lastEntry));
    stand.entries = entries.rowCount();
    for (int row = 0; row < stand.entries; ++row)
        stand.rows.insert({entries.raw(row, 1).toLongLong(), {entries.raw(row, 0).toInt(), true}});
    return stand;
}

} // namespace trial
