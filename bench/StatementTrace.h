#pragma once

#include <sqlite3.h>

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// The statements that a piece of work sends to an embedded database, values filled in, to be sent once more through the
/// database's own interface.
class StatementTrace
{
public:
    StatementTrace(sqlite3 *handle, const std::function<void()> &work);

    /// Runs them one after another, each prepared anew, and copies every cell of every row; returns the number of rows.
    std::size_t replay() const;

private:
    sqlite3 *handle_;
    std::vector<std::string> statements_;
};

} // namespace bench
