#include "desk/copy/Snapshot.h"

#include "desk/backup/CalmMoment.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "platform/runtime/Attempt.h"

namespace copy {

void waitLong(ado::Connection &connection)
{
    if (connection.engine() == ado::Engine::MariaDB)
        schema::run(connection, QStringLiteral("SET SESSION idle_transaction_timeout = 0"));
    else if (connection.engine() != ado::Engine::SQLite)
        schema::run(connection, QStringLiteral("SET LOCAL idle_in_transaction_session_timeout = 0"));
}

Snapshot::Snapshot(ado::Connection &clinic)
    : clinic_(clinic)
{
    const QString unfinished = backup::unfinishedOrdersStatement();
    const auto lookAnew = [&] {
        end();
        begin();
        QStringList orders;
        const QList<QVariantList> rows = schema::rowsOf(clinic_, unfinished);
        for (const QVariantList &row : rows)
            orders << row.value(0).toString();
        return orders;
    };
    try {
        backup::waitForCalm(lookAnew);
    } catch (...) {
        end();
        throw;
    }
}

Snapshot::~Snapshot()
{
    end();
}

void Snapshot::begin()
{
    switch (clinic_.engine()) {
    case ado::Engine::SQLite:
        schema::run(clinic_, QStringLiteral("BEGIN"));
        break;
    case ado::Engine::PostgreSQL:
    case ado::Engine::Odbc:
        schema::run(clinic_, QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"));
        break;
    case ado::Engine::MariaDB:
        schema::run(clinic_, QStringLiteral("SET TRANSACTION ISOLATION LEVEL REPEATABLE READ"));
        schema::run(clinic_, QStringLiteral("START TRANSACTION WITH CONSISTENT SNAPSHOT, READ ONLY"));
        break;
    }
    open_ = true;
    waitLong(clinic_);
}

void Snapshot::end()
{
    if (!open_)
        return;
    open_ = false;
    runtime::Attempt finish; // nothing was written
    finish([&] { schema::run(clinic_, QStringLiteral("COMMIT")); });
}

void Snapshot::demandWhole()
{
    // A session that was made anew in between knows nothing of the reading that was begun.
    if (clinic_.engine() == ado::Engine::SQLite) {
        open_ = false;
        schema::run(clinic_, QStringLiteral("COMMIT"));
        return;
    }
    const bool stands =
        clinic_.engine() == ado::Engine::MariaDB
            ? schema::valueOf(clinic_, QStringLiteral("SELECT @@in_transaction")).toInt() == 1
            : schema::valueOf(clinic_, QStringLiteral("SELECT current_setting('transaction_isolation')")).toString()
                  == QLatin1String("repeatable read");
    if (!stands)
        schema::refuse(QStringLiteral("원본 데이터베이스와의 연결이 끊어져 복사하지 않았습니다. 다시 시도하십시오."));
}

} // namespace copy
