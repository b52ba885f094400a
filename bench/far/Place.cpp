#include "bench/far/Place.h"

namespace bench {

namespace {

constexpr std::chrono::milliseconds oneWay(10);

} // namespace

Place::Place(sample::Size size)
    : server_(PostgresServer::Writing::Careless)
    , database_(server_.createDatabase())
    , copy_(database_ + QStringLiteral("_copy"))
{
    sample::makeClinic(server_.postgresAddress(database_), size);
    ado::Connection::open(server_.postgresAddress(database_))->Execute(QStringLiteral("VACUUM ANALYZE"));
    ado::Connection::open(server_.postgresAddress(QStringLiteral("postgres")))
        ->Execute(QStringLiteral("CREATE DATABASE %1 TEMPLATE %2").arg(copy_, database_));
    beside_ = ado::Connection::open(server_.postgresAddress(database_));
    besideCopy_ = ado::Connection::open(server_.postgresAddress(copy_));
    const QString folder = server_.postgresAddress({}).section(QStringLiteral("host="), 1);
    wire_ = std::make_unique<FarWire>(folder, oneWay);
}

desk::Patient Place::patient(int number) const
{
    const ado::CellTable keys = beside_->read(
        QStringLiteral("SELECT Cust_PK FROM tPSOrderMaster GROUP BY Cust_PK HAVING COUNT(*) BETWEEN 3 AND 24 "
                       "ORDER BY COUNT(*) DESC, Cust_PK OFFSET %1 LIMIT 1")
            .arg(number));
    return *desk::readPatient(beside_, keys.raw(0, 0).toInt());
}

int Place::waitMilliseconds()
{
    return int(2 * oneWay.count());
}

QString Place::rowsOf(ado::Connection &clinic)
{
    QStringList all;
    for (const char *table : {"tPSOrderMaster", "tPSOrderDetail", "tPSTransaction"})
        all << clinic
                   .read(QStringLiteral("SELECT md5(string_agg(t::text, '|' ORDER BY t::text)) FROM %1 t")
                             .arg(QLatin1String(table)))
                   .raw(0, 0)
                   .toString();
    return all.join(u' ');
}

} // namespace bench
