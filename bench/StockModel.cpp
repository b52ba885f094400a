#include "bench/StockModel.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlQueryModel>

#include <stdexcept>

namespace bench {

QSqlDatabase stockSession(const ado::Connection &connection)
{
    const QString file = connection.address().section(u':', 1);
    QSqlDatabase session = QSqlDatabase::database(file);
    if (session.isValid())
        return session;
    if (connection.engine() != ado::Engine::SQLite)
        throw std::runtime_error("not an embedded database");
    session = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), file);
    session.setDatabaseName(file);
    if (!session.open())
        throw std::runtime_error("stock session: " + session.lastError().text().toStdString());
    for (const char *setting : {"journal_mode = WAL", "synchronous = FULL", "cache_size = -65536"})
        QSqlQuery(session).exec(QStringLiteral("PRAGMA ") + QLatin1String(setting));
    return session;
}

int fetchAll(QSqlQueryModel &model)
{
    while (model.canFetchMore())
        model.fetchMore();
    return model.rowCount();
}

int stockRows(const ado::Connection &connection, const QString &statement)
{
    QSqlQueryModel model;
    model.setQuery(statement, stockSession(connection));
    if (model.lastError().isValid())
        throw std::runtime_error("stock model: " + model.lastError().text().toStdString());
    return fetchAll(model);
}

} // namespace bench
