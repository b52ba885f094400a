#include "desk/check/Examination.h"

#include "clinic/Examination.h"
#include "platform/runtime/RuntimeError.h"

#include <QSet>
#include <QThread>

#include <algorithm>
#include <utility>

namespace check {

namespace {

/// More than a handful of passing rows is no desk at work.
constexpr qint64 RowsToAskTwice = 10'000;

QString shown(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("(없음)");
    QString text = value.toString();
    // Money comes as 1200.0000 from a server.
    static const QString noFraction = QStringLiteral(".0000");
    if (text.endsWith(noFraction))
        text.chop(noFraction.size());
    return text.isEmpty() ? QStringLiteral("(빈 값)") : text;
}

QString shown(const ado::CellTable &rows, int row)
{
    QStringList cells;
    for (int column = 0; column < rows.columnCount(); ++column)
        cells << rows.columns()[std::size_t(column)].name + u' ' + shown(rows.raw(row, column));
    return cells.join(QStringLiteral(" · "));
}

/// The rows as they are shown, the first ones only beyond RowsToAskTwice; their whole number in the finding.
QStringList ask(ado::Connection &connection, Finding &finding)
{
    finding.violations = 0;
    QStringList lines;
    try {
        const ado::CellTable rows = connection.read(finding.query.statement);
        finding.violations = rows.rowCount();
        for (int row = 0; row < std::min<qint64>(finding.violations, RowsToAskTwice); ++row)
            lines << shown(rows, row);
    } catch (const runtime::RuntimeError &error) {
        finding.failure = error.description();
    }
    return lines;
}

} // namespace

Finding examineFile(ado::Connection &connection)
{
    Finding finding{{QStringLiteral("데이터베이스 파일의 손상"),
                     QStringLiteral("데스크를 모두 닫고 마지막 백업으로 복원하십시오 (desk --restore)."),
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

SchemaExamination examineSchema(ado::Connection &connection)
{
    using Of = clinic::Finding;
    SchemaExamination schema{{{QStringLiteral("판매할 수 없는 테이블이나 항목"),
                               QStringLiteral("없는 것은 desk --upgrade로 더하십시오. 형식과 이름은 테이블을 만든 "
                                              "프로그램의 개발사로 문의하십시오."),
                               QString()},
                              0,
                              {},
                              {}},
                             {}};
    try {
        const std::vector<Of> findings = clinic::examine(connection, clinic::Depth::Whole);
        const QStringList faults = clinic::textsOf(findings, Of::Weight::Fault);
        schema.finding.violations = faults.size();
        schema.finding.firstRows = faults.mid(0, ShownRows);
        schema.hints = clinic::textsOf(findings, Of::Weight::Hint);
        schema.isWhole = std::ranges::none_of(
            findings, [](const Of &one) { return one.kind == Of::Kind::NoTable || one.kind == Of::Kind::NoColumn; });
    } catch (const runtime::RuntimeError &error) {
        schema.finding.failure = error.description();
    }
    return schema;
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
