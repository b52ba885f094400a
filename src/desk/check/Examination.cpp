#include "desk/check/Examination.h"

#include <QDate>
#include <QSet>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QThread>

#include <utility>

namespace check {

namespace {

/// More than a handful of passing rows is no desk at work.
constexpr qint64 RowsToAskTwice = 10'000;

QString shown(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("(없음)");
    if (value.typeId() == QMetaType::QDate)
        return value.toDate().toString(Qt::ISODate);
    QString text = value.toString();
    // Money comes as 1200.0000 from a server.
    static const QString noFraction = QStringLiteral(".0000");
    if (text.endsWith(noFraction))
        text.chop(noFraction.size());
    return text.isEmpty() ? QStringLiteral("(빈 값)") : text;
}

QString shown(const QSqlRecord &row)
{
    QStringList cells;
    for (int column = 0; column < row.count(); ++column)
        cells << row.fieldName(column) + u' ' + shown(row.value(column));
    return cells.join(QStringLiteral(" · "));
}

/// The rows as they are shown, the first ones only beyond RowsToAskTwice; their whole number in the finding.
QStringList ask(ado::Connection &connection, Finding &finding)
{
    QSqlQuery query(connection.database());
    query.setForwardOnly(true);
    query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    finding.violations = 0;
    QStringList rows;
    if (!query.exec(finding.query.statement)) {
        finding.failure = query.lastError().text();
        return rows;
    }
    while (query.next()) {
        if (++finding.violations <= RowsToAskTwice)
            rows << shown(query.record());
    }
    if (query.lastError().isValid())
        finding.failure = query.lastError().text();
    return rows;
}

} // namespace

Finding examineFile(ado::Connection &connection)
{
    Finding finding{{QStringLiteral("데이터베이스 파일의 손상"),
                     QStringLiteral("데스크를 모두 닫고 마지막 백업을 되돌리십시오 (desk --restore)."),
                     QStringLiteral("PRAGMA integrity_check")},
                    0,
                    {},
                    {}};
    if (connection.engine() != ado::Engine::SQLite)
        return finding;
    const QString sound = QStringLiteral("integrity_check ok");
    QStringList rows = ask(connection, finding);
    if (rows == QStringList{sound}) {
        finding.violations = 0;
        return finding;
    }
    // A file too damaged to be asked is damaged, too.
    if (!finding.failure.isEmpty()) {
        rows << std::exchange(finding.failure, {});
        finding.violations = rows.size();
    }
    finding.firstRows = rows.mid(0, ShownRows);
    return finding;
}

Finding examine(ado::Connection &connection, const Query &query, std::chrono::milliseconds pause)
{
    Finding finding{query, 0, {}, {}};
    QStringList rows = ask(connection, finding);
    if (finding.violations > 0 && finding.violations <= RowsToAskTwice && pause.count() > 0) {
        const QSet<QString> before(rows.begin(), rows.end());
        QThread::msleep(static_cast<unsigned long>(pause.count()));
        rows = ask(connection, finding);
        rows.removeIf([&](const QString &row) { return !before.contains(row); });
        finding.violations = rows.size();
    }
    finding.firstRows = rows.mid(0, ShownRows);
    return finding;
}

} // namespace check
