#include "clinic/Tables.h"
#include "data/clsSQL.h"
#include "platform/runtime/RuntimeError.h"
#include "products/DealerOperations.h"
#include "products/IncomingOperations.h"
#include "products/ProductOperations.h"
#include "sales/OrderSave.h"
#include "session/modGlobalVars.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

const QDate day(2026, 11, 24);

std::unique_ptr<ado::Recordset> opened(const QString &source)
{
    auto recordset = std::make_unique<ado::Recordset>();
    recordset->Open(source, gcnnMasterDB, ado::CursorType::Keyset, ado::LockType::Optimistic);
    return recordset;
}

/// Adds products, each with one purchase of as many units as its number, the way the panels save them.
void addAll(const QString &name, int count)
{
    SaleSession session;
    session.rsSaleProductListsManager = opened(clsSQL().getProductMasterSQL(true));
    session.rsProductIncoming = opened(clsSQL().getProdIncomingSQL(-1));
    ProductOperations products(session);
    IncomingOperations incoming(session);
    for (int number = 1; number <= count; ++number) {
        const QString text = QString::number(number);
        if (products.add({name, name + text, text, QString(), true, true, day}) != SaveOutcome::Saved)
            throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                        QStringLiteral("product %1 was not saved").arg(text));
        const qint32 key = session.rsSaleProductListsManager->value("PM_PK").toInt();
        incoming.add(ProductKey(key), {QStringLiteral("1"), text, text, QString(), text, QString(), day});
    }
}

/// Saves one row the way its panel does; false when the panel would show its failure text.
bool saveFirstRow(SaleSession &session, const QString &what, const QString &name, ProductOperations &products)
{
    if (what == QLatin1String("product"))
        return products.change({name, name, QString(), name, true, true, day}) == SaveOutcome::Saved;
    if (what == QLatin1String("dealer"))
        return DealerOperations(session).change(DealerKey(1), {name, name, name, name, name}) == SaveOutcome::Saved;
    if (what == QLatin1String("purchase"))
        return IncomingOperations(session).change(IncomingKey(1), {QStringLiteral("1"), QStringLiteral("2"), QString(),
                                                                   QString(), QString(), name, day})
               == SaveOutcome::Saved;
    OrderEdit order;
    order.memo = order.address = name;
    order.discountTotal = order.outstanding = QStringLiteral("0");
    order.date = day;
    OrderSave save(session);
    save.begin({});
    return save.save(order) == Outcome::Done;
}

/// Reads the first rows, says so, waits for a line of input and saves the row that is asked for.
void editFirstRow(const QString &what, const QString &name)
{
    SaleSession session;
    session.rsSaleProductListsManager = opened(clsSQL().getProductMasterSQL(true));
    session.rsProductIncoming = opened(clsSQL().getProdIncomingSQL(1));
    session.rsCompanyMaster = opened(clsSQL().getCmpnyMstrSQL());
    session.rsCustSaleMaster = opened(clsSQL().getOrderMasterSQL(1));
    ProductOperations products(session);
    products.beginChange();
    std::puts("ready");
    std::fflush(stdout);
    std::getchar();
    std::puts(saveFirstRow(session, what, name, products) ? "saved" : "failed");
}

} // namespace

/// A desk of its own: product_writer ADDRESS NAME COUNT, or product_writer ADDRESS NAME product|dealer|purchase|order
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    clinic::registerTables();
    try {
        gcnnMasterDB = ado::Connection::open(arguments.at(1));
        const int count = arguments.at(3).toInt();
        count > 0 ? addAll(arguments.at(2), count) : editFirstRow(arguments.at(3), arguments.at(2));
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.description()));
        return 1;
    }
    gcnnMasterDB.reset();
    return 0;
}
