#include "bench/BareStatement.h"

#include <stdexcept>

namespace bench {

sqlite3 *bareHandle(const ado::Connection &connection)
{
    if (connection.engine() != ado::Engine::SQLite)
        throw std::runtime_error("not an embedded database");
    return static_cast<sqlite3 *>(connection.handle());
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
