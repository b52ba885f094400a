#include "platform/ado/SqliteDriver.h"

#include "platform/ado/FileIdentity.h"
#include "platform/ado/LiftNumbers.h"
#include "platform/ado/LikeOperator.h"

#include <QFileInfo>
#include <QThread>
#include <QUrl>

#include <sqlite3.h>

#include <filesystem>
#include <utility>

namespace ado {

namespace {

constexpr QLatin1String readOnlyMark("?mode=ro");
const QString anyRow = QStringLiteral("SELECT 1 FROM sqlite_schema");

/// Asked of the disk itself: to the toolkit a name that begins with ':' is one of the program's own resources.
bool isThere(const QString &file)
{
    std::error_code unreadable;
    return std::filesystem::exists(std::filesystem::path(file.toStdU16String()), unreadable);
}

class Statement
{
public:
    Statement(PreparedStatements &prepared, sqlite3 *handle, const Command &command)
        : prepared_(prepared)
        , command_(liftNumbers(command))
        , statement_(prepared.take(handle, command_.text()))
        , failed_(!statement_)
    {
        int at = 0;
        for (const QVariant &value : command_.values())
            failed_ = failed_ || bind(++at, value) != SQLITE_OK;
    }
    ~Statement()
    {
        if (statement_)
            prepared_.giveBack(command_.text(), statement_);
    }
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    bool failed() const { return failed_; }
    sqlite3_stmt *get() const { return statement_; }

private:
    int bind(int at, const QVariant &value)
    {
        if (!value.isValid())
            return sqlite3_bind_null(statement_, at);
        if (value.typeId() == QMetaType::LongLong)
            return sqlite3_bind_int64(statement_, at, value.toLongLong());
        if (value.typeId() == QMetaType::Double)
            return sqlite3_bind_double(statement_, at, value.toDouble());
        const QString text = value.toString();
        return sqlite3_bind_text16(statement_, at, text.utf16(),
                                   static_cast<int>(text.size() * qsizetype{sizeof(char16_t)}), SQLITE_TRANSIENT);
    }

    PreparedStatements &prepared_;
    const Command command_;
    sqlite3_stmt *const statement_;
    bool failed_;
};

std::vector<ResultColumn> describe(sqlite3_stmt *row, QStringView text)
{
    std::vector<ResultColumn> described;
    for (int column = 0; column < sqlite3_column_count(row); ++column)
        described.push_back(describeColumn(QString::fromUtf8(sqlite3_column_name(row, column)), false, text));
    return described;
}

void addCell(CellTable &table, sqlite3_value *cell)
{
    switch (sqlite3_value_type(cell)) {
    case SQLITE_INTEGER:
        return table.addInteger(sqlite3_value_int64(cell));
    case SQLITE_FLOAT:
        return table.addReal(sqlite3_value_double(cell));
    case SQLITE_NULL:
        return table.addNull();
    default: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(cell));
        table.addText(text, static_cast<std::size_t>(sqlite3_value_bytes(cell)));
    }
    }
}

/// Desks may write at the same moment; each write is short. The engine's own waiting sleeps longer each time, up to a tenth
/// of a second, and so always comes too late where several desks write again and again.
int waitForOtherDesk(void *, int tries)
{
    constexpr int step = 2, most = 5'000; // milliseconds
    if (tries >= most / step)
        return 0;
    QThread::msleep(step);
    return 1;
}

} // namespace

SqliteDriver::SqliteDriver(const QString &file, bool create)
    : readsOnly_(file.endsWith(readOnlyMark))
    , file_(readsOnly_ ? file.chopped(readOnlyMark.size()) : file)
    , mayMake_(!readsOnly_ && (create || file == QLatin1String(":memory:")))
{
}

SqliteDriver::~SqliteDriver()
{
    SqliteDriver::closeSession();
}

void SqliteDriver::openSession()
{
    if (!mayMake_ && !isThere(file_))
        connectionLost(QStringLiteral("데이터베이스 파일이 없습니다: %1").arg(file_));
    requireNoLogOfTheFileBefore();
    if (readsOnly_)
        openToRead();
    else
        open(file_, SQLITE_OPEN_READWRITE | (mayMake_ ? SQLITE_OPEN_CREATE : 0));
    sqlite3_busy_handler(handle_, waitForOtherDesk, nullptr);
    keepsLog_ = false;
    run("PRAGMA synchronous = FULL"); // this is money: a committed sale survives a power cut
    run("PRAGMA cache_size = -65536");
    if (!readsOnly_)
        rowLog_.attach(handle_);
    installLikeOperator(handle_);
    mayMake_ = file_ == QLatin1String(":memory:");
    knowFiles();
}

void SqliteDriver::open(const QString &name, int how)
{
    // A connection belongs to one thread, so the engine need not guard it.
    if (sqlite3_open_v2(name.toUtf8().constData(), &handle_, how | SQLITE_OPEN_NOMUTEX, nullptr) == SQLITE_OK)
        return;
    const QString why = QString::fromUtf8(sqlite3_errmsg(handle_));
    closeSession();
    connectionLost(why);
}

/// Leaves no trace. The engine's own read-only way makes a log and leaves it behind, so it is taken only where nothing can be
/// written, or where the engine would first undo what a crash left; a log that others left stays as it is.
void SqliteDriver::openToRead()
{
    const QFileInfo file(file_);
    const bool mayWrite = file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
    const bool hasLog = QFileInfo(log()).size() > 0;
    if (mayWrite && QFileInfo(file_ + QStringLiteral("-journal")).size() == 0) {
        open(file_, SQLITE_OPEN_READWRITE);
        if (hasLog)
            sqlite3_db_config(handle_, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    } else if (mayWrite || hasLog) {
        open(file_, SQLITE_OPEN_READONLY);
    } else {
        const QString path = QString::fromLatin1(QUrl::toPercentEncoding(file.absoluteFilePath(), "/"));
        open(QStringLiteral("file:%1?immutable=1").arg(path), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    }
    run("PRAGMA query_only = ON");
}

void SqliteDriver::requireWriting() const
{
    if (readsOnly_)
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("읽기 전용으로 연 데이터베이스입니다. 저장하지 않았습니다: ")
                                        + file_);
}

void SqliteDriver::knowFiles()
{
    run("PRAGMA schema_version"); // a reading opens the log, where there is one
    ownFile_ = identityOf(file_);
    ownLog_ = identityOf(log());
}

void SqliteDriver::requireNoLogOfTheFileBefore() const
{
    if (ownLog_.isEmpty() || identityOf(log()) != ownLog_ || identityOf(file_) == ownFile_)
        return;
    throw runtime::RuntimeError(
        runtime::ErrorNumber::ConnectionLost,
        QStringLiteral("데이터베이스 파일이 바뀌었으나 이전 파일의 일부가 옆에 남아 있어 열지 않았습니다.\n"
                       "데스크를 모두 닫고 -wal, -shm 파일을 다른 곳으로 옮긴 뒤 다시 시도하십시오: %1")
            .arg(log()));
}

void SqliteDriver::closeSession()
{
    letMomentGo();
    prepared_.clear();
    rowLog_.detach();
    sqlite3_close_v2(std::exchange(handle_, nullptr));
}

void SqliteDriver::requireSession()
{
    if (!handle_)
        sessionLost();
}

void SqliteDriver::requireFileInPlace()
{
    int moved = 0;
    requireSession();
    if (sqlite3_file_control(handle_, "main", SQLITE_FCNTL_HAS_MOVED, &moved) != SQLITE_OK || moved == 0)
        return;
    closeSession();
    throw runtime::RuntimeError(
        runtime::ErrorNumber::ConnectionLost,
        QStringLiteral("데이터베이스 파일이 삭제되었거나 다른 파일로 바뀌었습니다. 저장되지 않았습니다.\n"
                       "파일을 확인한 뒤 다시 시도하십시오."));
}

void SqliteDriver::keepLog()
{
    if (keepsLog_)
        return;
    requireWriting();
    takeUpLog();
    knowFiles();
    keepsLog_ = true;
}

/// What waits for other desks elsewhere does not here: the engine refuses at once where one of them writes a file that has no
/// log yet, as all of them do at the first sale in a new one.
void SqliteDriver::takeUpLog()
{
    requireSession();
    for (int tries = 0; sqlite3_exec(handle_, "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr) != SQLITE_OK;
         ++tries) {
        if (sqlite3_errcode(handle_) != SQLITE_BUSY || waitForOtherDesk(nullptr, tries) == 0)
            refuseLast();
    }
}

void SqliteDriver::refuseLast() const
{
    const int code = sqlite3_extended_errcode(handle_);
    const QString why = QString::fromUtf8(sqlite3_errmsg(handle_));
    if ((code & 0xff) != SQLITE_CORRUPT && (code & 0xff) != SQLITE_NOTADB)
        refuse(why, QByteArray::number(code));
    throw runtime::RuntimeError(
        runtime::ErrorNumber::Database,
        QStringLiteral("데이터베이스 파일이 아니거나 손상된 파일입니다.\n데스크를 모두 닫고 마지막 백업으로 "
                       "복원하십시오.\n(%1)")
            .arg(why),
        {QByteArray::number(code), why});
}

Command SqliteDriver::told(const QString &statement) const
{
    return liftNumbers(command() << statement);
}

CellTable SqliteDriver::read(const Command &select)
{
    requireSession();
    const Statement statement(prepared_, handle_, select);
    if (statement.failed())
        refuseLast();
    sqlite3_stmt *const row = statement.get();
    int step = sqlite3_step(row);
    CellTable table(describe(row, select.text()));
    const int columns = table.columnCount();
    for (; step == SQLITE_ROW; step = sqlite3_step(row)) {
        for (int column = 0; column < columns; ++column)
            addCell(table, sqlite3_column_value(row, column));
    }
    if (step != SQLITE_DONE)
        refuseLast();
    return table;
}

std::int64_t SqliteDriver::number(const QString &question)
{
    const CellTable answer = read(command() << question);
    return answer.raw(0, 0).toLongLong();
}

bool SqliteDriver::keyIsRowNumber(const Table &table)
{
    // A key that is the row number has no index of its own. The engine's versions are the file's: a table of the session's own,
    // which would be read instead, is none of it.
    return number(
               QStringLiteral("SELECT COUNT(*) FROM pragma_table_info('%1', 'main') WHERE name = '%2' COLLATE NOCASE "
                              "AND pk = 1 "
                              "AND NOT EXISTS (SELECT 1 FROM pragma_index_list('%1', 'main') WHERE origin = 'pk') "
                              "AND NOT EXISTS (SELECT 1 FROM temp.sqlite_schema WHERE name = '%1' COLLATE NOCASE)")
                   .arg(table.name, table.key))
           == 1;
}

std::optional<TableMoment> SqliteDriver::momentOf(const Table &table)
{
    if (!rowLog_.attached() || holdsTransaction() || !keyIsRowNumber(table))
        return std::nullopt;
    const SqliteRowLog::Place place = rowLog_.place(table.name);
    return TableMoment{place.log, place.rows, number(QStringLiteral("PRAGMA data_version")),
                       number(QStringLiteral("PRAGMA schema_version"))};
}

std::optional<std::vector<std::int64_t>> SqliteDriver::writtenSince(const TableMoment &moment)
{
    return rowLog_.since({moment.log, moment.place});
}

bool SqliteDriver::holdMoment()
{
    if (!handle_ || moment_)
        return false;
    moment_ = prepared_.take(handle_, anyRow);
    if (moment_ && sqlite3_step(moment_) == SQLITE_ROW)
        return true;
    letMomentGo();
    return false;
}

void SqliteDriver::letMomentGo()
{
    if (moment_)
        prepared_.giveBack(anyRow, std::exchange(moment_, nullptr));
}

int SqliteDriver::write(const Command &text)
{
    letMomentGo(); // a writing would begin from it, and be refused once another desk has written
    if (!holdsTransaction()) {
        requireFileInPlace();
        keepLog();
    }
    const Statement statement(prepared_, handle_, text);
    if (statement.failed())
        refuseLast();
    int step = SQLITE_ROW;
    while (step == SQLITE_ROW)
        step = sqlite3_step(statement.get());
    if (step != SQLITE_DONE)
        refuseLast();
    return sqlite3_changes(handle_);
}

void SqliteDriver::run(const char *statement)
{
    requireSession();
    if (sqlite3_exec(handle_, statement, nullptr, nullptr, nullptr) != SQLITE_OK)
        refuseLast();
}

void SqliteDriver::begin()
{
    letMomentGo();
    requireFileInPlace();
    keepLog();
    // A deferred one would fail at its first write, without waiting, when another desk committed since its first read.
    run("BEGIN IMMEDIATE");
}

void SqliteDriver::commit()
{
    requireFileInPlace();
    run("COMMIT");
}

void SqliteDriver::rollback()
{
    run("ROLLBACK");
}

bool SqliteDriver::holdsTransaction() const
{
    return handle_ && sqlite3_get_autocommit(handle_) == 0;
}

} // namespace ado
