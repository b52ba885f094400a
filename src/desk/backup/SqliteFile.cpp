#include "desk/backup/SqliteFile.h"

#include "desk/backup/Refusal.h"
#include "desk/schema/Shape.h"
#include "desk/schema/Tables.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QThread>

#include <sqlite3.h>

#include <algorithm>
#include <memory>

namespace backup {

namespace {

constexpr int Patience = 15'000; // milliseconds to wait for the desks
constexpr int PagesAStep = 512;  // 2 MB: some hundredths of a second

int flagsOf(SqliteFile::Open how)
{
    switch (how) {
    case SqliteFile::Open::ToRead:
        return SQLITE_OPEN_READONLY;
    case SqliteFile::Open::ToWrite:
        return SQLITE_OPEN_READWRITE;
    case SqliteFile::Open::New:
        return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    }
    Q_UNREACHABLE();
}

QString textFor(int code)
{
    switch (code) {
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        return QStringLiteral("데이터베이스 파일이 아니거나 손상된 데이터베이스 파일입니다");
    case SQLITE_ERROR:
        return QStringLiteral("이 프로그램의 한의원 데이터베이스가 아닙니다");
    default:
        return QStringLiteral("데이터베이스 파일을 읽거나 쓰지 못했습니다. 디스크를 확인한 뒤 다시 시도하십시오");
    }
}

struct Finish
{
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    void operator()(sqlite3_backup *copy) const { sqlite3_backup_finish(copy); }
};

} // namespace

SqliteFile::SqliteFile(const QString &name, Open how)
    : name_(name)
{
    const int code = sqlite3_open_v2(name.toUtf8().constData(), &handle_, flagsOf(how), nullptr);
    if (code != SQLITE_OK) {
        const QString why = QString::fromUtf8(sqlite3_errmsg(handle_));
        sqlite3_close(handle_);
        refuse(QStringLiteral("데이터베이스 파일을 열 수 없습니다: %1\n%2").arg(name, why));
    }
    sqlite3_extended_result_codes(handle_, 0);
    sqlite3_busy_timeout(handle_, Patience);
}

SqliteFile::~SqliteFile()
{
    sqlite3_close(handle_);
}

void SqliteFile::refuseWith(int code) const
{
    const char *const why = code == sqlite3_errcode(handle_) ? sqlite3_errmsg(handle_) : sqlite3_errstr(code);
    throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                QStringLiteral("%1: %2\n%3").arg(textFor(code), name_, QString::fromUtf8(why)),
                                {QByteArray::number(code), QString::fromUtf8(why)});
}

void SqliteFile::forEachRow(const QString &statement, const std::function<void(sqlite3_stmt *)> &take)
{
    sqlite3_stmt *prepared = nullptr;
    int code = sqlite3_prepare_v2(handle_, statement.toUtf8().constData(), -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, Finish> owner(prepared);
    if (code != SQLITE_OK)
        refuseWith(code);
    while ((code = sqlite3_step(prepared)) == SQLITE_ROW)
        take(prepared);
    if (code != SQLITE_DONE)
        refuseWith(code);
}

bool SqliteFile::tellsOfDamage(const runtime::RuntimeError &error)
{
    const int code = error.origin().server.state.toInt();
    return code == SQLITE_NOTADB || code == SQLITE_CORRUPT || code == SQLITE_ERROR;
}

QStringList SqliteFile::ask(const QString &statement)
{
    QStringList answer;
    forEachRow(statement, [&](sqlite3_stmt *row) {
        answer << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(row, 0)));
    });
    return answer;
}

bool SqliteFile::has(const QString &table)
{
    return !ask(QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'table' AND name = '%1' COLLATE NOCASE")
                    .arg(table))
                .isEmpty();
}

QStringList SqliteFile::rowSums()
{
    QStringList names, sums;
    for (const schema::TablePlan &table : schema::tablePlans())
        names << QString::fromLatin1(table.name);
    if (const QString journal = QStringLiteral("t_DeskJournal"); has(journal))
        names << journal;
    for (const QString &name : names) {
        QCryptographicHash hash(QCryptographicHash::Sha256);
        qint64 rows = 0;
        forEachRow(QStringLiteral("SELECT * FROM %1 ORDER BY 1").arg(name), [&](sqlite3_stmt *row) {
            ++rows;
            for (int column = 0; column < sqlite3_column_count(row); ++column) {
                const auto *value = static_cast<const char *>(sqlite3_column_blob(row, column));
                const int length = sqlite3_column_bytes(row, column);
                const bool null = sqlite3_column_type(row, column) == SQLITE_NULL;
                hash.addData(QByteArray::number(null ? -1 : length) + ' ');
                hash.addData(QByteArrayView(value, length));
            }
        });
        sums << QStringLiteral("%1 %2 %3").arg(name).arg(rows).arg(QString::fromLatin1(hash.result().toHex()));
    }
    return sums;
}

void SqliteFile::carry(const QStringList &rowSums)
{
    ask(QStringLiteral("DROP TABLE IF EXISTS t_DeskBackup"));
    ask(QStringLiteral("CREATE TABLE t_DeskBackup (DB_RowSum TEXT NOT NULL)"));
    for (const QString &sum : rowSums)
        ask(QStringLiteral("INSERT INTO t_DeskBackup VALUES ('%1')").arg(sum));
}

void SqliteFile::demandClinic(const QString &toldAs)
{
    const QString &name = toldAs.isEmpty() ? name_ : toldAs;
    const QStringList damage = ask(QStringLiteral("PRAGMA integrity_check(1)"));
    if (damage != QStringList{QStringLiteral("ok")})
        refuse(QStringLiteral("손상된 데이터베이스 파일입니다: %1\n%2").arg(name, damage.join(u'\n')));
    const QString why = whyForeign();
    if (!why.isEmpty())
        refuse(QStringLiteral("이 프로그램의 한의원 데이터베이스가 아닙니다: %1\n%2").arg(name, why));
    schema::demandNoNewer(mark().version, name);
    if (has(QStringLiteral("t_DeskBackup")) && ask(QStringLiteral("SELECT DB_RowSum FROM t_DeskBackup")) != rowSums())
        refuse(QStringLiteral("백업한 뒤에 바뀌었거나 손상된 백업 파일입니다: ") + name);
}

bool SqliteFile::isSound()
{
    static const QRegularExpression ofARow(
        QStringLiteral("^(ok$|CHECK constraint failed|NULL value in|\\S+ value in)"));
    const QStringList found = ask(QStringLiteral("PRAGMA integrity_check"));
    return std::ranges::all_of(found, [&](const QString &line) { return line.contains(ofARow); });
}

QStringList SqliteFile::missingTables()
{
    QStringList missing;
    for (const schema::TablePlan &table : schema::tablePlans()) {
        if (!has(QString::fromLatin1(table.name)))
            missing << QString::fromLatin1(table.name);
    }
    return missing;
}

QString SqliteFile::whyForeign()
{
    for (const schema::TablePlan &table : schema::tablePlans()) {
        const QString name = QString::fromLatin1(table.name);
        if (!has(name)) {
            const QString view =
                QStringLiteral("SELECT 1 FROM sqlite_master WHERE type = 'view' AND name = '%1' COLLATE NOCASE");
            return name
                   + (ask(view.arg(name)).isEmpty() ? QStringLiteral(": 없는 테이블")
                                                    : QStringLiteral(": 테이블이 아닌 뷰"));
        }
        QList<schema::FoundColumn> columns;
        const QStringList rows =
            ask(QStringLiteral("SELECT name || char(9) || type || char(9) || \"notnull\" || char(9) || (dflt_value IS "
                               "NOT NULL OR pk > 0 OR hidden > 1) FROM pragma_table_xinfo('%1')")
                    .arg(name));
        for (const QString &row : rows) {
            const QStringList cells = row.split(u'\t');
            columns << schema::FoundColumn{cells[0], cells[1], cells[2] == QLatin1String("1"),
                                           cells[3] == QLatin1String("1")};
        }
        const QString why = schema::whyForeign(table, columns, schema::Dialect::SQLite);
        if (!why.isEmpty())
            return why;
    }
    return {};
}

QStringList SqliteFile::triggers()
{
    return ask(QStringLiteral("SELECT sql FROM sqlite_master WHERE type = 'trigger'"));
}

schema::Mark SqliteFile::mark()
{
    const auto number = [this](const char *column) {
        return ask(QStringLiteral("SELECT %1 FROM t_DeskSchema").arg(QString::fromLatin1(column))).value(0).toInt();
    };
    if (!has(QStringLiteral("t_DeskSchema")))
        return {};
    return {number("DS_Version"), number("DS_Generation")};
}

QHash<QString, qint64> SqliteFile::counters()
{
    QHash<QString, qint64> counters;
    const QStringList rows = ask(QStringLiteral("SELECT name || ' ' || seq FROM sqlite_sequence"));
    for (const QString &row : rows)
        counters.insert(row.section(u' ', 0, -2), row.section(u' ', -1).toLongLong());
    return counters;
}

void SqliteFile::countForward(const QHash<QString, qint64> &counters)
{
    const QHash<QString, qint64> own = this->counters();
    for (const schema::TablePlan &plan : schema::tablePlans()) {
        const QString table = QString::fromLatin1(plan.name);
        const qint64 last = counters.value(table);
        if (last <= own.value(table))
            continue;
        ask(QStringLiteral("DELETE FROM sqlite_sequence WHERE name = '%1'").arg(table));
        ask(QStringLiteral("INSERT INTO sqlite_sequence (name, seq) VALUES ('%1', %2)").arg(table).arg(last));
    }
}

bool SqliteFile::waitForDesks(int code, QElapsedTimer &waiting) const
{
    if (code != SQLITE_BUSY && code != SQLITE_LOCKED) {
        waiting.invalidate();
        return false;
    }
    if (!waiting.isValid())
        waiting.start();
    if (waiting.elapsed() > Patience)
        refuse(QStringLiteral("데스크가 데이터베이스를 사용 중입니다. 데스크를 모두 닫고 다시 시도하십시오: ") + name_);
    QThread::msleep(20);
    return true;
}

void SqliteFile::takeOver(SqliteFile &other, const Progress &progress, const std::function<void()> &lastWords)
{
    const std::unique_ptr<sqlite3_backup, Finish> copy(sqlite3_backup_init(handle_, "main", other.handle_, "main"));
    if (!copy)
        refuseWith(sqlite3_errcode(handle_));
    QElapsedTimer waiting;
    int code = SQLITE_OK;
    if (lastWords) {
        while (waitForDesks(code = sqlite3_backup_step(copy.get(), 0), waiting))
            continue;
        if (code != SQLITE_OK)
            refuseWith(code);
        if (progress && !progress(0, sqlite3_backup_pagecount(copy.get())))
            stop();
        lastWords();
    }
    do {
        code = sqlite3_backup_step(copy.get(), PagesAStep);
        if (waitForDesks(code, waiting))
            continue;
        if (code != SQLITE_OK && code != SQLITE_DONE)
            refuseWith(code);
        const qint64 total = sqlite3_backup_pagecount(copy.get());
        const bool committed = lastWords && code == SQLITE_DONE;
        if (progress && !progress(total - sqlite3_backup_remaining(copy.get()), total) && !committed)
            stop();
    } while (code != SQLITE_DONE);
}

} // namespace backup
