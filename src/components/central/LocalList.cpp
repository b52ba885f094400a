#include "components/central/LocalList.h"

#include "clinic/ChainTables.h"
#include "platform/ado/Transaction.h"

namespace central {

namespace {

constexpr std::size_t few = 500;

QString conditionFor(const Offer &offer)
{
    if (offer.whole || offer.products.size() > few)
        return {};
    QStringList keys{QStringLiteral("0")};
    for (const Offered &offered : offer.products)
        keys << QString::number(offered.key);
    return QStringLiteral("WHERE k.CK_Central IS NULL OR k.CK_Central IN (%1) ").arg(keys.join(u','));
}

} // namespace

LocalList LocalList::read(const ado::Connection &clinic, const Offer &offer)
{
    const ado::CellTable table = clinic.read(
        QStringLiteral("SELECT p.PM_PK, k.CK_Central, %1 FROM tPSProductMaster p LEFT JOIN t_CentralLink k ON "
                       "k.CK_Product = p.PM_PK %2ORDER BY p.PM_PK")
            .arg(clinic::chainColumnList(QStringLiteral("p")), conditionFor(offer)));
    LocalList list;
    for (int row = 0; row < table.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < table.columnCount(); ++column)
            cells << table.raw(row, column).toString();
        Row local{productIn(cells, 2), std::nullopt};
        if (!cells[1].isEmpty())
            local.central = cells[1].toInt();
        list.rows.emplace_hint(list.rows.end(), cells[0].toInt(), std::move(local));
    }
    return list;
}

bool hasLinks(const ado::Connection &clinic)
{
    const bool file = clinic.engine() == ado::Engine::SQLite;
    return clinic
               .read(file ? QStringLiteral("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name IN "
                                           "('t_CentralState', 't_CentralLink')")
                          : QStringLiteral("SELECT COUNT(to_regclass('t_centralstate')) + "
                                           "COUNT(to_regclass('t_centrallink'))"))
               .raw(0, 0)
               .toInt()
           == 2;
}

void makeLinks(ado::Connection &clinic)
{
    const ado::AbandonedTransactions another; // owner than the host, who may stand in a transaction
    ado::Transaction scope(clinic);
    const QStringList statements = clinic::chainLinkStatements(clinic.engine() != ado::Engine::SQLite);
    for (const QString &statement : statements)
        clinic.Execute(statement);
    scope.commit();
}

ListMark markOf(const ado::Connection &clinic)
{
    const ado::CellTable row = clinic.read(QStringLiteral("SELECT CS_List, CS_Revision FROM t_CentralState"));
    return row.rowCount() == 0 ? ListMark{} : ListMark{row.raw(0, 0).toString(), row.raw(0, 1).toLongLong()};
}

qint64 ownProducts(const ado::Connection &clinic)
{
    return clinic
        .read(QStringLiteral("SELECT COUNT(*) FROM tPSProductMaster WHERE PM_PK NOT IN (SELECT CK_Product FROM "
                             "t_CentralLink)"))
        .raw(0, 0)
        .toLongLong();
}

bool hasStrayed(const ado::Connection &clinic)
{
    const ado::CellTable count = clinic.read(
        QStringLiteral("SELECT COUNT(*) FROM t_CentralLink k LEFT JOIN tPSProductMaster p ON p.PM_PK = k.CK_Product "
                       "WHERE p.PM_PK IS NULL OR %1")
            .arg(clinic::chainNoteDiffers()));
    return count.raw(0, 0).toLongLong() > 0;
}

} // namespace central
