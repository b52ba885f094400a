#include "platform/ado/LentSqliteDriver.h"

#include "platform/ado/LikeOperator.h"

#include <QScopeGuard>
#include <QSqlQuery>

#include <sqlite3.h>

namespace ado {

namespace {

sqlite3 *handleOf(const LentDatabase &lent)
{
    return static_cast<sqlite3 *>(lent.handle(QLatin1String("QSQLITE")));
}

/// Some builds of Qt bring an engine of their own, whose sessions this library's engine must not touch.
bool hasOurEngine(const LentDatabase &lent)
{
    QSqlQuery version(lent.database());
    if (!version.exec(QStringLiteral("SELECT sqlite_source_id()")) || !version.next()
        || version.value(0).toString() != QLatin1String(sqlite3_sourceid()))
        return false;
    sqlite3_vfs *files = nullptr;
    return sqlite3_file_control(handleOf(lent), "main", SQLITE_FCNTL_VFS_POINTER, &files) == SQLITE_OK && files
           && sqlite3_vfs_find(files->zName) == files;
}

} // namespace

LentSqliteDriver::LentSqliteDriver(const LentDatabase &lent)
    : SqliteDriver(lent.database().databaseName(), false)
    , lent_(lent)
{
}

LentSqliteDriver::~LentSqliteDriver()
{
    LentSqliteDriver::closeSession();
}

bool LentSqliteDriver::isOurs() const
{
    return handle_ && !*closed_ && handle_ == handleOf(lent_);
}

void LentSqliteDriver::openSession()
{
    if (!handleOf(lent_))
        LentDatabase::raiseClosed();
    if (!hasOurEngine(lent_))
        connectionLost(
            QStringLiteral("Qt의 SQLite와 이 프로그램의 SQLite가 다릅니다. 데이터베이스 주소로 연결하십시오."));
    closed_ = std::make_shared<bool>();
    installLikeOperator(handleOf(lent_), closed_);
    handle_ = handleOf(lent_);
}

void LentSqliteDriver::closeSession()
{
    prepared_.clear();
    handle_ = nullptr;
}

void LentSqliteDriver::requireSession()
{
    if (!isOurs())
        sessionLost();
}

CellTable LentSqliteDriver::read(const Command &select)
{
    const auto clear = qScopeGuard([this] { prepared_.clear(); }); // or the host could not close its session
    return SqliteDriver::read(select);
}

int LentSqliteDriver::write(const Command &statement)
{
    const auto clear = qScopeGuard([this] { prepared_.clear(); });
    return SqliteDriver::write(statement);
}

} // namespace ado
