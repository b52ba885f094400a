#include "desk/journal/Seal.h"
#include "desk/undo/OrderBack.h"

#include <QTextStream>

namespace undo {

int orderOnTerminal(ado::Connection &connection, const QString &source, int order)
{
    const LostOrder lost =
        source == QLatin1String("journal") ? orderInJournal(connection, order) : orderInBackup(source, order);
    journal::attend(connection); // who brought it back stands in the journal, too
    const PutBack outcome = putBack(connection, lost);
    QTextStream terminal(stdout);
    const auto value = [&](const char *column) {
        return lost.order().value(QLatin1String(column)).toVariant().toString();
    };
    terminal << QStringLiteral("복원했습니다: 거래번호 %1 · 환자번호 %2 · %3 · 판매 내역 %4건 · 수납 %5건")
                    .arg(QString::number(order), value("Cust_PK"), value("OrdM_Date"), QString::number(outcome.lines),
                         QString::number(outcome.money))
             << Qt::endl;
    for (const QString &notice : outcome.notices)
        terminal << notice << Qt::endl;
    return 0;
}

} // namespace undo
