#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct sqlite3;

namespace ado {

/// Which rows one session of the embedded engine has inserted and updated, whoever sent the statement, triggers included.
/// A deletion may leave no trace in it: the engine does not tell of rows that it clears out at one stroke, nor of those that
/// gave way to another.
class SqliteRowLog
{
public:
    struct Place
    {
        std::uint64_t log = 0; ///< no two logs of one driver have the same, whatever session they were of
        std::size_t rows = 0;
    };

    /// The session's only one; it writes its log until the session ends.
    void attach(sqlite3 *handle);
    /// The session has ended, and so have all logs.
    void detach();
    bool attached() const { return handle_ != nullptr; }

    /// Where the table's log stands now; from the first question on there is one.
    Place place(const QString &table);
    /// Keys of the rows that were written since, each once; none when the log has ended meanwhile.
    std::optional<std::vector<std::int64_t>> since(const Place &place);

private:
    struct Log
    {
        std::string table;
        std::uint64_t number = 0;
        std::vector<std::int64_t> rows;
    };

    /// Ends all logs where somebody else took the session's only hook meanwhile, and takes it back.
    void endIfUnseen();
    static void note(void *self, int, const char *database, const char *table, long long row);

    sqlite3 *handle_ = nullptr;
    std::vector<Log> logs_;
    std::uint64_t last_ = 0; ///< number that was given
};

} // namespace ado
