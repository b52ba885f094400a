#include "desk/backup/PostgresBackup.h"

#include "desk/backup/PostgresTool.h"
#include "desk/backup/Refusal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Tables.h"
#include "desk/schema/Version.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlQuery>

namespace backup {

namespace {

// The server keeps names folded.
QString folded(const char *name)
{
    return QString::fromLatin1(name).toLower();
}

/// Counts the tables that the program says it is at.
Listener counter(const QString &beforeTable, const Progress &progress)
{
    if (!progress)
        return {};
    return [=, done = qint64(0)](const QString &line) mutable {
        if (line.contains(beforeTable))
            ++done;
        const auto total = qint64(schema::tablePlans().size());
        return progress(std::min(done, total), total);
    };
}

/// Raises RuntimeError unless the file can be read to its end and holds every table and column.
void demandDump(const QString &file)
{
    try {
        runPostgresTool(QStringLiteral("pg_restore"), {QStringLiteral("--file=") + QProcess::nullDevice(), file});
    } catch (const runtime::RuntimeError &error) {
        refuse(QStringLiteral("손상된 백업 파일입니다: %1\n%2").arg(file, error.description()));
    }
    const QString definitions = QString::fromUtf8(runPostgresTool(
        QStringLiteral("pg_restore"), {QStringLiteral("--schema-only"), QStringLiteral("--file=-"), file}));
    const QString contents =
        QString::fromUtf8(runPostgresTool(QStringLiteral("pg_restore"), {QStringLiteral("--list"), file}));
    for (const schema::TablePlan &table : schema::tablePlans()) {
        const QString name = folded(table.name);
        const auto missing = [&](const QString &what) {
            refuse(QStringLiteral("이 프로그램의 한의원 백업이 아닙니다: %1\n%2").arg(file, what));
        };
        const QRegularExpression definition(QStringLiteral("CREATE TABLE [a-z_]+\\.%1 \\((.*?)\\n\\);").arg(name),
                                            QRegularExpression::DotMatchesEverythingOption);
        const QString columns = definition.match(definitions).captured(1);
        for (const schema::ColumnPlan &column : table.columns) {
            if (!columns.contains(QRegularExpression(QStringLiteral("\\n    %1 ").arg(folded(column.name)))))
                missing(QStringLiteral("%1.%2").arg(QString::fromLatin1(table.name), QString::fromLatin1(column.name)));
        }
        if (!contents.contains(QRegularExpression(QStringLiteral("TABLE DATA [a-z_]+ %1 ").arg(name))))
            missing(QString::fromLatin1(table.name));
    }
}

void dump(const PostgresPlace &place, const QString &target, const Progress &progress)
{
    QStringList arguments{QStringLiteral("--format=custom"),
                          QStringLiteral("--no-password"),
                          QStringLiteral("--verbose"),
                          QStringLiteral("--file=") + target,
                          QStringLiteral("--dbname=") + place.connection,
                          QStringLiteral("--table=t_deskschema")};
    for (const schema::TablePlan &table : schema::tablePlans())
        arguments << QStringLiteral("--table=") + folded(table.name);
    runPostgresTool(QStringLiteral("pg_dump"), arguments, place,
                    counter(QStringLiteral("dumping contents of table"), progress));
}

} // namespace

void dumpPostgresClinic(const QString &address, const QString &target, const Progress &progress)
{
    const ado::ConnectionPtr connection = ado::Connection::open(address);
    if (!schema::hasSchema(*connection))
        refuse(QStringLiteral("필요한 테이블이 없는 데이터베이스입니다."));
    schema::demandNoNewer(*connection);
    dump(PostgresPlace::of(connection->database()), target, progress);
    demandDump(target);
}

bool restorePostgresClinic(const QString &address, const QString &source, const QString &safetyCopy,
                           const Progress &progress)
{
    demandDump(source);
    const ado::ConnectionPtr connection = ado::Connection::open(address);
    const PostgresPlace place = PostgresPlace::of(connection->database());
    const bool wasClinic = schema::hasSchema(*connection);
    schema::demandNoNewer(*connection);
    if (wasClinic)
        dump(place, safetyCopy, {});
    else
        schema::createSchema(*connection); // what stands beside the tables is not in the file
    runPostgresTool(QStringLiteral("pg_restore"),
                    {QStringLiteral("--clean"), QStringLiteral("--if-exists"), QStringLiteral("--single-transaction"),
                     QStringLiteral("--exit-on-error"), QStringLiteral("--no-owner"), QStringLiteral("--no-password"),
                     QStringLiteral("--verbose"), QStringLiteral("--dbname=") + place.connection, source},
                    place, counter(QStringLiteral("processing data for table"), progress));
    // The new tables have no statistics yet, and a desk would feel it.
    for (const schema::TablePlan &table : schema::tablePlans())
        QSqlQuery(connection->database()).exec(QStringLiteral("ANALYZE ") + QString::fromLatin1(table.name));
    return wasClinic;
}

} // namespace backup
