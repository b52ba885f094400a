#include "desk/journal/Seal.h"

#include "desk/schema/Journal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "platform/ado/Transaction.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/RuntimeError.h"

#include <QCryptographicHash>
#include <QSysInfo>

#include <pwd.h>
#include <sqlite3.h>
#include <unistd.h>

namespace journal {

const char *const SealedColumns =
    "DJ_Place, DJ_Time, DJ_Who, DJ_Action, DJ_Table, DJ_Row, DJ_Order, DJ_Customer, DJ_Old, DJ_New";

namespace {

/// desk_seal(hash before, place, ...) in the embedded engine's statements; nothing when it cannot.
void sealInStatement(sqlite3_context *context, int count, sqlite3_value **values)
{
    std::vector<Part> parts;
    for (int at = 0; at < count; ++at) {
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(values[at]));
        parts.push_back(text ? Part(QByteArray(text, sqlite3_value_bytes(values[at]))) : Part());
    }
    const QByteArray seal = sealOf(parts);
    sqlite3_result_text(context, seal.constData(), int(seal.size()), SQLITE_TRANSIENT);
}

/// "machine/user", as far as the system tells.
QString whoHere()
{
    const passwd *const user = getpwuid(geteuid());
    return QSysInfo::machineHostName() + (user ? u'/' + QString::fromLocal8Bit(user->pw_name) : QString());
}

QString quoted(QString text)
{
    return u'\'' + text.replace(u'\'', QStringLiteral("''")) + u'\'';
}

QString sealingTrigger()
{
    return QStringLiteral(
               "CREATE TEMP TRIGGER IF NOT EXISTS journal_seal AFTER INSERT ON main.t_DeskJournal BEGIN "
               "UPDATE t_DeskJournal SET (DJ_Who, DJ_Place, DJ_Hash) = (SELECT %1, last.place + 1, "
               "desk_seal(last.hash, last.place + 1, NEW.DJ_Time, %1, NEW.DJ_Action, NEW.DJ_Table, NEW.DJ_Row, "
               "NEW.DJ_Order, NEW.DJ_Customer, NEW.DJ_Old, NEW.DJ_New) FROM (SELECT DJ_Place AS place, DJ_Hash "
               "AS hash FROM t_DeskJournal WHERE DJ_Place IS NOT NULL UNION ALL SELECT 0, NULL ORDER BY 1 DESC "
               "LIMIT 1) AS last) WHERE DJ_PK = NEW.DJ_PK; END")
        .arg(quoted(whoHere()));
}

} // namespace

Part partOf(const QVariant &value)
{
    return value.isValid() && !value.isNull() ? Part(value.toString().toUtf8()) : Part();
}

QByteArray sealOf(const std::vector<Part> &parts)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const Part &part : parts)
        hash.addData(part ? QByteArray::number(part->size()) + ':' + *part : QByteArray("-"));
    return hash.result().toHex();
}

void attend(ado::Connection &connection)
{
    if (connection.engine() != ado::Engine::SQLite || !schema::hasJournal(connection))
        return;
    auto *handle = static_cast<sqlite3 *>(connection.handle());
    sqlite3_create_function(handle, "desk_seal", -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, sealInStatement,
                            nullptr, nullptr);
    schema::run(connection, sealingTrigger());
    try {
        sealOpen(connection);
    } catch (const runtime::RuntimeError &) {
        runtime::trapped(); // they wait for the next time; a desk must start all the same
    }
}

qint64 sealOpen(ado::Connection &connection)
{
    const QString open = QStringLiteral("SELECT DJ_PK, %1 FROM t_DeskJournal WHERE DJ_Place IS NULL ORDER BY DJ_PK")
                             .arg(QLatin1String(SealedColumns));
    if (schema::rowsOf(connection, open + QStringLiteral(" LIMIT 1")).isEmpty())
        return 0;
    ado::Transaction scope(connection);
    connection.holdRow(QStringLiteral("t_DeskSchema"), QStringLiteral("DS_Key"), 1); // begins it on the embedded engine
    if (schema::dialectOf(connection) == schema::Dialect::PostgreSQL)
        schema::run(connection, QStringLiteral("SELECT pg_advisory_xact_lock(%1)").arg(schema::JournalLock));
    const QVariantList last =
        schema::rowsOf(connection, QStringLiteral("SELECT DJ_Place, DJ_Hash FROM t_DeskJournal WHERE DJ_Place IS NOT "
                                                  "NULL ORDER BY DJ_Place DESC LIMIT 1"))
            .value(0);
    qint64 place = last.value(0).toLongLong();
    Part hash = partOf(last.value(1));
    const QList<QVariantList> rows = schema::rowsOf(connection, open);
    for (const QVariantList &row : rows) {
        std::vector<Part> parts{hash, QByteArray::number(++place)};
        for (qsizetype at = 2; at < row.size(); ++at)
            parts.push_back(partOf(row[at]));
        hash = sealOf(parts);
        schema::run(connection,
                    QStringLiteral("UPDATE t_DeskJournal SET DJ_Place = %1, DJ_Hash = '%2' WHERE DJ_PK = %3")
                        .arg(QString::number(place), QString::fromLatin1(*hash), row[0].toString()));
    }
    scope.commit();
    return rows.size();
}

} // namespace journal
