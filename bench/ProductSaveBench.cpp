#include "bench/ProductSaveBench.h"

#include "bench/BareStatement.h"
#include "bench/StockModel.h"
#include "bench/Work.h"
#include "data/clsSQL.h"
#include "platform/runtime/Conversions.h"
#include "products/ProductOperations.h"

#include <QSqlTableModel>

#include <stdexcept>

namespace bench {

namespace {

constexpr int firstPrice = 12'300; ///< of the product before each run
constexpr int secondPrice = 12'400;

/// The list of the management tab; its first product is the one that is saved.
class ProductList
{
public:
    explicit ProductList(const ado::ConnectionPtr &connection)
        : connection_(connection)
    {
        session_.rsSaleProductListsManager = std::make_unique<ado::Recordset>();
        list().Open(clsSQL().getProductMasterSQL(true), connection, ado::CursorType::Keyset, ado::LockType::Optimistic);
        lngPMPK_ = runtime::CLng(list()[QStringLiteral("PM_PK")]);
    }

    ado::Recordset &list() { return *session_.rsSaleProductListsManager; }
    QString ofProduct() const { return QStringLiteral("PM_PK = %1").arg(lngPMPK_); }

    /// Into another recordset, which knows nothing of it.
    void readWhole()
    {
        ado::Recordset anew;
        anew.Open(list().source(), connection_, ado::CursorType::Keyset, ado::LockType::Optimistic);
        benchmark::DoNotOptimize(anew.bookmarkAt(anew.rowCount() - 1)); // so that it is in order to the last row
    }
    void restore()
    {
        runBare(bareHandle(*connection_), "UPDATE tPSProductMaster SET PM_UnitPrice = " + std::to_string(firstPrice)
                                              + " WHERE " + ofProduct().toStdString());
        list().Resync();
    }
    void save()
    {
        ProductOperations operations(session_);
        operations.beginChange();
        const auto text = [&](const char *field) { return runtime::text(list()[QLatin1String(field)]); };
        const ProductEdit edit{text("PM_Catagory"),
                               text("PM_Name"),
                               QString::number(secondPrice),
                               text("PM_EtcMemo"),
                               runtime::isTrue(list()[QStringLiteral("PM_IsTaxed")]),
                               runtime::isTrue(list()[QStringLiteral("PM_IsValid")]),
                               list()[QStringLiteral("PM_AddedDate")].toDate()};
        if (operations.change(edit) != SaveOutcome::Saved)
            throw std::runtime_error("a product was not saved");
    }
    std::string row() const
    {
        BareStatement product(bareHandle(*connection_),
                              "SELECT * FROM tPSProductMaster WHERE " + ofProduct().toStdString());
        product.step();
        std::string all;
        for (int column = 0; column < product.columns(); ++column)
            all.append(product.text(column)).append("|");
        return all;
    }

private:
    ado::ConnectionPtr connection_;
    SaleSession session_;
    int lngPMPK_ = 0;
};

/// The same list in the toolkit's model; a save of it reads the list anew by itself.
class StockList
{
public:
    StockList(const ado::ConnectionPtr &connection, const ProductList &list)
        : model_(nullptr, stockSession(*connection))
    {
        model_.setTable(QStringLiteral("tPSProductMaster"));
        model_.setEditStrategy(QSqlTableModel::OnManualSubmit);
        model_.setSort(model_.fieldIndex(QStringLiteral("PM_Catagory")), Qt::AscendingOrder);
        model_.select();
        fetchAll(model_);
        const QString key = list.ofProduct().section(u' ', -1);
        while (model_.index(row_, 0).isValid() && model_.index(row_, 0).data().toString() != key)
            ++row_;
    }
    void save()
    {
        model_.setData(model_.index(row_, model_.fieldIndex(QStringLiteral("PM_UnitPrice"))), secondPrice);
        if (!model_.submitAll())
            throw std::runtime_error("the model did not save a product");
        fetchAll(model_);
    }

private:
    QSqlTableModel model_;
    int row_ = 0;
};

void registerSize(const ado::ConnectionPtr &connection, long products, double limitAnew, Table &table)
{
    const auto list = std::make_shared<ProductList>(connection);
    const auto stock = std::make_shared<std::unique_ptr<StockList>>();
    const std::string size = "/" + std::to_string(products);
    const std::string among = ", " + grouped(products) + " products";
    Work alone{"save_product" + size, "save a product" + among, 1.1, [list] { list->save(); }};
    Work whole{"save_product_and_list" + size, "the same, the list read anew", limitAnew, [list] {
                   list->save();
                   list->list().Requery();
               }};
    whole.whole = [list] {
        list->save();
        list->readWhole();
    };
    whole.stock = [stock] { (*stock)->save(); };
    whole.prepareStock = [=] {
        if (!*stock)
            *stock = std::make_unique<StockList>(connection, *list);
    };
    for (Work *work : {&alone, &whole}) {
        work->prepare = [list, reads = work == &whole] {
            list->restore();
            if (reads) // as it was read after the last save, whoever saved
                list->list().Requery();
        };
        work->state = [list] { return list->row(); };
        registerWork(connection, *work, table);
    }
}

} // namespace

void registerProductSave(const Clinics &clinics, Table &table)
{
    registerSize(clinics.fewProducts, 1'000, 1.2, table);
    registerSize(clinics.large, 20'000, 0.3, table);
    registerSize(clinics.manyProducts, 100'000, 0.3, table);
}

} // namespace bench
