#include "components/central/List.h"

#include "clinic/Catalogue.h"
#include "clinic/ChainTables.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/RuntimeError.h"

#include <QUuid>

#include <sqlite3.h>

namespace central {

namespace {

using runtime::ErrorNumber;
using runtime::RuntimeError;

/// The layer takes no statement that holds others, which a trigger of the embedded engine does.
void defineTrigger(ado::Connection &connection, const QString &statement)
{
    if (connection.engine() != ado::Engine::SQLite) {
        connection.Execute(statement);
        return;
    }
    auto *const handle = static_cast<sqlite3 *>(connection.handle());
    if (sqlite3_exec(handle, statement.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw RuntimeError(ErrorNumber::Database, QString::fromUtf8(sqlite3_errmsg(handle)));
}

/// That of the product table, with its dot; empty on the embedded engine.
QString schemaOf(const ado::Connection &connection)
{
    if (connection.engine() == ado::Engine::SQLite)
        return {};
    return connection
               .read(QStringLiteral("SELECT quote_ident(n.nspname) FROM pg_class c JOIN pg_namespace n ON n.oid = "
                                    "c.relnamespace WHERE c.oid = to_regclass('tpsproductmaster')"))
               .raw(0, 0)
               .toString()
           + u'.';
}

} // namespace

bool isHeadOffice(const ado::Connection &connection)
{
    return clinic::readCatalogue(connection, {QStringLiteral("t_CentralList")}).table(QStringLiteral("t_CentralList"))
           != nullptr;
}

void makeHeadOffice(ado::Connection &connection)
{
    const bool server = connection.engine() != ado::Engine::SQLite;
    ado::Transaction scope(connection);
    if (server) // what others add is on the list, or counted
        connection.Execute(QStringLiteral("LOCK TABLE tPSProductMaster IN SHARE ROW EXCLUSIVE MODE"));
    QStringList statements =
        clinic::chainListStatements(schemaOf(connection), QUuid::createUuid().toString(QUuid::WithoutBraces));
    if (server)
        statements << clinic::chainFunctionStatements();
    for (const QString &statement : std::as_const(statements))
        connection.Execute(statement);
    const QStringList triggers = clinic::chainTriggers(server);
    for (const QString &trigger : triggers)
        defineTrigger(connection, trigger);
    scope.commit();
}

} // namespace central
