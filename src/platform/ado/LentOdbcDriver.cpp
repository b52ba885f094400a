#include "platform/ado/LentOdbcDriver.h"

#include "platform/ado/PostgresSession.h"

#include <QSqlQuery>

namespace ado {

using runtime::ErrorNumber;
using runtime::RuntimeError;

LentOdbcDriver::LentOdbcDriver(const LentDatabase &lent)
    : lent_(lent)
{
}

void LentOdbcDriver::openSession()
{
    if (!answers())
        LentDatabase::raiseClosed();
    knowServer();
    // What another kind's session was opened with, and whether it opens another one by itself, cannot be seen from within.
    if (dialect() != Dialect::PostgreSQL)
        refuseKind(QStringLiteral("프로그램이 열어 둔 ODBC 연결은 PostgreSQL 서버의 것만 사용할 수 있습니다."));
    if (isMarked()) // another has adopted it, too
        return sessionStands();
    if (transactionIsOpen() || transactionIsOpen())
        throw RuntimeError(
            ErrorNumber::InvalidCall,
            QStringLiteral("프로그램 오류입니다. 개발사로 문의하십시오. (ODBC 연결은 트랜잭션을 시작하기 "
                           "전에 넘기십시오.)"));
    requireStatementsToFailAlone();
    sessionStands();
    run(command() << postgresSession::lentPatience);
    run(command() << postgresSession::likeOperator);
    run(command() << u"SELECT set_config('desk.adopted', 'yes', false)");
}

void LentOdbcDriver::closeSession()
{
    forgetSession();
}

bool LentOdbcDriver::isMarked() const
{
    QSqlQuery mark(database());
    return mark.exec(QStringLiteral("SELECT current_setting('desk.adopted', true)")) && mark.next()
           && mark.value(0).toString() == QLatin1String("yes");
}

bool LentOdbcDriver::alive(Asking asking)
{
    return OdbcDriver::alive(asking) && (asking == Asking::Never || isMarked());
}

void LentOdbcDriver::requireStatementsToFailAlone()
{
    QSqlDatabase session = database();
    const auto begun = [&] {
        QSqlQuery time(session);
        return time.exec(QStringLiteral("SELECT CAST(now() AS varchar(40))")) && time.next() ? time.value(0).toString()
                                                                                             : QString();
    };
    session.transaction();
    const QString before = begun();
    QSqlQuery(session).exec(QStringLiteral("SELECT 1/0"));
    const bool alone = !before.isEmpty() && begun() == before;
    session.rollback();
    if (!alone)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           QStringLiteral("프로그램 오류입니다. 개발사로 문의하십시오. (ODBC 연결 문자열에 "
                                          "Protocol=7.4-2가 없습니다.)"));
}

} // namespace ado
