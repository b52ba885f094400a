#include "desk/copy/CopyClinic.h"

#include "desk/backup/Refusal.h"
#include "desk/copy/CopiedTable.h"
#include "desk/copy/Counters.h"
#include "desk/copy/Rights.h"
#include "desk/copy/Snapshot.h"
#include "desk/files/NewFile.h"
#include "desk/journal/Chain.h"
#include "desk/journal/Seal.h"
#include "desk/rows/BulkInsert.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "platform/ado/ShownAddress.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Attempt.h"

namespace copy {

namespace {

const QString FilePrefix = QStringLiteral("sqlite:");

/// One after the other; each row is written once and read again once.
class Work
{
public:
    Work(ado::Connection &source, ado::Connection &target, const Progress &progress)
        : source_(source)
        , target_(target)
        , progress_(progress)
    {
    }

    Copied run()
    {
        Snapshot moment(source_);
        const std::vector<CopiedTable> tables = clinicTables(source_);
        const bool journal = decideOnJournal();
        for (const CopiedTable &table : tables)
            total_ += 2 * countRows(source_, table);
        if (journal)
            total_ += 2 * countRows(source_, journalTable());
        const QHash<QString, qint64> given = counters(source_);
        schema::createTables(target_);
        for (const CopiedTable &table : tables)
            copy(table);
        schema::createIndexes(target_);
        countOn(target_, given);
        schema::createJournal(target_, [&] {
            if (journal)
                copy(journalTable());
        });
        giveRights(tables);
        moment.demandWhole();
        return outcome_;
    }

private:
    /// Its history goes along while its chain proves it; a broken one would prove nothing there either.
    bool decideOnJournal()
    {
        if (!schema::hasJournal(source_))
            return false;
        const bool whole = journal::walk(source_).brokenAt == 0;
        if (!whole)
            outcome_.journalLeft = countRows(source_, journalTable());
        return whole;
    }

    void giveRights(const std::vector<CopiedTable> &tables)
    {
        QStringList names{QStringLiteral("t_DeskSchema"), journalTable().name};
        for (const CopiedTable &table : tables)
            names << table.name;
        const QStringList statements = rightsFor(source_, target_, names);
        for (const QString &statement : statements)
            schema::run(target_, statement);
    }

    void copy(const CopiedTable &table)
    {
        const qint64 there = countRows(source_, table);
        RowSum sent, arrived;
        rows::BulkInsert insert(target_, table.name, table.columns);
        forEachRow(source_, table, target_.engine(), [&](const QVariantList &row) {
            insert.add(row);
            sent.add(row);
            step();
        });
        insert.finish();
        forEachRow(target_, table, target_.engine(), [&](const QVariantList &row) {
            arrived.add(row);
            step();
        });
        if (sent.rows() != there || !(sent == arrived))
            schema::refuse(QStringLiteral("복사한 내용이 원본과 달라 복사하지 않았습니다: %1 (원본 %2건, 복사 %3건)")
                               .arg(table.name)
                               .arg(there)
                               .arg(arrived.rows()));
        outcome_.tables.push_back({table.name, sent.rows()});
    }

    void step()
    {
        constexpr qint64 between = 500;
        ++done_;
        if (progress_ && (done_ % between == 0 || done_ == total_) && !progress_(done_, total_))
            backup::stop();
    }

    ado::Connection &source_;
    ado::Connection &target_;
    const Progress &progress_;
    Copied outcome_;
    qint64 done_ = 0;
    qint64 total_ = 0;
};

void demandEmpty(ado::Connection &target)
{
    constexpr int shown = 12;
    const QList<QVariantList> there = schema::rowsOf(
        target,
        target.engine() == ado::Engine::MariaDB
            ? QStringLiteral("SELECT table_name FROM information_schema.tables WHERE table_schema = DATABASE() ORDER "
                             "BY 1")
            : QStringLiteral(
                "SELECT CASE n.nspname WHEN 'public' THEN '' ELSE n.nspname || '.' END || c.relname FROM "
                "pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace WHERE c.relkind IN ('r', 'p', 'v', "
                "'m', 'f') AND n.nspname <> 'information_schema' AND NOT starts_with(n.nspname, 'pg_') AND NOT "
                "EXISTS (SELECT FROM pg_depend d WHERE d.classid = 'pg_class'::regclass AND d.objid = c.oid AND "
                "d.deptype = 'e') ORDER BY 1"));
    if (there.isEmpty())
        return;
    QStringList names;
    for (const QVariantList &row : there)
        names << row.value(0).toString();
    const QString more = names.size() > shown ? QStringLiteral(" … (%1개)").arg(names.size()) : QString();
    schema::refuse(
        QStringLiteral("비어 있지 않은 데이터베이스라 복사하지 않았습니다. 빈 데이터베이스를 새로 만들어 "
                       "지정하십시오: %1\n있는 테이블: %2")
            .arg(ado::addressToShow(target.address()), names.mid(0, shown).join(QStringLiteral(", ")) + more));
}

Copied fill(ado::Connection &source, ado::Connection &target, const Progress &progress)
{
    schema::NewTables made(target);
    ado::Transaction scope(target);
    waitLong(target);
    Copied outcome = Work(source, target, progress).run();
    scope.commit();
    made.keep();
    if (journal::hasLateRows(target)) // nobody would find them there
        journal::sealOpen(target);
    return outcome;
}

Copied intoFile(ado::Connection &source, const QString &file, const Progress &progress)
{
    files::NewFile made(file, files::NewFile::Private);
    Copied outcome;
    {
        const ado::ConnectionPtr target = ado::Connection::open(FilePrefix + made.unfinished());
        // Nobody relies on the file before it has its name, so nothing needs to be undone in it.
        target->Execute(QStringLiteral("PRAGMA journal_mode = OFF"));
        outcome = fill(source, *target, progress);
    }
    made.finish();
    return outcome;
}

} // namespace

Copied copyClinic(ado::Connection &source, const QString &address, const Progress &progress)
{
    if (address.startsWith(FilePrefix))
        return intoFile(source, address.mid(FilePrefix.size()), progress);
    const ado::ConnectionPtr target = ado::Connection::open(address);
    demandEmpty(*target);
    const Copied outcome = fill(source, *target, progress);
    const QString analyze =
        target->engine() == ado::Engine::MariaDB ? QStringLiteral("ANALYZE TABLE ") : QStringLiteral("ANALYZE ");
    runtime::Attempt statistics; // a desk would feel it without them; the copy stands all the same
    for (const Copied::Table &table : outcome.tables)
        statistics([&] { target->Execute(analyze + table.name); });
    return outcome;
}

} // namespace copy
