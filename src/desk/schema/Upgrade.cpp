#include "desk/schema/Upgrade.h"

#include "desk/schema/Definitions.h"
#include "desk/schema/Journal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"
#include "desk/schema/Version.h"
#include "platform/ado/Transaction.h"

#include <QRegularExpression>

namespace schema {

namespace {

using Steps = std::vector<UpgradeStep>;

/// Those of the statements that make functions of that schema whose bodies are not the ones that are found.
QStringList otherFunctions(const QStringList &statements, const QString &schema, const QHash<QString, QString> &found)
{
    const QRegularExpression function(
        QStringLiteral("CREATE OR REPLACE FUNCTION %1\\.(\\w+).*\\$body\\$(.*)\\$body\\$").arg(schema),
        QRegularExpression::DotMatchesEverythingOption);
    QStringList other;
    for (const QString &statement : statements) {
        const QRegularExpressionMatch match = function.match(statement);
        if (match.hasMatch() && found.value(match.captured(1)) != match.captured(2))
            other << statement;
    }
    return other;
}

/// What is missing of the journal, or is other than this program makes it.
void addJournalSteps(ado::Connection &connection, Dialect dialect, Steps &steps)
{
    const bool begins = !hasJournal(connection);
    QStringList due;
    if (begins)
        due << journalTableStatements(dialect);
    if (dialect == Dialect::PostgreSQL) {
        const QHash<QString, QString> found = journalDefinitions(connection);
        const QStringList all = journalFunctionStatements();
        if (found.isEmpty())
            due << all.front();
        due << otherFunctions(all, QStringLiteral("clinic_journal"), found);
    }
    const QHash<QString, QString> found = triggerDefinitions(connection);
    for (const JournalTrigger &trigger : journalTriggers(dialect)) {
        const auto old = found.find((trigger.table + u' ' + trigger.name).toLower());
        if (old != found.end() && *old == plainDefinition(trigger.statement))
            continue;
        if (!begins || trigger.table != QLatin1String("t_DeskJournal"))
            due << QStringLiteral("DROP TRIGGER IF EXISTS ") + trigger.name
                       + (dialect == Dialect::PostgreSQL ? QStringLiteral(" ON ") + trigger.table : QString());
        due << trigger.statement;
    }
    if (begins)
        due << journalBeginStatements(dialect);
    if (!due.isEmpty())
        steps.push_back({begins ? QStringLiteral("변경 이력 시작") : QStringLiteral("변경 이력 보완"), due});
}

void addLikeSteps(ado::Connection &connection, Steps &steps)
{
    const QHash<QString, QString> found = likeDefinitions(connection);
    const QStringList statements = postgresLikeStatements();
    static const QRegularExpression operation(QStringLiteral("^CREATE OPERATOR clinic_like\\.(\\S+)"));
    QStringList due = otherFunctions(statements, QStringLiteral("clinic_like"), found);
    for (const QString &statement : statements) {
        const QRegularExpressionMatch asOperator = operation.match(statement);
        if (asOperator.hasMatch() && !found.contains(asOperator.captured(1)))
            due << statement;
    }
    const QString pathLess = QStringLiteral(
        "SELECT COUNT(*) FROM pg_db_role_setting s JOIN pg_database d ON d.oid = s.setdatabase, unnest(s.setconfig) c "
        "WHERE d.datname = current_database() AND s.setrole = 0 AND starts_with(c, 'search_path=')");
    const QString seen =
        QStringLiteral("SELECT COUNT(*) FROM unnest(current_schemas(false)) s WHERE s = 'clinic_like'");
    if (found.isEmpty())
        due.prepend(statements.front());
    // A path that somebody has set is left alone.
    if (valueOf(connection, pathLess).toInt() == 0 && valueOf(connection, seen).toInt() == 0)
        due << statements.back();
    if (!due.isEmpty())
        steps.push_back({QStringLiteral("LIKE 검색 교체"), due});
}

/// Dates were once compared with a reading of themselves that takes February 30 for itself. A check is only looked at when
/// a row is written, so the kept statement is changed, in the way that the engine's own documentation gives.
void addDateSteps(ado::Connection &connection, Steps &steps)
{
    const QHash<QString, QString> kept = tableStatementsAsKept(connection);
    int edition = valueOf(connection, QStringLiteral("PRAGMA schema_version")).toInt();
    for (const TablePlan &table : tablePlans()) {
        const QString name = QString::fromLatin1(table.name);
        const QString statement = kept.value(name.toLower());
        for (const ColumnPlan &column : table.columns) {
            const QString loose = QStringLiteral("date(%1) IS %1").arg(QString::fromLatin1(column.name));
            const QString strict = QStringLiteral("date(%1, '+0 days') IS %1").arg(QString::fromLatin1(column.name));
            if (column.holds != Holds::Date || !statement.contains(loose))
                continue;
            const int wrong =
                valueOf(connection, QStringLiteral("SELECT COUNT(*) FROM %1 WHERE NOT (%2)").arg(name, strict)).toInt();
            if (wrong > 0)
                refuse(QStringLiteral(
                           "입력할 수 없는 날짜가 있어 업그레이드하지 않았습니다. desk --check로 찾아 수정한 뒤 "
                           "다시 시도하십시오: %1.%2 %3건")
                           .arg(name, QString::fromLatin1(column.name))
                           .arg(wrong));
            steps.push_back({QStringLiteral("날짜 검사 강화: ") + name,
                             {QStringLiteral("PRAGMA writable_schema = ON"),
                              QStringLiteral("UPDATE sqlite_master SET sql = replace(sql, '%1', '%2') WHERE type = "
                                             "'table' AND lower(name) = '%3'")
                                  .arg(loose, QString(strict).replace(u'\'', QStringLiteral("''")), name.toLower()),
                              // Open desks read the definitions anew.
                              QStringLiteral("PRAGMA schema_version = %1").arg(++edition),
                              QStringLiteral("PRAGMA writable_schema = RESET")}});
        }
    }
}

void addIndexSteps(ado::Connection &connection, Steps &steps)
{
    const QHash<QString, QString> found = indexDefinitions(connection);
    for (const IndexPlan &index : indexPlans()) {
        const QString name = QString::fromLatin1(index.name);
        const QString statement = createIndexStatement(index);
        const auto old = found.find(name.toLower());
        if (old == found.end())
            steps.push_back({QStringLiteral("인덱스 추가: ") + name, {statement}});
        else if (*old != plainDefinition(statement))
            steps.push_back(
                {QStringLiteral("인덱스 교체: ") + name, {QStringLiteral("DROP INDEX ") + name, statement}});
    }
}

void addMarkStep(ado::Connection &connection, Dialect dialect, Steps &steps)
{
    const std::optional<Mark> mark = readMark(connection);
    if (mark && mark->version < CurrentVersion)
        steps.push_back({QStringLiteral("데이터베이스 판 기록: %1").arg(CurrentVersion),
                         markStatements(dialect == Dialect::PostgreSQL)});
}

void demandOurs(ado::Connection &connection)
{
    if (!hasSchema(connection))
        refuse(QStringLiteral("필요한 테이블이 없는 데이터베이스입니다."));
    demandNoNewer(connection);
}

void holdAll(ado::Connection &connection)
{
    QStringList tables;
    for (const TablePlan &table : tablePlans())
        tables << QString::fromLatin1(table.name);
    holdTables(connection, tables);
}

} // namespace

std::vector<UpgradeStep> upgradeSteps(ado::Connection &connection)
{
    demandOurs(connection);
    const Dialect dialect = dialectOf(connection);
    Steps steps;
    if (dialect == Dialect::PostgreSQL)
        addLikeSteps(connection, steps);
    else
        addDateSteps(connection, steps);
    addIndexSteps(connection, steps);
    addJournalSteps(connection, dialect, steps);
    for (const QString &statement : lateKeyStatements(connection))
        steps.push_back({QStringLiteral("새 번호 조정"), {statement}});
    addMarkStep(connection, dialect, steps);
    return steps;
}

std::vector<UpgradeStep> upgrade(ado::Connection &connection, const UpgradeProgress &progress)
{
    demandOurs(connection);
    ado::Transaction scope(connection);
    holdAll(connection);
    const Steps steps = upgradeSteps(connection);
    qint64 done = 0;
    for (const UpgradeStep &step : steps) {
        if (progress && !progress(done++, qint64(steps.size())))
            refuse(QStringLiteral("중단했습니다."));
        for (const QString &statement : step.statements)
            run(connection, statement);
    }
    scope.commit();
    return steps;
}

} // namespace schema
