#pragma once

#include <QSqlDatabase>
#include <QString>

namespace ado {

/// A session that the host opened by Qt, and closes. Known by its name: a copy would keep it from being removed.
class LentDatabase
{
public:
    explicit LentDatabase(const QSqlDatabase &database);

    /// Invalid when it was removed.
    QSqlDatabase database() const { return QSqlDatabase::database(name_, false); }
    bool isOpen() const { return database().isOpen(); }
    /// The session in the engine's own interface; null while it is closed, and where another kind of it has the name now.
    void *handle(QLatin1String kind) const;
    /// As Connection::open() would take it, without a password.
    QString address() const;

    /// The host closed it.
    [[noreturn]] static void raiseClosed();

private:
    QString name_;
};

} // namespace ado
