#include "components/central/HeadOffice.h"

#include "clinic/ChainTables.h"
#include "components/central/ServerReading.h"
#include "platform/ado/Connection.h"
#include "platform/runtime/RuntimeError.h"

#include <QElapsedTimer>

namespace central {

namespace {

constexpr qint64 longestWait = 4'500; // ms, so that five seconds hold with everything around it
constexpr int betweenLooks = 40;      // ms
constexpr qsizetype ownColumns = 5;   // of an offer's row, before those of the product

const QString noList = QStringLiteral(
    "본부의 데이터베이스에 체인의 물품 목록이 없습니다. 본부에서 desk --head-office를 먼저 실행하십시오.");

std::vector<QStringList> demandRows(std::vector<QStringList> rows)
{
    if (rows.empty())
        throw runtime::RuntimeError(runtime::ErrorNumber::Database, noList);
    return rows;
}

/// To be read only, also where it is a file.
ado::ConnectionPtr opened(const QString &address)
{
    const QString mark = QStringLiteral("?mode=ro");
    const bool file = address.startsWith(QLatin1String("sqlite:")) && !address.endsWith(mark);
    try {
        return ado::Connection::open(file ? address + mark : address);
    } catch (const runtime::RuntimeError &error) {
        throw error.toldAs(runtime::ErrorNumber::ConnectionLost, error.description());
    }
}

/// One statement, so that the mark is that of the rows. A reader of another list, or of one that has gone back to a backup
/// since, gets the whole. By its key even a server that has never looked at it knows that the list is one row.
QString offerStatement(const ListMark &since)
{
    return QStringLiteral(
               "SELECT l.CL_List, l.CL_Revision, CASE WHEN l.CL_List = '%1' AND l.CL_Revision >= %2 THEN 0 ELSE 1 END, "
               "c.CP_Product, p.PM_PK, %3 FROM t_CentralList l LEFT JOIN t_CentralProduct c ON c.CP_Revision > CASE "
               "WHEN "
               "l.CL_List = '%1' AND l.CL_Revision >= %2 THEN %2 ELSE 0 END LEFT JOIN tPSProductMaster p ON p.PM_PK = "
               "c.CP_Product WHERE l.CL_Key = 1 ORDER BY c.CP_Product")
        .arg(QString(since.list).remove(u'\''), QString::number(since.revision),
             clinic::chainColumnList(QStringLiteral("p")));
}

std::vector<QStringList> textsOf(const ado::CellTable &table)
{
    std::vector<QStringList> rows;
    for (int row = 0; row < table.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < table.columnCount(); ++column)
            cells << table.raw(row, column).toString();
        rows.push_back(std::move(cells));
    }
    return rows;
}

} // namespace

HeadOffice::HeadOffice(QString address, std::function<void()> meanwhile)
    : address_(std::move(address))
    , meanwhile_(std::move(meanwhile))
{
}

ListMark HeadOffice::mark() const
{
    const auto found =
        demandRows(rows(QStringLiteral("SELECT CL_List, CL_Revision FROM t_CentralList"), Patience::InAll, {}));
    return {found.front()[0], found.front()[1].toLongLong()};
}

Offer HeadOffice::offer(const ListMark &since, const Progress &progress) const
{
    const auto found = demandRows(rows(offerStatement(since), Patience::WhileComing, progress));
    const QStringList &first = found.front();
    Offer offer{{first[0], first[1].toLongLong()}, first[2].toInt() != 0, {}};
    for (const QStringList &row : found) {
        if (!row[3].isEmpty()) // the one row of a list from which nothing is wanted
            offer.products.push_back({row[3].toInt(), row[4].isEmpty(), productIn(row, ownColumns)});
    }
    if (progress)
        progress(qint64(offer.products.size()), 0);
    return offer;
}

std::vector<QStringList> HeadOffice::rows(const QString &statement, Patience how, const Progress &progress) const
{
    try {
        if (address_.startsWith(QLatin1String("postgresql://")))
            return fromServer(statement, how, progress);
        return textsOf(opened(address_)->read(statement));
    } catch (const runtime::RuntimeError &error) {
        const QByteArray &state = error.origin().server.state;
        if (state == "42P01" || state == "1") // a server's word for a missing table, and the embedded engine's
            throw error.toldAs(error.number(), noList);
        if (error.number() == runtime::ErrorNumber::ConnectionLost)
            throw Unreachable(error);
        throw;
    }
}

std::vector<QStringList> HeadOffice::fromServer(const QString &statement, Patience how, const Progress &progress) const
{
    ServerReading reading(address_, statement);
    QElapsedTimer waited;
    waited.start();
    qint64 signs = 0;
    while (!reading.isDone(betweenLooks)) {
        if (how == Patience::WhileComing && signs != reading.signs()) {
            signs = reading.signs();
            waited.restart();
        }
        if (waited.elapsed() > longestWait)
            throw runtime::RuntimeError(runtime::ErrorNumber::ConnectionLost,
                                        QStringLiteral("본부의 물품 서버가 대답하지 않습니다."));
        if (progress)
            progress(reading.rowsSoFar(), 0);
        if (meanwhile_)
            meanwhile_();
    }
    return reading.take();
}

} // namespace central
