#include "desk/schema/Upgrade.h"

#include "clinic/Examination.h"
#include "desk/schema/Definitions.h"
#include "desk/schema/Journal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"
#include "desk/schema/Version.h"
#include "platform/ado/Transaction.h"

#include <QRegularExpression>

#include <algorithm>

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

/// The journal's functions name their tables with the schema, which in a clinic's own database may be any.
QStringList journalFunctions(ado::Connection &connection)
{
    QStringList statements = journalFunctionStatements();
    for (const char *table : {"t_DeskJournal", "tPSOrderMaster"}) {
        const QString name = QString::fromLatin1(table);
        const QString schema =
            valueOf(connection, QStringLiteral("SELECT quote_ident(COALESCE((SELECT n.nspname FROM pg_class c JOIN "
                                               "pg_namespace n ON n.oid = c.relnamespace WHERE c.oid = "
                                               "to_regclass('%1')), current_schema()))")
                                    .arg(name))
                .toString();
        statements.replaceInStrings(QStringLiteral("public.") + name, schema + u'.' + name);
    }
    return statements;
}

/// The journal's indexes that are not as this program makes them.
QStringList otherJournalIndexes(ado::Connection &connection, Dialect dialect)
{
    static const QRegularExpression index(QStringLiteral("^CREATE (?:UNIQUE )?INDEX (\\w+)"));
    QHash<QString, QString> found = indexDefinitions(connection);
    QStringList due;
    const QStringList statements = journalTableStatements(dialect);
    for (const QString &statement : statements) {
        const QString name = index.match(statement).captured(1);
        if (!name.isEmpty() && found.take(name.toLower()) != plainDefinition(statement))
            due << QStringLiteral("DROP INDEX IF EXISTS ") + name << statement;
    }
    // A file's writers once kept one that they do without.
    if (const QString earlier = QStringLiteral("ixJournalOpen");
        found.contains(earlier.toLower()) && dialect != Dialect::PostgreSQL)
        due << QStringLiteral("DROP INDEX ") + earlier;
    return due;
}

/// What is missing of the journal, or is other than this program makes it. Views take no triggers of its kind.
void addJournalSteps(ado::Connection &connection, const clinic::Catalogue &catalogue, Dialect dialect, Steps &steps)
{
    for (const JournalPlan &plan : journalPlans()) {
        if (const clinic::FoundTable *const table = catalogue.table(QString::fromLatin1(plan.table));
            table && table->isView)
            return;
    }
    const bool begins = !hasJournal(connection);
    QStringList due;
    due << (begins ? journalTableStatements(dialect) : otherJournalIndexes(connection, dialect));
    if (dialect == Dialect::PostgreSQL) {
        const QHash<QString, QString> found = journalDefinitions(connection);
        const QStringList all = journalFunctions(connection);
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
    else if (dialect == Dialect::PostgreSQL && journalDefinitions(connection).contains(QStringLiteral("add")))
        due << QStringLiteral("DROP FUNCTION clinic_journal.add"); // which sealed while it wrote
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
    if (found.isEmpty())
        due.prepend(statements.front());
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

/// The definition without its own name.
QString withoutName(const QString &plain, const QString &name)
{
    return QString(plain).replace(QStringLiteral("index") + name.toLower() + QStringLiteral("on"),
                                  QStringLiteral("indexon"));
}

/// An index that does the same under another name is none that is missing.
void addIndexSteps(ado::Connection &connection, const clinic::Catalogue &catalogue, Dialect dialect, Steps &steps)
{
    const QHash<QString, QString> found = indexDefinitions(connection);
    QStringList bodies;
    for (auto one = found.begin(); one != found.end(); ++one)
        bodies << withoutName(*one, one.key());
    for (const IndexPlan &index : indexPlans()) {
        const QString name = QString::fromLatin1(index.name);
        const QString statement = createIndexStatement(index, dialect);
        const clinic::FoundTable *const table = catalogue.table(QString::fromLatin1(index.table));
        const auto old = found.find(name.toLower());
        if (table && table->isView)
            continue;
        if (old != found.end() && *old != plainDefinition(statement))
            steps.push_back({QStringLiteral("인덱스 교체: ") + name, {dropIndexStatement(index, dialect), statement}});
        else if (old == found.end() && !bodies.contains(withoutName(plainDefinition(statement), name)))
            steps.push_back({QStringLiteral("인덱스 추가: ") + name, {statement}});
    }
}

/// The component's own tables; those of the clinic's program are its own affair.
bool mayBeMade(const TablePlan &table)
{
    return qstrcmp(table.name, "Customer") != 0 && qstrcmp(table.name, "Receipt") != 0;
}

/// What is missing of the tables, where it can be added without a word about rows that are there.
void addTableSteps(const clinic::Catalogue &catalogue, Dialect dialect, Steps &steps)
{
    for (const TablePlan &plan : tablePlans()) {
        const QString name = QString::fromLatin1(plan.name);
        const clinic::FoundTable *const table = catalogue.table(name);
        if (!mayBeMade(plan) || (table && table->isView))
            continue;
        if (!table) {
            steps.push_back({QStringLiteral("테이블 추가: ") + name, {createTableStatement(plan, dialect)}});
            continue;
        }
        for (const ColumnPlan &column : plan.columns) {
            const QString columnName = QString::fromLatin1(column.name);
            if (!column.own && !column.required && &column != &plan.key() && !table->column(columnName))
                steps.push_back({QStringLiteral("항목 추가: %1.%2").arg(name, columnName),
                                 {addColumnStatement(plan, column, dialect)}});
        }
    }
}

/// What no statement of an upgrade mends stands in its way, by name.
void demandMendable(ado::Connection &connection, const Steps &steps)
{
    QStringList faults;
    for (const clinic::Finding &finding : clinic::examine(connection, clinic::Depth::ToSell)) {
        const QString about = finding.what.section(QStringLiteral(": "), -1);
        const bool mended = finding.kind == clinic::Finding::Kind::LateCounter
                            || std::ranges::any_of(steps, [&](const UpgradeStep &step) {
                                   return step.what.section(QStringLiteral(": "), -1) == about;
                               });
        if (finding.weight == clinic::Finding::Weight::Fault && !mended)
            faults << finding.what;
    }
    if (!faults.isEmpty())
        refuse(QStringLiteral("업그레이드로 고칠 수 없는 데이터베이스입니다. 바뀐 것은 없습니다.\n")
               + faults.join(u'\n'));
}

void addMarkStep(ado::Connection &connection, Dialect dialect, Steps &steps)
{
    const std::optional<Mark> mark = readMark(connection);
    if (mark && mark->version < CurrentVersion)
        steps.push_back({QStringLiteral("데이터베이스 판 기록: %1").arg(CurrentVersion), markStatements(dialect)});
}

void addLockStep(ado::Connection &connection, Dialect dialect, Steps &steps)
{
    if (dialect != Dialect::PostgreSQL)
        refuse(QStringLiteral("--lock-down은 PostgreSQL 서버에서만 쓸 수 있습니다. 바뀐 것은 없습니다."));
    const QString open =
        QStringLiteral("SELECT (has_database_privilege('public', current_database(), 'CONNECT, TEMP') OR "
                       "has_schema_privilege('public', current_schema(), 'USAGE, CREATE'))::int");
    if (valueOf(connection, open).toInt() == 0)
        return;
    steps.push_back({QStringLiteral("권한을 받지 않은 역할의 접속 차단"),
                     {QStringLiteral("DO $body$ BEGIN EXECUTE format('REVOKE ALL ON DATABASE %I FROM PUBLIC', "
                                     "current_database()); END $body$"),
                      QStringLiteral("DO $body$ BEGIN EXECUTE format('REVOKE ALL ON SCHEMA %I FROM PUBLIC', "
                                     "current_schema()); END $body$")}});
}

void demandOurs(ado::Connection &connection)
{
    if (!clinic::readCatalogue(connection, {QStringLiteral("Customer")}).table(QStringLiteral("Customer")))
        refuse(QStringLiteral("필요한 테이블이 없는 데이터베이스입니다: Customer"));
    demandNoNewer(connection);
}

void holdAll(ado::Connection &connection)
{
    const clinic::Catalogue catalogue = foundTables(connection);
    QStringList tables;
    for (const TablePlan &table : tablePlans()) {
        if (catalogue.table(QString::fromLatin1(table.name)))
            tables << QString::fromLatin1(table.name);
    }
    holdTables(connection, tables);
}

} // namespace

std::vector<UpgradeStep> upgradeSteps(ado::Connection &connection, Doors doors)
{
    demandOurs(connection);
    const Dialect dialect = dialectOf(connection);
    const clinic::Catalogue catalogue = foundTables(connection);
    Steps steps;
    addTableSteps(catalogue, dialect, steps);
    demandMendable(connection, steps);
    if (dialect == Dialect::PostgreSQL)
        addLikeSteps(connection, steps);
    else if (dialect == Dialect::SQLite)
        addDateSteps(connection, steps);
    addIndexSteps(connection, catalogue, dialect, steps);
    if (dialect != Dialect::MariaDB)
        addJournalSteps(connection, catalogue, dialect, steps);
    for (const QString &statement : lateKeyStatements(connection, mayBeMade))
        steps.push_back({QStringLiteral("새 번호 조정"), {statement}});
    addMarkStep(connection, dialect, steps);
    if (doors == Doors::Locked)
        addLockStep(connection, dialect, steps);
    return steps;
}

std::vector<UpgradeStep> upgrade(ado::Connection &connection, const UpgradeProgress &progress, Doors doors)
{
    demandOurs(connection);
    ado::Transaction scope(connection);
    holdAll(connection);
    const Steps steps = upgradeSteps(connection, doors);
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
