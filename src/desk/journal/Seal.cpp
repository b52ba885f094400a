#include "desk/journal/Seal.h"

#include "desk/schema/Journal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Statements.h"
#include "platform/ado/Transaction.h"

#include <QCryptographicHash>
#include <QSysInfo>

#include <pwd.h>
#include <unistd.h>

namespace journal {

const char *const SealedColumns =
    "DJ_Place, DJ_Time, DJ_Who, DJ_Action, DJ_Table, DJ_Row, DJ_Order, DJ_Customer, DJ_Old, DJ_New";

namespace {

const QString everyOpenRow = QStringLiteral("DJ_Place IS NULL");

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

/// Rows that follow on the end of the chain.
qint64 sealInFile(ado::Connection &connection, const QString &open)
{
    const QList<QVariantList> rows = schema::rowsOf(
        connection, QStringLiteral("SELECT DJ_PK, %1 FROM t_DeskJournal WHERE %2 ORDER BY DJ_PK LIMIT %3")
                        .arg(QLatin1String(SealedColumns), open, QString::number(schema::SealedAtOnce)));
    const QVariantList last =
        schema::rowsOf(connection, QStringLiteral("SELECT DJ_Place, DJ_Hash FROM t_DeskJournal WHERE DJ_Place IS NOT "
                                                  "NULL ORDER BY DJ_Place DESC LIMIT 1"))
            .value(0);
    qint64 place = last.value(0).toLongLong();
    Part hash = partOf(last.value(1));
    for (const QVariantList &row : rows) {
        std::vector<Part> parts{hash, QByteArray::number(++place)};
        for (qsizetype at = 2; at < row.size(); ++at)
            parts.push_back(partOf(row[at]));
        hash = sealOf(parts);
        schema::run(connection,
                    QStringLiteral("UPDATE t_DeskJournal SET DJ_Place = %1, DJ_Hash = '%2' WHERE DJ_PK = %3")
                        .arg(QString::number(place), QString::fromLatin1(*hash), row[0].toString()));
    }
    return rows.size();
}

/// On a server, which knows its open rows, the condition does not count.
qint64 sealWhere(ado::Connection &connection, const QString &open)
{
    if (schema::dialectOf(connection) == schema::Dialect::PostgreSQL)
        return schema::valueOf(connection, QStringLiteral("SELECT clinic_journal.seal()")).toLongLong();
    if (schema::rowsOf(connection, QStringLiteral("SELECT 1 FROM t_DeskJournal WHERE %1 LIMIT 1").arg(open)).isEmpty())
        return 0;
    ado::Transaction scope(connection);
    connection.holdRow(QStringLiteral("t_DeskSchema"), QStringLiteral("DS_Key"), 1); // begins it
    const qint64 sealed = sealInFile(connection, open);
    scope.commit();
    return sealed;
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
    schema::run(connection, QStringLiteral("CREATE TEMP TRIGGER IF NOT EXISTS journal_who AFTER INSERT ON "
                                           "main.t_DeskJournal WHEN NEW.DJ_Who IS NULL BEGIN UPDATE t_DeskJournal SET "
                                           "DJ_Who = %1 WHERE DJ_PK = NEW.DJ_PK; END")
                                .arg(quoted(whoHere())));
}

qint64 sealSome(ado::Connection &connection)
{
    if (!schema::hasJournal(connection))
        return 0;
    return sealWhere(connection, schema::journalOpenRows(schema::dialectOf(connection)));
}

qint64 sealOpen(ado::Connection &connection)
{
    if (!schema::hasJournal(connection))
        return 0;
    qint64 all = 0;
    for (const QString &open : {schema::journalOpenRows(schema::dialectOf(connection)), everyOpenRow}) {
        for (qint64 sealed = schema::SealedAtOnce; sealed == schema::SealedAtOnce; all += sealed)
            sealed = sealWhere(connection, open);
    }
    return all;
}

bool hasLateRows(ado::Connection &connection)
{
    return connection.engine() == ado::Engine::SQLite && schema::hasJournal(connection)
           && !schema::rowsOf(connection, QStringLiteral("SELECT 1 FROM t_DeskJournal WHERE %1 AND NOT (%2) LIMIT 1")
                                              .arg(everyOpenRow, schema::journalOpenRows(schema::Dialect::SQLite)))
                   .isEmpty();
}

} // namespace journal
