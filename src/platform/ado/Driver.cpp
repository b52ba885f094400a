#include "platform/ado/Driver.h"

#include "platform/ado/LentOdbcDriver.h"
#include "platform/ado/LentPostgresDriver.h"
#include "platform/ado/LentSqliteDriver.h"
#include "platform/ado/OdbcDriver.h"
#include "platform/ado/PostgresDriver.h"
#include "platform/ado/ShownAddress.h"
#include "platform/ado/SqliteDriver.h"

namespace ado {

namespace {

using runtime::ErrorNumber;
using runtime::RuntimeError;

bool isWordSign(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

/// The name as the statement writes it: some servers fold the names of a result.
QString spelledIn(QStringView statement, const QString &name)
{
    for (qsizetype at = statement.indexOf(name, 0, Qt::CaseInsensitive); at >= 0;
         at = statement.indexOf(name, at + 1, Qt::CaseInsensitive)) {
        const qsizetype end = at + name.size();
        if ((at == 0 || !isWordSign(statement[at - 1])) && (end == statement.size() || !isWordSign(statement[end])))
            return statement.sliced(at, name.size()).toString();
    }
    return name;
}

/// Every driver there is. Never destroyed, since a host's connection may be the last thing that goes.
std::vector<Driver *> &livingDrivers()
{
    static auto *const drivers = new std::vector<Driver *>;
    return *drivers;
}

} // namespace

Driver::LastSessions::~LastSessions()
{
    for (Driver *driver : livingDrivers())
        driver->leave();
}

std::unique_ptr<Driver> Driver::open(const QString &address, bool create)
{
    const auto after = [&](QLatin1String scheme) { return address.sliced(scheme.size()); };
    if (!isWellFormed(address))
        throw RuntimeError(
            ErrorNumber::ConnectionLost,
            QStringLiteral("데이터베이스 주소를 해석할 수 없습니다. 암호의 특수 기호는 %40처럼 %와 16진수로 "
                           "바꾸어 입력하십시오: ")
                + addressToShow(address));
    constexpr QLatin1String sqlite("sqlite:"), postgres("postgresql://"), odbc("odbc:");
    std::unique_ptr<Driver> driver;
    if (address.startsWith(sqlite))
        driver = std::make_unique<SqliteDriver>(after(sqlite), create);
    else if (address.startsWith(postgres))
        driver = std::make_unique<PostgresDriver>(postgresParameters(after(postgres)));
    else if (address.startsWith(odbc))
        driver = std::make_unique<OdbcDriver>(after(odbc));
    else
        throw RuntimeError(ErrorNumber::ConnectionLost,
                           QStringLiteral("데이터베이스 주소의 종류를 알 수 없습니다: ") + addressToShow(address));
    driver->openSession();
    static const LastSessions last;
    return driver;
}

std::unique_ptr<Driver> Driver::adopt(const LentDatabase &lent)
{
    const QString kind = lent.database().driverName();
    std::unique_ptr<Driver> driver;
    if (kind == QLatin1String("QSQLITE"))
        driver = std::make_unique<LentSqliteDriver>(lent);
    else if (kind == QLatin1String("QPSQL"))
        driver = std::make_unique<LentPostgresDriver>(lent);
    else if (kind == QLatin1String("QODBC"))
        driver = std::make_unique<LentOdbcDriver>(lent);
    else
        throw RuntimeError(ErrorNumber::ConnectionLost,
                           QStringLiteral("사용할 수 없는 종류의 데이터베이스입니다. QSQLITE, QPSQL, QODBC만 넘길 수 "
                                          "있습니다: ")
                               + kind);
    driver->openSession();
    return driver;
}

Driver::Driver()
{
    livingDrivers().push_back(this);
}

Driver::~Driver()
{
    std::erase(livingDrivers(), this);
}

Command Driver::told(const QString &statement) const
{
    oneStatement(statement, dialect());
    return command() << statement;
}

CellTable Driver::readWithin(const Guard &guard, const Command &select)
{
    write(guard.before);
    CellTable rows = read(select);
    if (holdsTransaction())
        write(guard.behind);
    return rows;
}

int Driver::writeWithin(const Guard &guard, const Command &statement)
{
    write(guard.before);
    const int touched = write(statement);
    if (holdsTransaction()) // it may have been a raw end of it
        write(guard.behind);
    return touched;
}

void Driver::writeAllWithin(const Guard &guard, std::span<const Command> statements)
{
    for (const Command &statement : statements)
        writeWithin(guard, statement);
}

void Driver::reopen()
{
    ++reopenings_;
    closeSession();
    try {
        openSession();
    } catch (const RuntimeError &) {
        closeSession(); // one that is half set up is none
        throw;
    }
}

void Driver::refuse(const QString &serverText, const QByteArray &state, runtime::Place raised)
{
    if (state == "25006") // read-only: a standby, or one that a technician closed for writing
        throw RuntimeError(
            ErrorNumber::Database,
            QStringLiteral("읽기 전용 서버라 저장하지 않았습니다. 쓰기가 되는 서버의 주소로 접속하십시오."),
            {state, serverText}, raised);
    throw RuntimeError(
        ErrorNumber::Database,
        QStringLiteral("저장하거나 가져오지 못했습니다. 잠시 후 다시 시도하고, 계속되면 개발사로 문의하십시오.\n(%1)")
            .arg(serverText.trimmed()),
        {state, serverText}, raised);
}

void Driver::refuseOtherReading()
{
    throw RuntimeError(ErrorNumber::Database,
                       QStringLiteral("서버 설정이 달라져 실행하지 않았습니다. 저장되지 않았습니다.\n"
                                      "다시 시도하고, 계속되면 개발사로 문의하십시오."));
}

void Driver::refuseWhileAwaited()
{
    throw RuntimeError(ErrorNumber::InvalidCall,
                       QStringLiteral("서버의 응답을 기다리는 중이라 실행하지 않았습니다. 잠시 후 다시 시도하십시오."));
}

void Driver::sessionLost(runtime::Place raised)
{
    // What the server was doing nobody knows: it may have saved before it went. Its own words help nobody at a desk.
    throw RuntimeError(
        ErrorNumber::ConnectionLost,
        QStringLiteral("데이터베이스와 연결이 끊어졌습니다.\n저장되었는지 목록에서 확인한 뒤 다시 시도하십시오."),
        raised);
}

void Driver::connectionLost(const QString &serverText, const QByteArray &state, runtime::Place raised)
{
    throw RuntimeError(ErrorNumber::ConnectionLost,
                       QStringLiteral("데이터베이스에 연결할 수 없습니다.\n") + serverText.trimmed(),
                       {state, serverText}, raised);
}

ResultColumn describeColumn(const QString &name, bool numeric, QStringView statement)
{
    if (const Column *column = findColumn(name))
        return {column->name, column, numeric};
    return {spelledIn(statement, name), nullptr, numeric};
}

} // namespace ado
