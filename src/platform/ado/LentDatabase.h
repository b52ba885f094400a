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
    /// The session in the engine's own interface, for drivers that hand it out as a pointer of that type; null while closed.
    void *handle(const char *type) const;
    /// As Connection::open() would take it, without a password.
    QString address() const;

    /// The host closed it.
    [[noreturn]] static void raiseClosed();

private:
    QString name_;
};

} // namespace ado
