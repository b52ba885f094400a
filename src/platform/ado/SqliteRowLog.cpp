#include "platform/ado/SqliteRowLog.h"

#include <sqlite3.h>

#include <algorithm>

namespace ado {

void SqliteRowLog::attach(sqlite3 *handle)
{
    sqlite3_update_hook(handle, note, this);
    handle_ = handle;
}

void SqliteRowLog::detach()
{
    logs_.clear();
    handle_ = nullptr;
}

void SqliteRowLog::endIfUnseen()
{
    if (sqlite3_update_hook(handle_, note, this) != this)
        logs_.clear();
}

void SqliteRowLog::note(void *self, int, const char *, const char *table, long long row)
{
    constexpr std::size_t most = 4096; ///< whoever writes more than that reads the list whole
    auto &own = *static_cast<SqliteRowLog *>(self);
    for (Log &log : own.logs_) {
        if (sqlite3_stricmp(log.table.c_str(), table) != 0)
            continue;
        if (log.rows.size() == most) {
            log.rows.clear();
            log.number = ++own.last_;
        }
        log.rows.push_back(row);
    }
}

SqliteRowLog::Place SqliteRowLog::place(const QString &table)
{
    endIfUnseen();
    const std::string name = table.toStdString();
    auto log = std::ranges::find(logs_, name, &Log::table);
    if (log == logs_.end())
        log = logs_.insert(log, {name, ++last_, {}});
    return {log->number, log->rows.size()};
}

std::optional<std::vector<std::int64_t>> SqliteRowLog::since(const Place &place)
{
    if (!attached())
        return std::nullopt;
    endIfUnseen();
    const auto log = std::ranges::find(logs_, place.log, &Log::number);
    if (log == logs_.end())
        return std::nullopt;
    std::vector<std::int64_t> rows(log->rows.begin() + static_cast<std::ptrdiff_t>(place.rows), log->rows.end());
    std::ranges::sort(rows);
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

} // namespace ado
