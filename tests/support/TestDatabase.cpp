#include "tests/support/TestDatabase.h"

#include "desk/schema/Schema.h"
#include "platform/ado/MariaDbText.h"
#include "tests/support/MariaDbServer.h"
#include "tests/support/PostgresServer.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <iostream>
#include <stdexcept>

namespace {

QSqlQuery executed(const QString &connectionName, const QString &statement)
{
    const QSqlDatabase session = QSqlDatabase::database(connectionName);
    QSqlQuery query(session);
    const bool byOdbc = session.driverName() == QLatin1String("QODBC");
    if (!query.exec(byOdbc ? ado::withTextsThatArriveWhole(statement) : statement))
        throw std::runtime_error((query.lastError().text() + u'\n' + statement).toStdString());
    return query;
}

QString shown(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("NULL");
    QString text = value.toString();
    if (text.contains(u'.')) {
        bool isNumber = false;
        text.toDouble(&isNumber);
        while (isNumber && text.endsWith(u'0'))
            text.chop(1);
        if (isNumber && text.endsWith(u'.'))
            text.chop(1);
    }
    return text;
}

} // namespace

TestDatabase::TestDatabase(ado::Engine engine, bool withSchema)
    : engine_(engine)
{
    if (engine == ado::Engine::SQLite) {
        address_ = QStringLiteral("sqlite:") + folder_.filePath("clinic.db");
    } else if (engine == ado::Engine::MariaDB) {
        serverDatabase_ = MariaDbServer::instance().createDatabase();
        address_ = MariaDbServer::instance().address(serverDatabase_);
    } else {
        serverDatabase_ = PostgresServer::instance().createDatabase();
        address_ = engine == ado::Engine::Odbc ? PostgresServer::instance().odbcAddress(serverDatabase_)
                                               : PostgresServer::instance().postgresAddress(serverDatabase_);
    }
    if (withSchema) {
        // The schema's session is not the one under test: settings of the database show in new sessions only.
        const ado::ConnectionPtr maker = ado::Connection::open(
            engine == ado::Engine::Odbc ? PostgresServer::instance().postgresAddress(serverDatabase_) : address_, true);
        schema::createSchema(*maker);
    }
    connection_ = ado::Connection::open(address_, true);

    static int plainSessions = 0;
    plainName_ = QStringLiteral("plain-%1").arg(++plainSessions);
    QSqlDatabase plain;
    if (engine == ado::Engine::SQLite) {
        plain = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), plainName_);
        plain.setDatabaseName(folder_.filePath("clinic.db"));
        plain.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    } else if (engine == ado::Engine::MariaDB) {
        plain = QSqlDatabase::addDatabase(QStringLiteral("QODBC"), plainName_);
        plain.setDatabaseName(
            address_.sliced(qsizetype(sizeof "odbc:") - 1)
            + QStringLiteral(
                ";INITSTMT={SET SESSION sql_mode = "
                "'ANSI_QUOTES,PIPES_AS_CONCAT,NO_BACKSLASH_ESCAPES,NO_AUTO_VALUE_ON_ZERO', SESSION "
                "collation_connection = utf8mb4_nopad_bin, SESSION character_set_results = binary, SESSION "
                "lock_wait_timeout = 10}"));
        plain.setNumericalPrecisionPolicy(QSql::HighPrecision);
    } else {
        const QString address = PostgresServer::instance().postgresAddress(serverDatabase_);
        plain = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), plainName_);
        plain.setHostName(address.section(QStringLiteral("host="), 1));
        plain.setUserName(QStringLiteral("clinic"));
        plain.setDatabaseName(serverDatabase_);
        plain.setNumericalPrecisionPolicy(QSql::HighPrecision);
    }
    if (!plain.open())
        throw std::runtime_error(plain.lastError().text().toStdString());
}

TestDatabase::~TestDatabase()
{
    otherDesk_.reset();
    connection_.reset();
    QSqlDatabase::database(plainName_).close();
    QSqlDatabase::removeDatabase(plainName_);
    if (serverDatabase_.isEmpty())
        return;
    try {
        if (engine_ == ado::Engine::MariaDB)
            MariaDbServer::instance().dropDatabase(serverDatabase_);
        else
            PostgresServer::instance().dropDatabase(serverDatabase_);
    } catch (const std::runtime_error &error) {
        ADD_FAILURE() << error.what();
    }
}

const ado::ConnectionPtr &TestDatabase::otherDesk()
{
    if (!otherDesk_)
        otherDesk_ = ado::Connection::open(address_);
    return otherDesk_;
}

void TestDatabase::run(const QString &statement)
{
    executed(plainName_, statement);
}

QStringList TestDatabase::rows(const QString &statement)
{
    QSqlQuery query = executed(plainName_, statement);
    QStringList lines;
    while (query.next()) {
        QStringList cells;
        for (int column = 0; column < query.record().count(); ++column)
            cells << shown(query.value(column));
        lines << cells.join(u'|');
    }
    return lines;
}

std::vector<ado::Engine> installedEngines()
{
    std::vector<ado::Engine> engines{ado::Engine::SQLite, ado::Engine::PostgreSQL, ado::Engine::Odbc};
    if (MariaDbServer::isInstalled())
        engines.push_back(ado::Engine::MariaDB);
    else
        std::cerr << "MariaDB is not installed and not tried\n";
    return engines;
}

std::string engineName(const testing::TestParamInfo<ado::Engine> &info)
{
    switch (info.param) {
    case ado::Engine::SQLite:
        return "SQLite";
    case ado::Engine::PostgreSQL:
        return "PostgreSQL";
    case ado::Engine::Odbc:
        return "Odbc";
    case ado::Engine::MariaDB:
        return "MariaDB";
    }
    return {};
}
