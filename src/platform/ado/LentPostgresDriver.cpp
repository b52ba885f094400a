#include "platform/ado/LentPostgresDriver.h"

#include "platform/ado/PostgresSession.h"

#include <libpq-events.h>
#include <libpq-fe.h>

#include <new>

namespace ado {

namespace {

using runtime::ErrorNumber;
using runtime::RuntimeError;
using Closed = std::shared_ptr<bool>;

int watchEnd(PGEventId event, void *, void *watched)
{
    if (event != PGEVT_CONNDESTROY && event != PGEVT_CONNRESET)
        return 1;
    auto *const closed = static_cast<Closed *>(watched);
    **closed = true;
    if (event == PGEVT_CONNRESET)
        *closed = std::make_shared<bool>(false);
    else
        delete closed;
    return 1;
}

/// Becomes true when the session ends. The library takes but one watch of a kind, which all who adopt the session share.
Closed closedOf(PGconn *handle)
{
    if (const void *watched = PQinstanceData(handle, watchEnd))
        return *static_cast<const Closed *>(watched);
    auto fresh = std::make_unique<Closed>(std::make_shared<bool>(false));
    if (!PQregisterEventProc(handle, watchEnd, "desk", fresh.get()))
        throw std::bad_alloc();
    PQsetInstanceData(handle, watchEnd, fresh.get());
    return *fresh.release();
}

} // namespace

LentPostgresDriver::LentPostgresDriver(const LentDatabase &lent)
    : PostgresDriver(PostgresParameters())
    , lent_(lent)
{
}

LentPostgresDriver::~LentPostgresDriver()
{
    LentPostgresDriver::closeSession();
}

pg_conn *LentPostgresDriver::session() const
{
    return lentHandle_ && !*closed_ && lentHandle_ == lent_.handle(QLatin1String("QPSQL")) ? lentHandle_ : nullptr;
}

void LentPostgresDriver::openSession()
{
    auto *const handle = static_cast<PGconn *>(lent_.handle(QLatin1String("QPSQL")));
    if (!handle || PQstatus(handle) != CONNECTION_OK)
        LentDatabase::raiseClosed();
    closed_ = closedOf(handle);
    lentHandle_ = handle;
    requireNothingUnderWay();
    putReadingRight();
    PostgresDriver::write(command() << u"SET DateStyle = ISO");
    PostgresDriver::read(command() << postgresSession::lentPatience);
    PostgresDriver::read(command() << postgresSession::likeOperator);
}

void LentPostgresDriver::closeSession()
{
    lentHandle_ = nullptr;
}

void LentPostgresDriver::requireNothingUnderWay() const
{
    if (PQtransactionStatus(session()) == PQTRANS_ACTIVE)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           QStringLiteral("프로그램 오류입니다. 개발사로 문의하십시오. (끝까지 읽지 않은 조회가 같은 "
                                          "연결에 있습니다.)"));
}

CellTable LentPostgresDriver::read(const Command &select)
{
    requireNothingUnderWay();
    return PostgresDriver::read(select);
}

int LentPostgresDriver::write(const Command &statement)
{
    requireNothingUnderWay();
    return PostgresDriver::write(statement);
}

CellTable LentPostgresDriver::readWithin(const Guard &guard, const Command &select)
{
    requireNothingUnderWay();
    return PostgresDriver::readWithin(guard, select);
}

int LentPostgresDriver::writeWithin(const Guard &guard, const Command &statement)
{
    requireNothingUnderWay();
    return PostgresDriver::writeWithin(guard, statement);
}

void LentPostgresDriver::writeAllWithin(const Guard &guard, std::span<const Command> statements)
{
    requireNothingUnderWay();
    PostgresDriver::writeAllWithin(guard, statements);
}

} // namespace ado
