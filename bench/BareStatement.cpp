#include "bench/BareStatement.h"

#include <QSqlDriver>
#include <QVariant>

#include <stdexcept>

namespace bench {

sqlite3 *bareHandle(const ado::Connection &connection)
{
    const QVariant handle = connection.database().driver()->handle();
    if (qstrcmp(handle.typeName(), "sqlite3*") != 0)
        throw std::runtime_error("not an embedded database");
    return *static_cast<sqlite3 *const *>(handle.constData());
}

BareStatement::BareStatement(sqlite3 *handle, const std::string &text)
    : handle_(handle)
{
    if (sqlite3_prepare_v2(handle, text.c_str(), static_cast<int>(text.size() + 1), &statement_, nullptr) != SQLITE_OK)
        refuse();
}

bool BareStatement::step()
{
    const int result = sqlite3_step(statement_);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        refuse();
    return result == SQLITE_ROW;
}

void BareStatement::refuse() const
{
    throw std::runtime_error(sqlite3_errmsg(handle_));
}

void runBare(sqlite3 *handle, const std::string &text)
{
    BareStatement statement(handle, text);
    while (statement.step()) {
    }
}

} // namespace bench
