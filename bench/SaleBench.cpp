#include "bench/SaleBench.h"

#include "bench/BareStatement.h"
#include "bench/OpenSale.h"
#include "bench/StockModel.h"
#include "bench/TypicalPatients.h"
#include "bench/Work.h"
#include "data/clsSQL.h"
#include "money/LedgerOperations.h"
#include "platform/runtime/Conversions.h"
#include "sales/OrderOperations.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QSqlTableModel>

#include <stdexcept>

namespace bench {

namespace {

using Sale = std::shared_ptr<OpenSale>;

void need(bool done, const char *what)
{
    if (!done)
        throw std::runtime_error(std::string(what) + " was refused");
}

void addLine(OpenSale &sale)
{
    OrderOperations operations(sale.session());
    EntryLine line{0, QStringLiteral("0"), QStringLiteral("1"), {}, {}};
    operations.takeCurrentProduct(line);
    need(operations.addDetailToSelectedOrder(operations.currentOrder(), line) == Outcome::Done, "a line");
}

void deleteOrder(OpenSale &sale)
{
    OrderOperations operations(sale.session());
    need(operations.deleteOrder(operations.currentOrder()) == Outcome::Done, "the deletion of an order");
}

void takeFirstPayment(OpenSale &sale)
{
    const ShownOrder order = shownOrder(*sale.session().rsCustSaleMaster);
    ledger::appendFirstPayment(sale.connection(),
                               {.order = order, .date = QDate(2026, 7, 1), .cash = 20'000, .card = 10'000});
    ledger::addOutstanding(sale.connection(), *sale.session().rsCustSaleMaster, order,
                           runtime::Currency::fromWon(5'000));
    sale.session().rsCustTranManage->Requery();
}

/// An order's lines and its customer's orders in models of the toolkit.
struct StockSale
{
    std::unique_ptr<QSqlTableModel> lines;
    std::unique_ptr<QSqlTableModel> orders;
};

std::unique_ptr<QSqlTableModel> stockTable(OpenSale &sale, const char *table, const QString &filter)
{
    auto model = std::make_unique<QSqlTableModel>(nullptr, stockSession(sale.connection()));
    model->setTable(QLatin1String(table));
    model->setEditStrategy(QSqlTableModel::OnManualSubmit);
    model->setFilter(filter);
    need(model->select(), table);
    return model;
}

void openStock(OpenSale &sale, StockSale &stock)
{
    stock.lines = stockTable(sale, "tPSOrderDetail", QStringLiteral("OrdM_PK = %1").arg(sale.lngOrdMPK()));
    stock.orders = stockTable(sale, "tPSOrderMaster", QStringLiteral("Cust_PK = %1").arg(sale.lngCustPK()));
}

QString stockSum(OpenSale &sale, const QString &statement)
{
    QSqlQuery sum(stockSession(sale.connection()));
    need(sum.exec(statement) && sum.next(), "a sum");
    return QString::number(sum.value(0).toLongLong());
}

/// The model writes the line and reads the lines anew; queries of the toolkit do the rest.
void addLineInStock(OpenSale &sale, StockSale &stock)
{
    const ado::Recordset &products = *sale.session().rsSaleProductLists;
    QSqlRecord line = stock.lines->record();
    const std::pair<const char *, QVariant> values[] = {
        {"OrdM_PK", sale.lngOrdMPK()},
        {"PM_PK", products[QStringLiteral("PM_PK")]},
        {"OrdD_UnitPrice", runtime::text(products[QStringLiteral("PM_UnitPrice")]).toLongLong()},
        {"OrdD_HalinUnit", 0},
        {"OrdD_Count", 1},
        {"OrdD_OrderType", 0}};
    for (const auto &[field, value] : values)
        line.setValue(QLatin1String(field), value);
    for (const char *field : {"OrdD_PK", "OrdD_RfndMemo"})
        line.setGenerated(QLatin1String(field), false);
    need(stock.lines->insertRecord(-1, line) && stock.lines->submitAll(), "a line in the model");
    const clsSQL sql;
    const QString taxed = stockSum(sale, sql.getSumTaxOrTaxFreeTotalSQL(sale.lngOrdMPK(), true));
    const QString taxFree = stockSum(sale, sql.getSumTaxOrTaxFreeTotalSQL(sale.lngOrdMPK(), false));
    const QString discount = stockSum(sale, sql.getSumHalinTotalSQL(sale.lngOrdMPK()));
    need(QSqlQuery(stockSession(sale.connection()))
             .exec(
                 QStringLiteral("UPDATE tPSOrderMaster SET OrdM_TaxTotal=%1, OrdM_TaxFreeTotal=%2, OrdM_HalinTotal=%3, "
                                "OrdM_Total=%1 + %2 WHERE OrdM_PK = %4")
                     .arg(taxed, taxFree, discount, QString::number(sale.lngOrdMPK()))),
         "the totals");
    need(stock.orders->select(), "the orders");
}

} // namespace

void registerWriting(const OrderedClinic &clinic, Table &table, const std::string &note)
{
    const auto sale = std::make_shared<OpenSale>(clinic.connection, typicalPatients(*clinic.connection).front());
    const auto stock = std::make_shared<StockSale>();
    const std::string size = "/" + std::to_string(clinic.orders) + note;
    const std::string among = ", " + grouped(clinic.orders) + " orders" + note;
    const auto rows = [sale] { return sale->rows(); };
    Work line{"write_line" + size, "add a line and sum the order" + among, 1.1, [sale] { addLine(*sale); }};
    if (clinic.connection->engine() == ado::Engine::SQLite) {
        line.stock = [sale, stock] { addLineInStock(*sale, *stock); };
        line.prepareStock = [sale, stock] { openStock(*sale, *stock); };
    }
    Work payment{"write_payment" + size, "first payment: cash, card, outstanding money" + among, 1.1,
                 [sale] { takeFirstPayment(*sale); }};
    Work deletion{"delete_order" + size, "delete an order" + among, 1.1, [sale] { deleteOrder(*sale); }};
    for (Work *work : {&line, &payment, &deletion}) {
        work->prepare = [sale] { sale->restore(); };
        work->state = rows;
        registerWork(clinic.connection, *work, table);
    }
}

void registerSale(const Clinics &clinics, Table &table)
{
    for (const OrderedClinic &clinic : byOrders(clinics))
        registerWriting(clinic, table);
    const std::string note = " without a journal";
    registerWriting({clinics.unjournalled, 10'000}, table, note);
    const std::pair<std::string, std::string> journalled[] = {{"write_line/10000", "add a line and sum the order"},
                                                              {"write_payment/10000", "first payment"},
                                                              {"delete_order/10000", "delete an order"}};
    for (const auto &[name, what] : journalled)
        table.add({what + ", times without a journal", name + "/component", name + note + "/component", 1.25});
}

} // namespace bench
