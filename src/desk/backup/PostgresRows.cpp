#include "desk/backup/PostgresRows.h"

#include "desk/backup/DumpScript.h"
#include "desk/backup/PostgresScript.h"
#include "desk/backup/ReadyTable.h"
#include "desk/backup/Refusal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "desk/schema/Tables.h"
#include "platform/ado/Transaction.h"

#include <QFile>
#include <QHash>

#include <libpq-fe.h>

#include <algorithm>
#include <memory>

namespace backup {

namespace {

QString stagedName(const QString &table)
{
    return QStringLiteral("staged_") + table;
}

/// Rows on their way into a table, in the server's own form.
class RowsIn
{
public:
    RowsIn(ado::Connection &connection, const QString &statement)
        : session_(static_cast<PGconn *>(connection.handle()))
    {
        const Result begun(PQexec(session_, statement.toUtf8().constData()), &PQclear);
        if (PQresultStatus(begun.get()) != PGRES_COPY_IN)
            fail();
    }
    ~RowsIn()
    {
        if (open_)
            PQputCopyEnd(session_, "stopped");
        drain();
    }
    RowsIn(const RowsIn &) = delete;
    RowsIn &operator=(const RowsIn &) = delete;

    void add(const QByteArray &line)
    {
        if (PQputCopyData(session_, line.constData(), int(line.size())) != 1)
            fail();
    }
    void finish()
    {
        open_ = false;
        if (PQputCopyEnd(session_, nullptr) != 1)
            fail();
        const Result ended(PQgetResult(session_), &PQclear);
        if (PQresultStatus(ended.get()) != PGRES_COMMAND_OK)
            fail();
    }

private:
    using Result = std::unique_ptr<PGresult, decltype(&PQclear)>;

    [[noreturn]] void fail()
    {
        open_ = false;
        refuse(QStringLiteral("백업의 내용을 서버로 보내지 못했습니다.\n%1")
                   .arg(QString::fromUtf8(PQerrorMessage(session_))));
    }
    void drain()
    {
        for (Result left(PQgetResult(session_), &PQclear); left; left.reset(PQgetResult(session_))) {
            if (PQresultStatus(left.get()) == PGRES_COPY_IN)
                break; // a session that takes nothing any more
        }
    }

    PGconn *const session_;
    bool open_ = true;
};

/// The backup's rows in tables of this session, as the texts that they are in the backup: so they are the same whatever the
/// clinic's types, and their sums are those that were taken of them.
class Stage
{
public:
    Stage(ado::Connection &clinic, const QStringList &wanted, const Progress &progress)
        : clinic_(clinic)
        , wanted_(wanted)
        , progress_(progress)
    {
    }

    void fill(const QString &script)
    {
        QFile file(script);
        if (!file.open(QIODevice::ReadOnly))
            refuse(QStringLiteral("파일을 읽을 수 없습니다: %1\n%2").arg(script, file.errorString()));
        readScript(file,
                   {.begin = [this](const QString &table, const QStringList &columns) { return begin(table, columns); },
                    .row =
                        [this, &file](const QByteArray &line) {
                            rows_->add(line);
                            tell(file.pos(), file.size());
                        },
                    .end =
                        [this] {
                            rows_->finish();
                            rows_.reset();
                        },
                    .counter = [this](const QString &counter, qint64 next) { next_.insert(counter, next); }});
    }

    const QHash<QString, QStringList> &columns() const { return columns_; }
    qint64 nextKey(const QString &counter) const { return next_.value(counter); }

private:
    bool begin(const QString &table, const QStringList &columns)
    {
        if (!wanted_.contains(table))
            return false;
        QStringList defined, names;
        for (const QString &column : columns) {
            names << quotedName(column);
            defined << quotedName(column) + QStringLiteral(" text");
        }
        schema::run(clinic_, QStringLiteral("CREATE TEMP TABLE %1 (%2) ON COMMIT DROP")
                                 .arg(stagedName(table), defined.join(QStringLiteral(", "))));
        columns_.insert(table, columns);
        rows_ = std::make_unique<RowsIn>(
            clinic_,
            QStringLiteral("COPY %1 (%2) FROM STDIN").arg(stagedName(table), names.join(QStringLiteral(", "))));
        return true;
    }

    void tell(qint64 at, qint64 size)
    {
        constexpr qint64 between = 1 << 20;
        if (at - told_ < between)
            return;
        told_ = at;
        if (progress_ && !progress_(at, 2 * size))
            stop();
    }

    ado::Connection &clinic_;
    const QStringList &wanted_;
    const Progress &progress_;
    QHash<QString, QStringList> columns_; ///< by table
    QHash<QString, qint64> next_;
    std::unique_ptr<RowsIn> rows_;
    qint64 told_ = 0;
};

/// The table's columns in which a statement may write.
QList<QVariantList> columnsOf(ado::Connection &clinic, const QString &table)
{
    return schema::rowsOf(
        clinic,
        QStringLiteral("SELECT a.attname::text, format('%I.%I', n.nspname, t.typname), format_type(a.atttypid, "
                       "a.atttypmod) FROM pg_attribute a JOIN pg_type t ON t.oid = a.atttypid JOIN pg_namespace n "
                       "ON n.oid = t.typnamespace WHERE a.attrelid = '%1'::regclass AND a.attnum > 0 AND NOT "
                       "a.attisdropped AND a.attgenerated = '' ORDER BY a.attnum")
            .replace(QStringLiteral("%1"), table));
}

/// The staged rows in the clinic's types. What is known is not cut to the clinic's length or scale: a value that would not
/// come back whole is told.
ReadyTable makeReady(ado::Connection &clinic, const QString &name, const QStringList &kept)
{
    const QString table = name.toLower(), ready = QStringLiteral("ready_") + table;
    const QList<QVariantList> found = columnsOf(clinic, table);
    QStringList here;
    for (const QVariantList &column : found)
        here << column[0].toString();
    const ReadyTable made = readyTable(name, ready, here, kept);
    QStringList typed;
    for (const QVariantList &column : found) {
        const QString own = quotedName(column[0].toString());
        const bool ours = made.ours.contains(own);
        if (ours || made.theirs.contains(own))
            typed << QStringLiteral("%1::%2 AS %1").arg(own, column[ours ? 1 : 2].toString());
    }
    schema::run(clinic, QStringLiteral("ANALYZE ") + stagedName(table));
    schema::run(clinic, QStringLiteral("CREATE TEMP VIEW %1 AS SELECT %2 FROM %3")
                            .arg(ready, typed.join(QStringLiteral(", ")), stagedName(table)));
    return made;
}

void demandSums(ado::Connection &clinic, const QStringList &staged, const RowSums &sums)
{
    for (const QString &line : sums.sums) {
        const QString table = line.section(u' ', 0, 0), sum = line.section(u' ', 1);
        if (!staged.contains(table))
            continue;
        const bool count = sums.countOnly.contains(table);
        const QString found = schema::valueOf(clinic, rowSumStatement(stagedName(table))).toString();
        if (count ? found.section(u'-', 0, 0) != sum.section(u'-', 0, 0) : found != sum)
            refuse(QStringLiteral("백업한 뒤에 바뀌었거나 손상된 백업 파일입니다: ") + line);
    }
}

/// A key that either has given is not given again.
void countOn(ado::Connection &clinic, const std::vector<ReadyTable> &tables, const Stage &stage)
{
    schema::continueKeys(clinic);
    for (const ReadyTable &table : tables) {
        const QString name = table.name.toLower(), key = QString(table.key).remove(u'"');
        const qint64 next = key.isEmpty() ? 0 : stage.nextKey(name + u'_' + key + QStringLiteral("_seq"));
        const QString counter =
            next == 0
                ? QString()
                : schema::valueOf(clinic, QStringLiteral("SELECT pg_get_serial_sequence('%1', '%2')").arg(name, key))
                      .toString();
        if (!counter.isEmpty())
            schema::run(clinic, QStringLiteral("SELECT setval('%1', %2, false) FROM %1 WHERE last_value + CASE WHEN "
                                               "is_called THEN 1 ELSE 0 END < %2")
                                    .arg(counter)
                                    .arg(next));
    }
}

} // namespace

void replacePostgresRows(ado::Connection &clinic, const QString &script, const QString &file, const RowSums &sums,
                         Scope scope, const Progress &progress)
{
    QStringList names;
    for (const char *name : tablesOf(scope))
        names << QString::fromLatin1(name);
    QStringList wanted;
    for (const QString &name : std::as_const(names))
        wanted << name.toLower();
    ado::Transaction transaction(clinic);
    schema::run(clinic, QStringLiteral("SET LOCAL idle_in_transaction_session_timeout = 0"));
    schema::run(clinic, QStringLiteral("SET LOCAL datestyle = 'ISO, YMD'"));
    Stage stage(clinic, wanted, progress);
    stage.fill(script);
    demandSums(clinic, stage.columns().keys(), sums);
    std::vector<ReadyTable> tables;
    for (const QString &name : std::as_const(names)) {
        if (!stage.columns().contains(name.toLower()))
            refuse(QStringLiteral("백업에 없는 테이블: ") + name);
        tables.push_back(makeReady(clinic, name, stage.columns().value(name.toLower())));
    }
    // Only now desks have to wait.
    schema::holdTables(clinic, names);
    noteRestore(clinic, file);
    const Progress second = [&](qint64 done, qint64 total) { return !progress || progress(total + done, 2 * total); };
    replaceRows(clinic, tables, second);
    countOn(clinic, tables, stage);
    transaction.commit();
}

} // namespace backup
