#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QStringList>

#include <functional>

namespace backup {

/// What is done with the parts of a script that pg_restore makes of a backup's rows.
struct ScriptReader
{
    /// The rows of a table begin; answers whether they are wanted. Names are as in the backup, the table's without its schema.
    std::function<bool(const QString &table, const QStringList &columns)> begin;
    std::function<void(const QByteArray &line)> row; ///< with its line's end
    std::function<void()> end;
    /// The key that a counter gives next.
    std::function<void(const QString &counter, qint64 next)> counter;
};

/// Raises RuntimeError where the script ends within a table.
void readScript(QIODevice &script, const ScriptReader &reader);

} // namespace backup
