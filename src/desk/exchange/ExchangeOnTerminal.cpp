#include "desk/exchange/Exchange.h"

#include "platform/runtime/RuntimeError.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QTextStream>

namespace exchange {

namespace {

QString grouped(qint64 number)
{
    return QLocale(QLocale::Korean, QLocale::SouthKorea).toString(number);
}

QString counts(const Imported &outcome)
{
    return QStringLiteral("%1: 추가 %2건, 수정 %3건, 그대로 %4건")
        .arg(outcome.what, grouped(outcome.added), grouped(outcome.changed), grouped(outcome.same));
}

QString secondsOf(const QElapsedTimer &since)
{
    return QString::number(double(since.elapsed()) / 1000, 'f', 1);
}

} // namespace

int importOnTerminal(ado::Connection &connection, const QString &file, bool dryRun)
{
    QElapsedTimer since;
    since.start();
    QTextStream terminal(stdout);
    Imported outcome;
    try {
        outcome = importFile(connection, file, dryRun);
    } catch (const runtime::RuntimeError &error) {
        throw error.toldAs(error.number(), file + QStringLiteral(": ") + error.description());
    }
    if (dryRun) {
        for (const QString &line : outcome.told)
            terminal << line << Qt::endl;
        terminal << counts(outcome) << QStringLiteral(" (--dry-run: 저장하지 않았습니다.)") << Qt::endl;
        return 0;
    }
    terminal << QStringLiteral("가져왔습니다 (%1초): ").arg(secondsOf(since)) << file << Qt::endl
             << counts(outcome) << Qt::endl;
    return 0;
}

int exportOnTerminal(ado::Connection &connection, const QString &file)
{
    QElapsedTimer since;
    since.start();
    const qint64 rows = exportProducts(connection, file);
    QTextStream(stdout) << QStringLiteral("물품 %1건을 저장했습니다 (%2초): ").arg(grouped(rows), secondsOf(since))
                        << file << Qt::endl;
    return 0;
}

} // namespace exchange
