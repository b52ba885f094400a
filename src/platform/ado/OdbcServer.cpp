#include "platform/ado/OdbcServer.h"

#include "platform/ado/LibpqPatience.h"
#include "platform/ado/MariaDbSession.h"
#include "platform/ado/MariaDbText.h"
#include "platform/ado/PostgresSession.h"
#include "platform/runtime/RuntimeError.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlQuery>

#include <utility>

namespace ado {

namespace {

QString completedForPostgres(const QString &connectionString)
{
    // The driver rolls a whole transaction back on any failed statement unless it is told to set savepoints.
    QStringList patience;
    for (const auto &[name, value] : libpqPatience)
        patience << name + u'=' + value;
    const std::pair<QString, QString> settings[]{
        {QStringLiteral("Protocol="), QStringLiteral("7.4-2")},
        {QStringLiteral("pqopt="), u'{' + patience.join(u' ') + u'}'},
    };
    QString completed = connectionString;
    for (const auto &[name, value] : settings) {
        if (!completed.contains(name, Qt::CaseInsensitive))
            completed += u';' + name + value;
    }
    return completed;
}

QString asItIs(const QString &statement)
{
    return statement;
}

QVariant answer(const QSqlDatabase &session, const QString &question)
{
    QSqlQuery query(session);
    return query.exec(question) && query.next() ? query.value(0) : QVariant();
}

[[noreturn]] void refuseServer(const QString &why)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::ConnectionLost, why);
}

const OdbcServer &postgres()
{
    static const OdbcServer server{
        Engine::Odbc,
        Dialect::PostgreSQL,
        completedForPostgres,
        postgresSession::readAsTheLayer,
        u"\\",
        QStringLiteral("SELECT CASE WHEN current_setting('standard_conforming_strings') = 'on' AND "
                       "current_setting('client_encoding') = 'UTF8' THEN 1 ELSE 0 END"),
        {postgresSession::patience, postgresSession::likeOperator},
        asItIs,
        // The first question begins what the driver manager was asked for and has not begun yet: in the second one the
        // time of its begin has gone by.
        QStringLiteral("SELECT CASE WHEN now() = statement_timestamp() THEN 0 ELSE 1 END"),
        {},
        {},
        {},
        false,
        false,
        false,
    };
    return server;
}

const OdbcServer &mariaDb()
{
    static const OdbcServer server{
        Engine::MariaDB,
        Dialect::MariaDB,
        mariaDbSession::completed,
        mariaDbSession::readAsTheLayer,
        u"\\\"|",
        mariaDbSession::askReading,
        mariaDbSession::beginning,
        asMariaDbReads,
        mariaDbSession::askTransaction,
        QStringLiteral("START TRANSACTION"),
        QStringLiteral("COMMIT"),
        QStringLiteral("ROLLBACK"),
        true,
        true,
        true,
    };
    return server;
}

} // namespace

const OdbcServer *OdbcServer::behind(const QSqlDatabase &session)
{
    if (session.driver()->dbmsType() == QSqlDriver::PostgreSQL)
        return &postgres();
    const bool named = answer(session, mariaDbSession::askVersion).toString().contains(QLatin1String("MariaDB"));
    return named ? &mariaDb() : nullptr;
}

void OdbcServer::requireFit(const QSqlDatabase &session) const
{
    if (dialect != Dialect::MariaDB)
        return;
    if (!mariaDbSession::isNewEnough(answer(session, mariaDbSession::askVersion).toString()))
        refuseServer(QStringLiteral("MariaDB 10.6 이상의 서버에만 연결할 수 있습니다.\n서버의 판을 확인하십시오."));
    if (answer(session, mariaDbSession::askNames).toInt() != 1)
        refuseServer(QStringLiteral("테이블 이름의 대소문자를 구별하는 MariaDB 서버라 연결하지 않았습니다.\n"
                                    "서버 설정에 lower_case_table_names=1을 추가하고 서버를 다시 시작하십시오."));
    if (QSqlQuery(session).exec(mariaDbSession::twoStatements))
        refuseServer(QStringLiteral("한 번에 여러 문장을 받는 ODBC 연결이라 연결하지 않았습니다.\n"
                                    "주소와 ODBC 설정에서 OPTION을 삭제하십시오."));
}

} // namespace ado
