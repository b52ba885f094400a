#include "tests/components/SampleRows.h"

#include "desk/sample/Clinic.h"
#include "tests/support/PostgresServer.h"

#include <QCoreApplication>
#include <QStringList>

namespace samplerows {

namespace {

/// What a shop's tables may hold and the sample does not.
const char *const oddities[] = {
    // a line whose product is gone, taken back in part on the same day; one of an unknown kind; a second order
    // without lines, and one of a patient who is gone
    "INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Total, OrdM_Misugum) VALUES (90001, 1, "
    "'2026-03-14', NULL, NULL), "
    "(90002, 2, '2026-03-14', 5000, 1500), (90003, 2, '2026-03-14', 700, 700), (90004, 99999, '2026-03-14', 700, 700)",
    "INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) VALUES "
    "(90001, 99999, 7000, 500, 3, NULL), (90001, 99999, 6500, 100, -1, NULL), (90002, 1, 2500, 0, 2, 3), (90002, 2, 0, "
    "0, 4, 2), "
    "(90003, 1, 800, NULL, 2, 0), (90003, 1, 800, NULL, -1, 0)", // a discount that nobody stored is none
    // every method, known or not, and operators that are no payment
    "INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, "
    "tpstrans_Money, "
    "tpstrans_Method) VALUES (1, 90001, '2026-03-14', 3, 11, NULL), (1, 90001, '2026-03-14', 3, 13, ''), "
    "(1, 90001, '2026-03-14', 3, 17, '02'), (1, 90001, '2026-03-14', 3, 17, '02'), (99999, 90004, '2026-03-14', 3, 67, "
    "'00'), (4, 90002, '2026-03-15', 3, 71, '10'), "
    "(1, 90001, '2026-03-14', 3, 19, '03'), (2, 90002, '2026-03-14', 3, 23, '10'), "
    "(2, 90002, '2026-03-14', 3, 29, '11'), (2, 90002, '2026-03-14', 3, 31, '12'), (2, 90002, '2026-03-14', 4, 37, "
    "'11'), "
    "(2, 90002, '2026-03-14', 4, 41, '12'), (2, 90002, '2026-03-14', 4, 43, NULL), (2, 90002, '2026-03-14', NULL, 47, "
    "'00'), "
    "(3, 10000001, '2026-03-14', 3, 53, '00'), (1, 90002, '2026-03-14', 1, 59, ''), (2, 90002, '2026-03-16', 3, 61, "
    "'10')",
    // two prices on the last day of purchase, one later without a price; sold without a purchase
    "INSERT INTO tPSProductMaster (PM_PK, PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid) VALUES "
    "(9001, '시험', '두 값', 1000, 1, 1), (9002, '시험', '없이 판 것', 1000, 0, 1), (9003, '시험', '다 판 것', 1000, "
    "0, 1)",
    "INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice) VALUES (9001, 1, '2026-01-05', 50, 900), "
    "(9001, 1, '2026-06-05', 30, 400), (9001, 1, '2026-06-05', 20, 450), (9001, 1, NULL, 5, 999), (9003, 1, "
    "'2026-06-05', 2, 10)",
    "INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) "
    "SELECT MAX(OrdM_PK), 9001, 1000, 0, 91, NULL FROM tPSOrderMaster WHERE OrdM_PK < 90000",
    "INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) "
    "VALUES (90002, 9002, 1000, 0, 3, 1), (90002, 9003, 1000, 0, 2, 0)",
};

std::unique_ptr<TestDatabase> made(ado::Engine engine)
{
    auto database = std::make_unique<TestDatabase>(engine, false);
    const ado::ConnectionPtr maker = ado::Connection::open(
        engine == ado::Engine::Odbc ? PostgresServer::instance().postgresAddress(database->serverDatabase())
                                    : database->address());
    sample::fill(*maker, sample::Size::Small);
    for (const char *oddity : oddities)
        database->run(QString::fromUtf8(oddity));
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
    const QStringList rows =
        database.rows(QStringLiteral("SELECT m.OrdM_Date, d.OrdM_PK, d.PM_PK, d.OrdD_UnitPrice, d.OrdD_HalinUnit, "
                                     "d.OrdD_Count, d.OrdD_OrderType, p.PM_IsTaxed "
                                     "FROM tPSOrderDetail d JOIN tPSOrderMaster m ON m.OrdM_PK = d.OrdM_PK LEFT JOIN "
                                     "tPSProductMaster p ON p.PM_PK = d.PM_PK"));
    for (const QString &row : rows) {
        const QStringList cells = row.split(u'|');
        all.push_back(
            {date(cells[0]), cells[1].toInt(), cells[2].toInt(), cells[3].toLongLong(), cells[4].toLongLong(),
             cells[5].toLongLong(), cells[6].toInt(),
             cells[7] == QStringLiteral("NULL") ? std::nullopt : std::optional<bool>(cells[7] == QStringLiteral("1"))});
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
    statistics::Reading(clinic(engine).connection(), report.figures(period), period).readAll();
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
