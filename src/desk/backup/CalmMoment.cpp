#include "desk/backup/CalmMoment.h"

#include "desk/backup/Refusal.h"
#include "desk/check/Examination.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

namespace backup {

QString unfinishedOrdersStatement()
{
    QFile file(QStringLiteral(":/check/queries/02-order-total-lines.sql"));
    if (!file.open(QIODevice::ReadOnly))
        refuse(file.fileName());
    return check::readQuery(QString::fromUtf8(file.readAll())).statement;
}

void waitForCalm(const std::function<QStringList()> &lookAnew)
{
    constexpr int patience = 30'000; // milliseconds
    QElapsedTimer sinceStart;
    sinceStart.start();
    QStringList standing = lookAnew();
    for (QStringList found = standing; !found.isEmpty(); found = lookAnew()) {
        standing.removeIf([&](const QString &order) { return !found.contains(order); });
        if (found == standing && sinceStart.hasExpired(check::UsualPause.count()))
            return;
        if (sinceStart.hasExpired(patience))
            refuse(QStringLiteral("데스크가 쉬지 않고 저장하고 있어 백업하지 않았습니다. 잠시 후 다시 시도하십시오."));
        QThread::msleep(20);
    }
}

} // namespace backup
