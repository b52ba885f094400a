#pragma once

#include "tests/support/TestDatabase.h"

#include <QSqlDatabase>
#include <QSqlError>

#include <stdexcept>

/// A session of a host's own on the test's database, by Qt, as the engine is reached there.
class QtSession
{
public:
    /// `also` is added to an ODBC connection string; of two of a kind the later holds.
    explicit QtSession(const TestDatabase &clinic, const QString &also = {})
    {
        static int sessions = 0;
        name_ = QStringLiteral("host-%1").arg(++sessions);
        const QString place = clinic.address().section(u':', 1);
        const bool server = clinic.engine() == ado::Engine::PostgreSQL;
        QSqlDatabase opened =
            QSqlDatabase::addDatabase(server                                  ? QStringLiteral("QPSQL")
                                      : clinic.address().startsWith(u"odbc:") ? QStringLiteral("QODBC")
                                                                              : QStringLiteral("QSQLITE"),
                                      name_);
        opened.setDatabaseName(server ? clinic.serverDatabase() : also.isEmpty() ? place : place + u';' + also);
        if (server) {
            opened.setHostName(place.section(QStringLiteral("host="), 1));
            opened.setUserName(QStringLiteral("clinic"));
        }
        if (!opened.open())
            throw std::runtime_error(opened.lastError().text().toStdString());
    }
    ~QtSession() { remove(); }
    QtSession(const QtSession &) = delete;
    QtSession &operator=(const QtSession &) = delete;

    QSqlDatabase database() const { return QSqlDatabase::database(name_, false); }
    void remove()
    {
        if (!name_.isEmpty())
            QSqlDatabase::removeDatabase(std::exchange(name_, {}));
    }

private:
    QString name_;
};
