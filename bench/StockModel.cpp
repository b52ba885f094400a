#include "bench/StockModel.h"

#include <QSqlError>
#include <QSqlQueryModel>

#include <stdexcept>

namespace bench {

int fetchAll(QSqlQueryModel &model)
{
    while (model.canFetchMore())
        model.fetchMore();
    return model.rowCount();
}

int stockRows(const ado::Connection &connection, const QString &statement)
{
    QSqlQueryModel model;
    model.setQuery(statement, connection.database());
    if (model.lastError().isValid())
        throw std::runtime_error("stock model: " + model.lastError().text().toStdString());
    return fetchAll(model);
}

} // namespace bench
