#pragma once

#include "platform/ado/Connection.h"

#include <sqlite3.h>

#include <string>
#include <string_view>

namespace bench {

/// The handle behind an embedded connection: what is compared runs on the same file, cache and settings.
sqlite3 *bareHandle(const ado::Connection &connection);

/// One statement through the database's own interface, with nothing between. Raises std::runtime_error.
class BareStatement
{
public:
    BareStatement(sqlite3 *handle, const std::string &text);
    ~BareStatement() { sqlite3_finalize(statement_); }
    BareStatement(const BareStatement &) = delete;
    BareStatement &operator=(const BareStatement &) = delete;

    /// Goes to the next row; false behind the last.
    bool step();
    int columns() const { return sqlite3_column_count(statement_); }
    /// Valid until the next step; empty for NULL.
    std::string_view text(int column) const
    {
        const auto *utf8 = reinterpret_cast<const char *>(sqlite3_column_text(statement_, column));
        return {utf8, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
    }
    sqlite3_int64 integer(int column) const { return sqlite3_column_int64(statement_, column); }

private:
    [[noreturn]] void refuse() const;

    sqlite3 *handle_;
    sqlite3_stmt *statement_ = nullptr;
};

/// Runs a statement that gives no rows.
void runBare(sqlite3 *handle, const std::string &text);

} // namespace bench
