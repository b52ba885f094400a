#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace backup {

/// Where a database is, for the server's own programs.
struct PostgresPlace
{
    /// "host='...' user='...' ...", for an argument. Others on the machine see those, so only what is known to be no secret is
    /// in it.
    QString connection;
    QString password;    ///< goes over by the environment; empty leaves it to the user's own password file
    QStringList options; ///< the other options, "name=value"; go over by a file

    /// Of an address of the desk's, "postgresql://...".
    static PostgresPlace of(const QString &address);
};

/// Told each line that the program says while it works, and an empty one now and then; answering false stops it.
using Listener = std::function<bool(const QString &line)>;

/// Where it says what is listened to. What it writes besides is the answer; with All there is none.
enum class Says { OnErrors, OnAll };

/// Runs one of the server's programs to its end and returns what it wrote. Raises RuntimeError with the program's last words
/// when it is not there or fails, and Stopped when it was stopped and did not end well before.
QByteArray runPostgresTool(const QString &program, const QStringList &arguments, const PostgresPlace &place = {},
                           const Listener &listener = {}, Says says = Says::OnErrors);

} // namespace backup
