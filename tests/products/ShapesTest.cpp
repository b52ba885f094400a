#include "clinic/Examination.h"
#include "data/clsSQL.h"
#include "data/clsUserSettingDB.h"
#include "products/DealerOperations.h"
#include "products/IncomingOperations.h"
#include "products/ProductOperations.h"
#include "sales/OrderOperations.h"
#include "session/modGlobalVars.h"
#include "settings/clsProperties.h"
#include "tests/support/Cases.h"
#include "tests/support/TestDatabase.h"

#include <exception>

namespace {

constexpr qint32 patient = 41;
const QDate today(2026, 11, 24);

void require(bool saved)
{
    if (!saved)
        throw std::runtime_error("not saved");
}

/// All the writings of a shop and a sale, on tables of whatever form.
class Road
{
public:
    explicit Road(TestDatabase &clinic)
        : clinic_(clinic)
    {
        gcnnMasterDB = ado::Connection::open(clinic.address());
        session_.customer.lngCustPK = patient;
        session_.customer.phone = QStringLiteral("02-123-4567");
    }
    ~Road() { gcnnMasterDB.reset(); }
    Road(const Road &) = delete;
    Road &operator=(const Road &) = delete;

    /// What is stored after it, or why it could not be gone.
    std::string go()
    {
        try {
            shop();
            sell();
            return stored();
        } catch (const std::exception &error) {
            return error.what();
        }
    }

private:
    static void open(SaleSession::RecordsetPtr &rows, const QString &statement)
    {
        rows = std::make_unique<ado::Recordset>();
        rows->Open(statement, gcnnMasterDB, ado::CursorType::Keyset, ado::LockType::Optimistic);
    }

    void shop()
    {
        open(session_.rsSaleProductListsManager, clsSQL().getProductMasterSQL(true));
        open(session_.rsCompanyMaster, clsSQL().getCmpnyMstrSQL());
        open(session_.rsProductIncoming, clsSQL().getProdIncomingSQL(1));
        const ProductEdit tea{"차", "감초차", "\\16,777,217", "", true, true, today};
        require(ProductOperations(session_).add(tea) == SaveOutcome::Saved);
        require(DealerOperations(session_).add({"한빛", "", "", "", ""}) == SaveOutcome::Saved);
        IncomingOperations purchases(session_);
        IncomingEdit purchase{"1", "12", "\\1,000", "\\0", "\\12,000", "외상", today};
        for (const char *count : {"12", "3"}) {
            purchase.count = QString::fromLatin1(count);
            require(purchases.add(ProductKey(1), purchase) == SaveOutcome::Saved);
        }
        purchase.count = QStringLiteral("7");
        require(purchases.change(IncomingKey(session_.rsProductIncoming->bookmark()), purchase) == SaveOutcome::Saved);
        session_.rsProductIncoming->Requery();
        purchases.remove(IncomingKey(session_.rsProductIncoming->bookmark()));
        for (const char *name : {"종로점", "강남점"})
            clsProperties().PropValue("지점명", QString::fromUtf8(name));
        clsUserSettingDB().setProductServerCallSign(gcnnMasterDB, "값");
    }

    void sell()
    {
        open(session_.rsSaleProductLists, clsSQL().getProductMasterSQL(false));
        open(session_.rsCustSaleMaster, clsSQL().getOrderMasterSQL(patient));
        open(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(-1));
        OrderOperations orders(session_, [] { return today; });
        EntryLine line{0, "\\0", "2", {}, {}};
        orders.takeCurrentProduct(line);
        require(orders.addDetailToNewOrder(line) == Outcome::Done);
        const OrderKey order = orders.lastOrder();
        gcnnMasterDB->Execute(clsSQL().InsertTransactionSQL(patient, today, 3, 30'000'000, order.number(), "01", ""));
        gcnnMasterDB->Execute(clsSQL().UpdatePSMisuMoney(order.number(), 3'554'434));
        ado::Recordset owing;
        owing.Open(QStringLiteral("SELECT OrdM_PK FROM tPSOrderMaster WHERE OrdM_Misugum <> 0"), gcnnMasterDB,
                   ado::CursorType::Static, ado::LockType::ReadOnly);
        require(owing.rowCount() == 1);
    }

    std::string stored()
    {
        std::string all;
        for (const char *statement :
             {"SELECT PM_Name, PM_UnitPrice, PM_IsTaxed FROM tPSProductMaster", "SELECT CM_Name FROM tPSCompanyMaster",
              "SELECT IN_UnitPrice, IN_EtcMemo FROM tPSIncoming",
              "SELECT OrdM_Tel, OrdM_Total, OrdM_Misugum FROM tPSOrderMaster WHERE Cust_PK = 41",
              "SELECT OrdD_UnitPrice, OrdD_Count FROM tPSOrderDetail",
              "SELECT tpstrans_Money, tpstrans_Method FROM tPSTransaction",
              "SELECT tpsps_Key, tpsps_Value FROM tPSProperties", "SELECT HS_Value FROM t_HospSetup"})
            all += clinic_.rows(QLatin1String(statement)).join(' ').toStdString() + '\n';
        return all;
    }

    TestDatabase &clinic_;
    SaleSession session_;
};

/// Without the desk's journal, and the index that holds a column to its type.
void leaveTables(TestDatabase &clinic)
{
    clinic.run("DROP INDEX ixOrderMasterOutstanding");
    const bool file = clinic.engine() == ado::Engine::SQLite;
    const QStringList triggers =
        clinic.rows(file ? "SELECT name FROM sqlite_master WHERE type = 'trigger'"
                         : "SELECT 'journal ON ' || tgrelid::regclass FROM pg_trigger WHERE tgname = 'journal'");
    for (const QString &trigger : triggers)
        clinic.run("DROP TRIGGER " + trigger);
}

class Shape : public testing::TestWithParam<ado::Engine>
{
};
INSTANTIATE_TEST_SUITE_P(Engines, Shape, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL), engineName);

} // namespace

TEST_P(Shape, SellsExactlyWhereTheExaminationFindsNoFault)
{
    TestDatabase own(GetParam());
    const std::string sold = Road(own).go();
    ASSERT_NE(sold.find("\n02-123-4567|33554434|-3554434\n"), std::string::npos) << sold;
    const bool file = GetParam() == ado::Engine::SQLite;
    for (const QStringList &shape : casesOf("corpus/shapes.cases", 5)) {
        const QString change = shape[file ? 1 : 3], expected = shape[file ? 2 : 4];
        if (change == "-")
            continue;
        SCOPED_TRACE(shape[0].toStdString());
        TestDatabase clinic(GetParam());
        leaveTables(clinic);
        for (const QString &statement : change.split('\n', Qt::SkipEmptyParts))
            clinic.run(statement);
        QStringList found;
        for (const clinic::Finding &finding : clinic::examine(*clinic.connection(), clinic::Depth::Whole))
            found << (finding.weight == clinic::Finding::Weight::Fault ? "!" : "") + finding.what;
        EXPECT_EQ(found.join('&').toStdString(), expected.toStdString());
        const std::string outcome = Road(clinic).go();
        EXPECT_EQ(outcome == sold, !expected.startsWith('!')) << outcome;
    }
}
