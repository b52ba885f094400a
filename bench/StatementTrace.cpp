#include "bench/StatementTrace.h"

#include "bench/BareStatement.h"

#include <benchmark/benchmark.h>

#include <stdexcept>

namespace bench {

namespace {

int noteStatement(unsigned, void *statements, void *statement, void *text)
{
    // What a trigger runs comes as a comment.
    if (std::string_view(static_cast<const char *>(text)).starts_with("--"))
        return 0;
    char *expanded = sqlite3_expanded_sql(static_cast<sqlite3_stmt *>(statement));
    static_cast<std::vector<std::string> *>(statements)->emplace_back(expanded);
    sqlite3_free(expanded);
    return 0;
}

} // namespace

StatementTrace::StatementTrace(sqlite3 *handle, const std::function<void()> &work)
    : handle_(handle)
{
    sqlite3_trace_v2(handle, SQLITE_TRACE_STMT, noteStatement, &statements_);
    work();
    sqlite3_trace_v2(handle, 0, nullptr, nullptr);
    if (statements_.empty())
        throw std::runtime_error("the work sent no statement");
}

std::size_t StatementTrace::replay() const
{
    std::size_t rows = 0;
    std::string text;
    for (const std::string &one : statements_) {
        BareStatement statement(handle_, one);
        text.clear();
        for (; statement.step(); ++rows) {
            for (int column = 0; column < statement.columns(); ++column)
                text += statement.text(column);
        }
        benchmark::DoNotOptimize(text.data());
    }
    return rows;
}

} // namespace bench
