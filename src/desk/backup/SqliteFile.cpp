#include "desk/backup/SqliteFile.h"

#include "desk/backup/Refusal.h"
#include "desk/schema/Schema.h"

#include <QElapsedTimer>
#include <QThread>

#include <sqlite3.h>

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
    refuse(QStringLiteral("%1\n%2").arg(
        name_, QString::fromUtf8(code == sqlite3_errcode(handle_) ? sqlite3_errmsg(handle_) : sqlite3_errstr(code))));
}

QStringList SqliteFile::ask(const QString &statement)
{
    sqlite3_stmt *prepared = nullptr;
    int code = sqlite3_prepare_v2(handle_, statement.toUtf8().constData(), -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, Finish> owner(prepared);
    if (code != SQLITE_OK)
        refuseWith(code);
    QStringList answer;
    while ((code = sqlite3_step(prepared)) == SQLITE_ROW)
        answer << QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(prepared, 0)));
    if (code != SQLITE_DONE)
        refuseWith(code);
    return answer;
}

void SqliteFile::demandClinic()
{
    QString damage;
    try {
        const QStringList answer = ask(QStringLiteral("PRAGMA integrity_check(1)"));
        if (answer != QStringList{QStringLiteral("ok")})
            damage = answer.join(u'\n');
    } catch (const runtime::RuntimeError &error) {
        damage = error.description();
    }
    if (!damage.isEmpty())
        refuse(QStringLiteral("손상된 데이터베이스 파일입니다: %1\n%2").arg(name_, damage));
    try {
        for (const QString &probe : schema::probes())
            ask(probe);
    } catch (const runtime::RuntimeError &error) {
        refuse(QStringLiteral("이 프로그램의 한의원 데이터베이스가 아닙니다: %1").arg(error.description()));
    }
    schema::demandNoNewer(mark().version, name_);
}

schema::Mark SqliteFile::mark()
{
    const auto number = [this](const char *column) {
        return ask(QStringLiteral("SELECT %1 FROM t_DeskSchema").arg(QString::fromLatin1(column))).value(0).toInt();
    };
    if (ask(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND name = 't_DeskSchema'")).isEmpty())
        return {};
    return {number("DS_Version"), number("DS_Generation")};
}

void SqliteFile::takeOver(SqliteFile &other, const Progress &progress)
{
    const std::unique_ptr<sqlite3_backup, Finish> copy(sqlite3_backup_init(handle_, "main", other.handle_, "main"));
    if (!copy)
        refuseWith(sqlite3_errcode(handle_));
    QElapsedTimer waiting;
    for (;;) {
        const int code = sqlite3_backup_step(copy.get(), PagesAStep);
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED) {
            if (!waiting.isValid())
                waiting.start();
            if (waiting.elapsed() > Patience)
                refuse(QStringLiteral("데스크가 데이터베이스를 놓지 않습니다. 잠시 후 다시 하십시오: ") + name_);
            QThread::msleep(20);
            continue;
        }
        waiting.invalidate();
        if (code != SQLITE_OK && code != SQLITE_DONE)
            refuseWith(code);
        const qint64 total = sqlite3_backup_pagecount(copy.get());
        if (progress && !progress(total - sqlite3_backup_remaining(copy.get()), total))
            refuse(QStringLiteral("중단하였습니다."));
        if (code == SQLITE_DONE)
            return;
    }
}

} // namespace backup
