#include "trials/interleavings/Stage.h"

#include "clinic/Tables.h"
#include "desk/check/Examination.h"
#include "desk/check/JournalExamination.h"
#include "platform/ado/Transaction.h"
#include "tests/faults/Desk.h"
#include "tests/support/PostgresServer.h"

#include <QDir>

#include <sqlite3.h>

#include <algorithm>

namespace trial {

using namespace std::chrono_literals;

namespace {

const QString journalTable = QStringLiteral("t_DeskJournal");

QString folderInMemory()
{
    const QString memory = QStringLiteral("/dev/shm");
    return QDir(memory).exists() ? memory : QDir::tempPath();
}

/// Those that an operation writes to, with their keys.
std::vector<std::pair<QString, QString>> writtenTables()
{
    std::vector<std::pair<QString, QString>> tables{{journalTable, QStringLiteral("DJ_PK")}};
    for (const clinic::Table &table : clinic::tables())
        if (std::string_view(table.name).starts_with("tPS"))
            tables.emplace_back(QString::fromLatin1(table.name), QString::fromLatin1(table.key().name));
    return tables;
}

} // namespace

Stage::Stage(PostgresServer *server)
    : folder_(folderInMemory() + QStringLiteral("/interleavings-XXXXXX"))
{
    address_ = server ? server->postgresAddress(server->createDatabase())
                      : QStringLiteral("sqlite:") + folder_.filePath(QStringLiteral("clinic.db"));
    clinic_ = ado::Connection::open(address_, true);
    fillClinic(*clinic_);
    if (server)
        keepRowsOnServer();
    else
        keepRows();
}

void Stage::keepRows()
{
    clinic_->Execute(QStringLiteral("ATTACH ':memory:' AS kept"));
    QStringList tables{QStringLiteral("sqlite_sequence")};
    for (const auto &[table, key] : writtenTables())
        tables << table;
    for (const QString &table : std::as_const(tables)) {
        // The counters' table cannot be made under its own name.
        const QString copy = QStringLiteral("kept.copy_") + table;
        clinic_->Execute(QStringLiteral("CREATE TABLE %1 AS SELECT * FROM main.%2").arg(copy, table));
        putBack_ << QStringLiteral("DELETE FROM main.%1").arg(table)
                 << QStringLiteral("INSERT INTO main.%1 SELECT * FROM %2").arg(table, copy);
    }
    // The rows are put back past the journal, which is put back with them. The counters last: the rows move them.
    std::rotate(putBack_.begin(), putBack_.begin() + 2, putBack_.end());
    sqlite3_db_config(static_cast<sqlite3 *>(clinic_->handle()), SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
}

void Stage::keepRowsOnServer()
{
    const QString database = clinic_->read(QStringLiteral("SELECT current_database()")).raw(0, 0).toString();
    clinic_->Execute(QStringLiteral("ALTER DATABASE \"%1\" SET deadlock_timeout = '20ms'").arg(database));
    clinic_->Execute(QStringLiteral("SET session_replication_role = replica")); // past the journal
    clinic_->Execute(QStringLiteral("CREATE SCHEMA kept"));
    for (const auto &[table, key] : writtenTables()) {
        const QString copy = QStringLiteral("kept.") + table;
        clinic_->Execute(QStringLiteral("CREATE TABLE %1 AS TABLE public.%2").arg(copy, table));
        putBack_ << QStringLiteral("DELETE FROM public.%1 t WHERE NOT EXISTS (SELECT FROM %2 k WHERE ROW(k.*) IS NOT "
                                   "DISTINCT FROM ROW(t.*))")
                        .arg(table, copy)
                 << QStringLiteral("INSERT INTO public.%1 OVERRIDING SYSTEM VALUE SELECT * FROM %2 k WHERE NOT EXISTS "
                                   "(SELECT FROM public.%1 t WHERE t.%3 = k.%3)")
                        .arg(table, copy, key)
                 << QStringLiteral("SELECT setval(pg_get_serial_sequence('public.%1', '%2'), COALESCE((SELECT MAX(%3) "
                                   "FROM %4), 0) + 1, false)")
                        .arg(table.toLower(), key.toLower(), key, copy);
    }
}

void Stage::putBack()
{
    ado::Transaction transaction(*clinic_);
    for (const QString &statement : std::as_const(putBack_))
        clinic_->Execute(statement);
    transaction.commit();
}

bool Stage::waits(int serverProcess) const
{
    return clinic_
               ->read(QStringLiteral("SELECT COUNT(*) FROM pg_locks WHERE NOT granted AND pid = %1").arg(serverProcess))
               .raw(0, 0)
               .toInt()
           > 0;
}

QStringList Stage::violations() const
{
    QStringList found;
    const auto add = [&](const check::Finding &finding) {
        if (finding.violations > 0 || !finding.failure.isEmpty())
            found << finding.query.title + u' ' + finding.firstRows.value(0) + finding.failure;
    };
    for (const check::Query &query : check::queries())
        add(check::examine(*clinic_, query, 0ms));
    const check::JournalExamination journal(*clinic_, 0ms);
    for (const check::Finding &finding : journal.findings())
        add(finding);
    return found;
}

} // namespace trial
