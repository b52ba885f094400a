#include "desk/backup/Refusal.h"
#include "desk/copy/CopyClinic.h"
#include "desk/terminal/ProgressLine.h"
#include "platform/ado/ShownAddress.h"

#include <QLocale>
#include <QTextStream>

namespace copy {

namespace {

void tell(const Copied &copied)
{
    const QLocale korean(QLocale::Korean, QLocale::SouthKorea);
    QTextStream terminal(stdout);
    for (const Copied::Table &table : copied.tables)
        terminal << QStringLiteral("  %1 %2건").arg(table.name, korean.toString(table.rows)) << Qt::endl;
    terminal << QStringLiteral("모든 테이블의 건수와 내용을 원본과 비교했습니다. 같습니다.") << Qt::endl;
    if (copied.journalLeft > 0)
        terminal << QStringLiteral("변경 이력은 끊어져 있어 복사하지 않고 새로 시작했습니다. 원본에 남은 이력: %1건")
                        .arg(korean.toString(copied.journalLeft))
                 << Qt::endl;
}

} // namespace

int copyOnTerminal(ado::Connection &source, const QString &address)
{
    terminal::ProgressLine line(QStringLiteral("복사"));
    Copied copied;
    try {
        copied = copyClinic(source, address, [&](qint64 done, qint64 total) { return line.show(done, total); });
    } catch (const backup::Stopped &) {
        line.leave();
        QTextStream(stderr) << QStringLiteral("중단했습니다. 아무것도 복사하지 않았습니다.") << Qt::endl;
        return 1;
    } catch (...) {
        line.leave();
        throw;
    }
    line.finish(QStringLiteral("복사했습니다"), ado::addressToShow(address));
    tell(copied);
    return 0;
}

} // namespace copy
