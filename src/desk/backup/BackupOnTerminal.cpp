#include "desk/backup/Backup.h"
#include "desk/backup/Refusal.h"
#include "desk/terminal/ProgressLine.h"

#include <QTextStream>

namespace backup {

namespace {

/// Runs the work beneath a line that counts and tells when it was stopped; true when it was done.
template <typename Work>
bool done(terminal::ProgressLine &line, Work work)
{
    try {
        work([&](qint64 sofar, qint64 total) { return line.show(sofar, total); });
        return true;
    } catch (const Stopped &stopped) {
        line.leave();
        QTextStream(stderr) << stopped.description() << Qt::endl;
        return false;
    } catch (const runtime::RuntimeError &) {
        line.leave();
        throw;
    }
}

} // namespace

int backUpOnTerminal(const QString &address, const QString &file)
{
    terminal::ProgressLine line(QStringLiteral("백업"));
    if (!done(line, [&](const Progress &progress) { backUp(address, file, progress); }))
        return 1;
    line.finish(QStringLiteral("백업했습니다"), file);
    return 0;
}

int restoreOnTerminal(const QString &address, const QString &file, Scope scope)
{
    terminal::ProgressLine line(QStringLiteral("복원"));
    Restored restored;
    if (!done(line, [&](const Progress &progress) { restored = restore(address, file, progress, scope); }))
        return 1;
    line.finish(QStringLiteral("복원했습니다"), file);
    if (!restored.safetyCopy.isEmpty())
        QTextStream(stderr) << QStringLiteral("복원 전의 데이터베이스: ") << restored.safetyCopy << Qt::endl;
    if (restored.wholeFile)
        QTextStream(stderr) << QStringLiteral("손상된 파일이라 모든 테이블을 백업의 테이블로 바꾸었습니다. 다른 "
                                              "프로그램의 테이블은 복원 전의 데이터베이스에 있습니다.")
                            << Qt::endl;
    return 0;
}

} // namespace backup
