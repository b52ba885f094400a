#include "desk/backup/PostgresBackup.h"

#include "clinic/ChainTables.h"
#include "desk/backup/CalmMoment.h"
#include "desk/backup/PostgresRows.h"
#include "desk/backup/PostgresScript.h"
#include "desk/backup/PostgresTool.h"
#include "desk/backup/ReadyTable.h"
#include "desk/backup/Refusal.h"
#include "desk/files/NewFile.h"
#include "desk/schema/Definitions.h"
#include "desk/schema/Journal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Shape.h"
#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"
#include "desk/schema/Upgrade.h"
#include "desk/schema/Version.h"
#include "platform/ado/ShownAddress.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Log.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

namespace backup {

namespace {

// The server keeps names folded.
QString folded(const char *name)
{
    return QString::fromLatin1(name).toLower();
}

/// In front of a table's name, in the server's spelling.
const QString anySchema = QStringLiteral(R"re((?:"(?:[^"]|"")+"|[^\s".]+)\.)re");

/// Counts the tables that the program says it is at.
Listener counter(const QString &beforeTable, const Progress &progress)
{
    if (!progress)
        return {};
    return [=, done = qint64(0)](const QString &line) mutable {
        if (!beforeTable.isEmpty() && line.contains(beforeTable))
            ++done;
        const auto total = qint64(schema::tablePlans().size());
        return progress(std::min(done, total), total);
    };
}

/// The columns in a table's definition, as the program writes it: one a line, what fills them behind it.
QList<schema::FoundColumn> columnsIn(const QString &definition, const QString &allDefinitions)
{
    QList<schema::FoundColumn> columns;
    const QStringList lines = definition.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QString text = line.trimmed();
        if (text.startsWith(QLatin1String("CONSTRAINT ")))
            continue;
        const QString name = text.section(u' ', 0, 0);
        const QString rest = text.section(u' ', 1);
        const bool filled = rest.contains(QLatin1String(" DEFAULT ")) || rest.contains(QLatin1String(" GENERATED "))
                            || allDefinitions.contains(QStringLiteral("ALTER COLUMN %1 ").arg(name));
        static const QRegularExpression behindType(QStringLiteral(" (?:DEFAULT|NOT NULL|GENERATED|COLLATE)\\b.*|,$"));
        columns << schema::FoundColumn{name, QString(rest).remove(behindType),
                                       rest.contains(QLatin1String(" NOT NULL")), filled};
    }
    return columns;
}

/// Why a file with those definitions and contents is no clinic of this system; empty when it is one.
QString whyForeign(const QString &definitions, const QString &contents)
{
    for (const schema::TablePlan &table : schema::tablePlans()) {
        const QString name = folded(table.name);
        const QRegularExpression definition(QStringLiteral("CREATE TABLE %1%2 \\((.*?)\\n\\);").arg(anySchema, name),
                                            QRegularExpression::DotMatchesEverythingOption);
        const QRegularExpressionMatch found = definition.match(definitions);
        if (!found.hasMatch() || !contents.contains(QRegularExpression(QStringLiteral("TABLE DATA .+ %1 ").arg(name))))
            return QString::fromLatin1(table.name)
                   + (definitions.contains(
                          QRegularExpression(QStringLiteral("CREATE VIEW %1%2 AS").arg(anySchema, name)))
                          ? QStringLiteral(": 테이블이 아닌 뷰")
                          : QStringLiteral(": 없는 테이블"));
        const QString why =
            schema::whyForeign(table, columnsIn(found.captured(1), definitions), schema::Dialect::PostgreSQL);
        if (!why.isEmpty())
            return why;
    }
    return {};
}

QString definitionsIn(const QString &file)
{
    return QString::fromUtf8(runPostgresTool(QStringLiteral("pg_restore"),
                                             {QStringLiteral("--schema-only"), QStringLiteral("--file=-"), file}));
}

/// A trigger that a foreign hand left in a backup would run with the desks' own statements.
void demandKnownTriggers(const QString &source)
{
    static const QRegularExpression acting(QStringLiteral("^CREATE (?:CONSTRAINT TRIGGER|TRIGGER|RULE|POLICY)\\b.*$"),
                                           QRegularExpression::MultilineOption);
    QStringList known;
    for (const schema::JournalTrigger &trigger : schema::journalTriggers(schema::Dialect::PostgreSQL))
        known << schema::plainDefinition(trigger.statement + u';');
    for (const QString &trigger : clinic::chainTriggers(true))
        known << schema::plainDefinition(trigger + u';');
    const QString definitions = definitionsIn(source);
    for (auto found = acting.globalMatch(definitions); found.hasNext();) {
        const QString statement = found.next().captured();
        if (!known.contains(schema::plainDefinition(statement)))
            refuse(QStringLiteral("백업에 다른 프로그램의 트리거가 있어 새 데이터베이스로 복원하지 않았습니다: %1\n%2")
                       .arg(source, statement));
    }
}

/// Raises RuntimeError unless the file can be read to its end and holds every table and column.
void demandDump(const QString &file, const QString &toldAs = {})
{
    try {
        runPostgresTool(QStringLiteral("pg_restore"), {QStringLiteral("--file=") + QProcess::nullDevice(), file});
    } catch (const runtime::RuntimeError &error) {
        refuse(QStringLiteral("손상된 백업 파일입니다: %1\n%2").arg(file, error.description()));
    }
    const QString definitions = definitionsIn(file);
    const QString contents =
        QString::fromUtf8(runPostgresTool(QStringLiteral("pg_restore"), {QStringLiteral("--list"), file}));
    const QString why = whyForeign(definitions, contents);
    if (!why.isEmpty())
        refuse(toldAs.isEmpty()
                   ? QStringLiteral("이 프로그램의 한의원 백업이 아닙니다: %1\n%2").arg(file, why)
                   : QStringLiteral("이 프로그램의 한의원 데이터베이스가 아닙니다: %1\n%2").arg(toldAs, why));
}

const QByteArray SumsBegin = "\nclinic-rows 1\n";
const QByteArray SumsEnd = "\nclinic-rows end\n";

/// Behind what the server's programs read: they go by the places that stand at the file's head.
void carry(const QString &file, const QStringList &rowSums)
{
    QFile dump(file);
    if (!dump.open(QIODevice::Append) || dump.write(SumsBegin + rowSums.join(u'\n').toLatin1() + SumsEnd) < 0
        || !dump.flush())
        refuse(QStringLiteral("파일을 저장하지 못했습니다: %1\n%2").arg(file, dump.errorString()));
}

/// None for a backup of an earlier program.
QStringList rowSumsIn(const QString &file)
{
    QFile dump(file);
    if (!dump.open(QIODevice::ReadOnly) || !dump.seek(std::max<qint64>(0, dump.size() - 4'096)))
        refuse(QStringLiteral("백업 파일을 읽을 수 없습니다: %1\n%2").arg(file, dump.errorString()));
    const QByteArray tail = dump.readAll();
    const qsizetype begin = tail.lastIndexOf(SumsBegin);
    if (begin < 0 || !tail.endsWith(SumsEnd))
        return {};
    const qsizetype from = begin + SumsBegin.size();
    const QStringList sums = QString::fromLatin1(tail.mid(from, tail.size() - SumsEnd.size() - from)).split(u'\n');
    static const QRegularExpression sum(QStringLiteral("^[a-z_]+ \\d+-\\d+$"));
    if (sums.filter(sum).size() != sums.size())
        refuse(QStringLiteral("손상된 백업 파일입니다: ") + file);
    return sums;
}

/// The clinic as one reading of this connection sees it.
void dump(ado::Connection &clinic, const QString &target, const Progress &progress)
{
    const QString unfinished = unfinishedOrdersStatement();
    const QString readOnly = QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
    schema::run(clinic, readOnly);
    waitForCalm([&] {
        schema::run(clinic, QStringLiteral("COMMIT"));
        schema::run(clinic, readOnly);
        QStringList orders;
        const QList<QVariantList> rows = schema::rowsOf(clinic, unfinished);
        for (const QVariantList &row : rows)
            orders << row.value(0).toString();
        return orders;
    });
    // The moment is held by a session that does nothing while the server's program reads, however long that takes.
    schema::run(clinic, QStringLiteral("SET LOCAL idle_in_transaction_session_timeout = 0"));
    const PostgresPlace place = PostgresPlace::of(clinic.address());
    QStringList arguments{QStringLiteral("--format=custom"),
                          QStringLiteral("--no-password"),
                          QStringLiteral("--verbose"),
                          QStringLiteral("--snapshot=")
                              + schema::valueOf(clinic, QStringLiteral("SELECT pg_export_snapshot()")).toString(),
                          QStringLiteral("--file=") + target,
                          QStringLiteral("--dbname=") + place.connection,
                          QStringLiteral("--table=t_deskschema"),
                          QStringLiteral("--table=t_deskjournal")};
    for (const schema::TablePlan &table : schema::tablePlans())
        arguments << QStringLiteral("--table=") + folded(table.name);
    for (const char *table : clinic::chainTables)
        arguments << QStringLiteral("--table=") + QLatin1String(table);
    runPostgresTool(QStringLiteral("pg_dump"), arguments, place,
                    counter(QStringLiteral("dumping contents of table"), progress));
    QStringList rowSums;
    schema::run(clinic, QStringLiteral("SET LOCAL datestyle = 'ISO, YMD'"));
    QStringList tables;
    for (const schema::TablePlan &table : schema::tablePlans())
        tables << folded(table.name);
    if (schema::hasJournal(clinic))
        tables << QStringLiteral("t_deskjournal");
    for (const QString &table : tables)
        rowSums << table + u' ' + schema::valueOf(clinic, rowSumStatement(table)).toString();
    schema::run(clinic, QStringLiteral("COMMIT"));
    carry(target, rowSums);
}

/// 0 for a backup without one.
int versionInDump(const QString &file)
{
    const QString rows = QString::fromUtf8(
        runPostgresTool(QStringLiteral("pg_restore"), {QStringLiteral("--data-only"), QStringLiteral("--file=-"),
                                                       QStringLiteral("--table=t_deskschema"), file}));
    static const QRegularExpression row(QStringLiteral("^COPY \\S+ \\(ds_key, ds_version.*\\n1\\t(\\d+)"),
                                        QRegularExpression::MultilineOption);
    return row.match(rows).captured(1).toInt();
}

/// -1 where there is no clinic.
int generationOf(ado::Connection &connection)
{
    return schema::hasSchema(connection) ? schema::readMark(connection).value_or(schema::Mark{}).generation : -1;
}

/// Beside the backups, where there is room, unless they lie on something that cannot be written.
QString placeForScript(const QString &safetyCopy)
{
    const QFileInfo beside(safetyCopy + QStringLiteral(".sql"));
    return QFileInfo(beside.path()).isWritable() ? beside.filePath()
                                                 : QDir(QDir::tempPath()).filePath(beside.fileName());
}

/// Where the tables lie in a backup; each once, but for the schema that every database has.
QStringList schemasIn(const QString &source)
{
    static const QRegularExpression table(QStringLiteral("^CREATE TABLE (%1)").arg(anySchema),
                                          QRegularExpression::MultilineOption);
    QStringList schemas;
    const QString definitions = definitionsIn(source);
    for (auto found = table.globalMatch(definitions); found.hasNext();)
        schemas << found.next().captured(1).chopped(1);
    schemas.removeDuplicates();
    schemas.removeAll(QStringLiteral("public"));
    return schemas;
}

/// Tables, keys and rights with the rows, in one transaction. The script in between is a file for as long: a pipe that broke
/// would look like its end.
void putClinic(const PostgresPlace &place, const QString &source, const QString &safetyCopy, int version,
               const Progress &progress)
{
    const files::NewFile script(placeForScript(safetyCopy), files::NewFile::Private);
    runPostgresTool(QStringLiteral("pg_restore"),
                    {QStringLiteral("--no-owner"), QStringLiteral("--file=") + script.unfinished(), source}, place,
                    counter(QString(), progress));
    QStringList before{beforeFirstRestore(), schema::journalFunctionStatements().join(QStringLiteral(";\n"))};
    QStringList after{afterFirstRestore(version)};
    if (definitionsIn(source).contains(QLatin1String("EXECUTE FUNCTION clinic_central."))) {
        before << clinic::chainFunctionStatements();
        after << clinic::chainCountAnewStatement(true);
    }
    QStringList behind;
    for (const QString &schema : schemasIn(source)) {
        before << makeRoomIn(schema);
        behind << bringOutOf(schema);
    }
    behind << demandRows(rowSumsIn(source));
    runPostgresTool(QStringLiteral("psql"),
                    {QStringLiteral("--no-psqlrc"), QStringLiteral("--quiet"), QStringLiteral("--echo-queries"),
                     QStringLiteral("--no-password"), QStringLiteral("--set=ON_ERROR_STOP=1"),
                     QStringLiteral("--single-transaction"), QStringLiteral("--dbname=") + place.connection,
                     QStringLiteral("--command"), before.join(QStringLiteral(";\n")),
                     QStringLiteral("--file=") + script.unfinished(), QStringLiteral("--command"),
                     behind.join(QStringLiteral(";\n")), QStringLiteral("--command"),
                     after.join(QStringLiteral(";\n"))},
                    place, counter(QStringLiteral("COPY "), progress), Says::OnAll);
}

/// Where a sum was taken over columns that the server fills by itself, the backup does not hold all that it is of.
RowSums rowSumsFor(const QString &source)
{
    RowSums sums{rowSumsIn(source), {}};
    static const QRegularExpression table(QStringLiteral("CREATE TABLE %1([a-z_]+) \\((.*?)\\n\\);").arg(anySchema),
                                          QRegularExpression::DotMatchesEverythingOption);
    const QString definitions = definitionsIn(source);
    for (auto found = table.globalMatch(definitions); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        if (match.captured(2).contains(QLatin1String(" GENERATED ALWAYS AS (")))
            sums.countOnly << match.captured(1);
    }
    return sums;
}

void putRows(ado::Connection &clinic, const QString &source, const QString &safetyCopy, Scope scope,
             const Progress &progress)
{
    const files::NewFile script(placeForScript(safetyCopy), files::NewFile::Private);
    runPostgresTool(QStringLiteral("pg_restore"),
                    {QStringLiteral("--data-only"), QStringLiteral("--file=") + script.unfinished(), source}, {},
                    counter(QString(), progress));
    replacePostgresRows(clinic, script.unfinished(), source, rowSumsFor(source), scope, progress);
}

/// Which of the clinic's tables the database does not have.
QStringList missingTables(ado::Connection &connection)
{
    QStringList missing;
    for (const schema::TablePlan &table : schema::tablePlans()) {
        const QString there = QStringLiteral("SELECT COUNT(to_regclass('%1'))").arg(folded(table.name));
        if (schema::valueOf(connection, there).toInt() == 0)
            missing << QString::fromLatin1(table.name);
    }
    return missing;
}

void gatherStatistics(ado::Connection &restored)
{
    // A desk would feel it without them; it is restored all the same.
    runtime::Attempt statistics;
    for (const schema::TablePlan &table : schema::tablePlans())
        statistics([&] { restored.Execute(QStringLiteral("ANALYZE ") + QString::fromLatin1(table.name)); });
}

/// Into a database that has none of the tables; whatever else lies there stays.
void restoreAnew(const QString &address, const QString &source, const QString &safetyCopy, int version,
                 const Progress &progress)
{
    demandKnownTriggers(source);
    try {
        putClinic(PostgresPlace::of(address), source, safetyCopy, version, progress);
    } catch (const runtime::RuntimeError &) {
        // What is committed is not called stopped, or failed.
        if (generationOf(*ado::Connection::open(address)) < 0)
            throw;
        runtime::trapped();
    }
    const ado::ConnectionPtr restored = ado::Connection::open(address);
    runtime::Attempt complete; // the rows are there, and the desk says that an upgrade is due
    complete([&] { schema::upgrade(*restored); });
    gatherStatistics(*restored);
}

} // namespace

void dumpPostgresClinic(const QString &address, const QString &target, const Progress &progress)
{
    const ado::ConnectionPtr connection = ado::Connection::open(address);
    if (!schema::hasSchema(*connection))
        refuse(QStringLiteral("필요한 테이블이 없는 데이터베이스입니다."));
    schema::demandNoNewer(*connection);
    dump(*connection, target, progress);
    demandDump(target, ado::addressToShow(address));
}

Restored restorePostgresClinic(const QString &address, const QString &source, const QString &safetyCopy, Scope scope,
                               const Progress &progress)
{
    demandDump(source);
    const int version = versionInDump(source);
    schema::demandNoNewer(version, source);
    const ado::ConnectionPtr connection = ado::Connection::open(address);
    schema::demandNoNewer(*connection);
    const QStringList missing = missingTables(*connection);
    if (missing.size() == qsizetype(schema::tablePlans().size())) {
        restoreAnew(address, source, safetyCopy, version, progress);
        return {};
    }
    demandTables(missing);
    files::NewFile kept(safetyCopy, files::NewFile::Private);
    dump(*connection, kept.unfinished(), {});
    kept.finish();
    const int generation = generationOf(*connection);
    try {
        putRows(*connection, source, safetyCopy, scope, progress);
    } catch (const runtime::RuntimeError &) {
        // A server that went while it said that all is committed has committed it.
        if (generationOf(*ado::Connection::open(address)) <= generation)
            throw;
        runtime::trapped();
    }
    gatherStatistics(*ado::Connection::open(address));
    return {safetyCopy};
}

} // namespace backup
