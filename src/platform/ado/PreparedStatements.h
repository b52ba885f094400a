#pragma once

#include <QString>

#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace ado {

/// Statements of one embedded connection, kept prepared for the next time: preparing one often costs more than running it.
class PreparedStatements
{
public:
    PreparedStatements() = default;
    ~PreparedStatements() { clear(); }
    PreparedStatements(const PreparedStatements &) = delete;
    PreparedStatements &operator=(const PreparedStatements &) = delete;

    /// One that is prepared and has nothing bound, the caller's until it is given back; null when the engine refuses the
    /// text. A kept one learns of changed tables in its first step: its columns are known after that.
    sqlite3_stmt *take(sqlite3 *handle, const QString &text);
    void giveBack(const QString &text, sqlite3_stmt *statement);

    /// Before the handle is closed.
    void clear();

private:
    struct Kept
    {
        QString text;
        sqlite3_stmt *statement;
    };

    std::vector<Kept> kept_; ///< the last used at the end
};

} // namespace ado
