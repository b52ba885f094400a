#include "data/clsSQL.h"
#include "platform/runtime/RuntimeError.h"
#include "products/IncomingOperations.h"
#include "products/ProductOperations.h"
#include "session/modGlobalVars.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

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
        if (products.add({name, name + text, text, QString(), true, true, QDate(2026, 11, 24)}) != SaveOutcome::Saved)
            throw runtime::RuntimeError(runtime::ErrorNumber::Database, QStringLiteral("product %1 was not saved").arg(text));
        const std::int32_t key = session.rsSaleProductListsManager->value(QStringLiteral("PM_PK")).toInt();
        incoming.add(key, {QStringLiteral("1"), text, text, QString(), text, QString(), QDate(2026, 11, 24)});
    }
}

} // namespace

/// A desk of its own: product_writer ADDRESS NAME COUNT
int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    try {
        gcnnMasterDB = ado::Connection::open(arguments.at(1));
        addAll(arguments.at(2), arguments.at(3).toInt());
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.description()));
        return 1;
    }
    gcnnMasterDB.reset();
    return 0;
}
