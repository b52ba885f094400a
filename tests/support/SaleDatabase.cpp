#include "tests/support/SaleDatabase.h"

SaleDatabase::SaleDatabase(ado::Engine engine)
    : database_(engine)
{
    gcnnMasterDB = database_.connection();
    session_.customer.lngCustPK = Patient;
    session_.customer.address = QStringLiteral(" 서울시 종로구 1 ");
    session_.customer.phone = QStringLiteral("02-123-4567");
    session_.customer.cell = QStringLiteral("010-1234-5678");
}

SaleDatabase::~SaleDatabase()
{
    gcnnMasterDB.reset();
}

Rows SaleDatabase::rows(const QString &statement)
{
    Rows rows;
    for (const QString &row : database_.rows(statement))
        rows.push_back(row.toStdString());
    return rows;
}

void SaleDatabase::refuse(const QString &event)
{
    if (database_.engine() == ado::Engine::SQLite) {
        atOtherDesk(QStringLiteral("CREATE TRIGGER refusal %1 BEGIN SELECT RAISE(ABORT, 'refused'); END").arg(event));
        return;
    }
    if (database_.engine() == ado::Engine::MariaDB) {
        atOtherDesk(QStringLiteral("CREATE TRIGGER refusal %1 FOR EACH ROW SIGNAL SQLSTATE '45000' SET MESSAGE_TEXT = "
                                   "'refused'")
                        .arg(event));
        return;
    }
    atOtherDesk(
        "CREATE FUNCTION refusal() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RAISE EXCEPTION ''refused''; END'");
    atOtherDesk(QStringLiteral("CREATE TRIGGER refusal %1 FOR EACH ROW EXECUTE FUNCTION refusal()").arg(event));
}

void SaleDatabase::allowAgain()
{
    atOtherDesk(database_.engine() == ado::Engine::SQLite || database_.engine() == ado::Engine::MariaDB
                    ? QStringLiteral("DROP TRIGGER refusal")
                    : QStringLiteral("DROP FUNCTION refusal CASCADE"));
}

int SaleDatabase::lastKey(const QString &table, const QString &key)
{
    return std::stoi(rows(QStringLiteral("SELECT MAX(%2) FROM %1").arg(table, key)).at(0));
}

int SaleDatabase::product(const QString &name, int price, bool taxed, bool handled)
{
    atOtherDesk(
        QStringLiteral("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid) "
                       "VALUES ('차', '%1', %2, %3, %4)")
            .arg(name)
            .arg(price)
            .arg(int(taxed))
            .arg(int(handled)));
    return lastKey(QStringLiteral("tPSProductMaster"), QStringLiteral("PM_PK"));
}

int SaleDatabase::order(const QString &date, int customer)
{
    atOtherDesk(
        QStringLiteral("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, OrdM_TaxFreeTotal, "
                       "OrdM_HalinTotal, OrdM_Total, OrdM_Misugum) VALUES (%1, '%2', 1, 0, 0, 0, 0, 0)")
            .arg(customer)
            .arg(date));
    return lastKey(QStringLiteral("tPSOrderMaster"), QStringLiteral("OrdM_PK"));
}

int SaleDatabase::detail(int orderKey, int productKey, int price, int discount, int count)
{
    atOtherDesk(
        QStringLiteral("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, "
                       "OrdD_OrderType) VALUES (%1, %2, %3, %4, %5, 0)")
            .arg(orderKey)
            .arg(productKey)
            .arg(price)
            .arg(discount)
            .arg(count));
    return lastKey(QStringLiteral("tPSOrderDetail"), QStringLiteral("OrdD_PK"));
}

void SaleDatabase::openRows(SaleSession::RecordsetPtr &recordset, const QString &source)
{
    recordset = std::make_unique<ado::Recordset>();
    recordset->Open(source, gcnnMasterDB, ado::CursorType::Keyset, ado::LockType::Optimistic);
}
