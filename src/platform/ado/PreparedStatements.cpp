#include "platform/ado/PreparedStatements.h"

#include <sqlite3.h>

#include <algorithm>

namespace ado {

namespace {

constexpr std::size_t most = 64; ///< more than the window asks for again and again

} // namespace

sqlite3_stmt *PreparedStatements::take(sqlite3 *handle, const QString &text)
{
    const auto found = std::ranges::find(kept_.rbegin(), kept_.rend(), text, &Kept::text);
    if (found != kept_.rend()) {
        sqlite3_stmt *const statement = found->statement;
        kept_.erase(std::next(found).base());
        return statement;
    }
    sqlite3_stmt *statement = nullptr;
    const void *tail = nullptr;
    const auto bytes = static_cast<int>(text.size() * qsizetype{sizeof(char16_t)});
    if (sqlite3_prepare16_v3(handle, text.utf16(), bytes, SQLITE_PREPARE_PERSISTENT, &statement, &tail) != SQLITE_OK)
        return nullptr;
    return statement;
}

void PreparedStatements::giveBack(const QString &text, sqlite3_stmt *statement)
{
    // A statement that is not at its beginning would hold its lock.
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
    if (kept_.size() == most) {
        sqlite3_finalize(kept_.front().statement);
        kept_.erase(kept_.begin());
    }
    kept_.push_back({text, statement});
}

void PreparedStatements::clear()
{
    for (const Kept &kept : kept_)
        sqlite3_finalize(kept.statement);
    kept_.clear();
}

} // namespace ado
