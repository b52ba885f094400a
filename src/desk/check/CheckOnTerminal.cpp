#include "desk/check/CheckOnTerminal.h"

#include "desk/check/Examination.h"
#include "desk/check/JournalExamination.h"
#include "platform/ado/ShownAddress.h"

#include <QLocale>
#include <QTextStream>

namespace check {

namespace {

QString grouped(qint64 number)
{
    return QLocale(QLocale::Korean, QLocale::SouthKorea).toString(number);
}

void tell(QTextStream &terminal, const Finding &finding)
{
    const QString indent = QStringLiteral("             ");
    const QString verdict = !finding.failure.isEmpty() ? QStringLiteral("검사 못함  ")
                            : finding.violations == 0  ? QStringLiteral("없음       ")
                                                       : QStringLiteral("발견       ");
    terminal << QStringLiteral("  ") << verdict << finding.query.title;
    if (finding.violations > 0)
        terminal << QStringLiteral(": %1건").arg(grouped(finding.violations));
    terminal << Qt::endl;
    if (!finding.failure.isEmpty())
        terminal << indent << QStringLiteral("검사하지 못했습니다: ") << finding.failure.simplified() << Qt::endl;
    for (const QString &row : finding.firstRows)
        terminal << indent << row << Qt::endl;
    if (finding.violations > finding.firstRows.size() && finding.failure.isEmpty())
        terminal << indent << QStringLiteral("그 밖에 %1건").arg(grouped(finding.violations - finding.firstRows.size()))
                 << Qt::endl;
    if (finding.violations > 0)
        terminal << indent << QStringLiteral("조치: ") << finding.query.remedy << Qt::endl;
}

} // namespace

int checkOnTerminal(ado::Connection &connection)
{
    QTextStream terminal(stdout);
    terminal << QStringLiteral("검사: ") << ado::addressToShow(connection.address()).remove(QStringLiteral("?mode=ro"))
             << Qt::endl;
    int examined = 0;
    int failed = 0;
    int violated = 0;
    const auto take = [&](const Finding &finding) {
        ++examined;
        failed += finding.failure.isEmpty() ? 0 : 1;
        violated += finding.violations > 0 ? 1 : 0;
        tell(terminal, finding);
    };
    if (connection.engine() == ado::Engine::SQLite)
        take(examineFile(connection));
    const SchemaExamination schema = examineSchema(connection);
    take(schema.finding);
    for (const QString &hint : schema.hints)
        terminal << QStringLiteral("  안내       ") << hint << Qt::endl;
    if (!schema.isWhole) {
        terminal << QStringLiteral("테이블이나 항목이 없어 내용은 검사하지 못했습니다.") << Qt::endl;
        return 2;
    }
    for (const Query &query : queries())
        take(examine(connection, query));
    JournalExamination journal(connection);
    for (const Finding &finding : journal.findings())
        take(finding);
    terminal << journal.note() << QStringLiteral("%1개 항목을 검사했습니다. ").arg(examined)
             << (failed > 0     ? QStringLiteral("%1개는 검사하지 못했습니다.").arg(failed)
                 : violated > 0 ? QStringLiteral("%1개에서 문제를 찾았습니다.").arg(violated)
                                : QStringLiteral("문제가 없습니다."))
             << Qt::endl;
    return failed > 0 ? 2 : violated > 0 ? 1 : 0;
}

} // namespace check
