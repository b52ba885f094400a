#include "tests/components/SampleRows.h"

#include "desk/sample/Clinic.h"
#include "tests/support/PostgresServer.h"
#include "tests/support/Statements.h"

#include <QCoreApplication>
#include <QStringList>

namespace samplerows {

namespace {

std::unique_ptr<TestDatabase> made(ado::Engine engine)
{
    auto database = std::make_unique<TestDatabase>(engine, false);
    const ado::ConnectionPtr maker = ado::Connection::open(
        engine == ado::Engine::Odbc ? PostgresServer::instance().postgresAddress(database->serverDatabase())
                                    : database->address());
    sample::fill(*maker, sample::Size::Small);
    runFile(*database, "components/oddities.sql");
    return database;
}

std::map<ado::Engine, std::unique_ptr<TestDatabase>> &clinics()
{
    static std::map<ado::Engine, std::unique_ptr<TestDatabase>> filled;
    return filled;
}

QDate date(const QString &text)
{
    return QDate::fromString(text, Qt::ISODate);
}

QString orEmpty(const QString &text)
{
    return text == QStringLiteral("NULL") ? QString() : text;
}

} // namespace

void forgetClinics()
{
    clinics().clear();
}

TestDatabase &clinic(ado::Engine engine)
{
    // The toolkit's database layer ends with the application: the clinics go before it.
    [[maybe_unused]] static const bool endWithApplication = (qAddPostRoutine(forgetClinics), true);
    std::unique_ptr<TestDatabase> &found = clinics()[engine];
    if (!found) {
        PostgresServer::instance(); // outlives the databases on it
        found = made(engine);
    }
    return *found;
}

std::vector<Line> lines(TestDatabase &database)
{
    std::vector<Line> all;
    const QStringList rows = database.rows(
        QStringLiteral("SELECT m.OrdM_Date, d.OrdM_PK, m.Cust_PK, d.PM_PK, d.OrdD_UnitPrice, d.OrdD_HalinUnit, "
                       "d.OrdD_Count, d.OrdD_OrderType, p.PM_IsTaxed "
                       "FROM tPSOrderDetail d JOIN tPSOrderMaster m ON m.OrdM_PK = d.OrdM_PK LEFT JOIN "
                       "tPSProductMaster p ON p.PM_PK = d.PM_PK"));
    for (const QString &row : rows) {
        const QStringList cells = row.split(u'|');
        all.push_back(
            {date(cells[0]), cells[1].toInt(), cells[2].toInt(), cells[3].toInt(), cells[4].toLongLong(),
             cells[5].toLongLong(), cells[6].toLongLong(), cells[7].toInt(),
             cells[8] == QStringLiteral("NULL") ? std::nullopt : std::optional<bool>(cells[8] == QStringLiteral("1"))});
    }
    return all;
}

std::vector<LedgerRow> ledger(TestDatabase &database)
{
    std::vector<LedgerRow> all;
    const QStringList rows = database.rows("SELECT tpstrans_Date, tpstrans_OrderM_PK, tpstrans_Customer_PK, "
                                           "tpstrans_Operator, tpstrans_Money, tpstrans_Method FROM tPSTransaction");
    for (const QString &row : rows) {
        const QStringList cells = row.split(u'|');
        all.push_back({date(cells[0]), cells[1].toInt(), cells[2].toInt(), cells[3].toInt(), cells[4].toLongLong(),
                       orEmpty(cells[5])});
    }
    return all;
}

std::vector<Order> orders(TestDatabase &database)
{
    std::vector<Order> all;
    const QStringList rows = database.rows("SELECT OrdM_PK, Cust_PK, OrdM_Date, OrdM_Total FROM tPSOrderMaster");
    for (const QString &row : rows) {
        const QStringList cells = row.split(u'|');
        all.push_back({cells[0].toInt(), cells[1].toInt(), date(cells[2]), cells[3].toLongLong()});
    }
    return all;
}

statistics::Sheet read(statistics::Report &report, ado::Engine engine, const statistics::Period &period, int view)
{
    statistics::Reading(clinic(engine).connection(), report.figuresOf(view, period), period).readAll();
    return report.sheet(view);
}

std::string rendered(const statistics::Row &row)
{
    QStringList cells;
    for (const statistics::Cell &cell : row)
        cells << statistics::plainText(cell);
    return cells.join(u'|').toStdString();
}

std::string rendered(const statistics::Sheet &sheet)
{
    std::string all;
    for (const statistics::Row &row : sheet.rows)
        all += rendered(row) + '\n';
    return all + rendered(sheet.totals);
}

} // namespace samplerows
