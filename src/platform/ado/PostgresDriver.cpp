#include "platform/ado/PostgresDriver.h"

#include "platform/ado/LibpqPatience.h"

#include <QRegularExpression>
#include <QSqlDriver>
#include <QUrl>
#include <QUrlQuery>

#include <libpq-fe.h>

#include <algorithm>

namespace ado {

namespace {

// Type numbers of the server's catalogue, which never change.
constexpr Oid numericTypes[]{16 /* bool */,    20 /* int8 */,    21 /* int2 */, 23 /* int4 */,
                             700 /* float4 */, 701 /* float8 */, 1700 /* numeric */};

QString decoded(const QString &part)
{
    return QUrl::fromPercentEncoding(part.toUtf8());
}

/// A connection option: quoted, since a blank would end it. Qt parts options at every ';', quoted or not.
QString option(const QString &name, QString value)
{
    if (value.contains(u';'))
        throw runtime::RuntimeError(runtime::ErrorNumber::ConnectionLost,
                                    QStringLiteral("데이터베이스 주소의 %1 값에는 ';'을 쓸 수 없습니다.").arg(name));
    value.replace(u'\\', QStringLiteral("\\\\")).replace(u'\'', QStringLiteral("\\'"));
    return QStringLiteral("%1='%2'").arg(name, value);
}

void applyAddress(QSqlDatabase &database, const QString &address)
{
    const QString place = address.section(u'?', 0, 0);
    const QString server = place.section(u'/', 0, 0);
    const QString user = server.contains(u'@') ? server.section(u'@', 0, -2) : QString();
    const QString host = server.section(u'@', -1);
    database.setDatabaseName(decoded(place.section(u'/', 1)));
    database.setUserName(decoded(user.section(u':', 0, 0)));
    database.setPassword(decoded(user.section(u':', 1)));
    static const QRegularExpression hostAndPort(QStringLiteral("^(?:\\[([^]]*)\\]|([^:]*))(?::(\\d+))?"));
    const QRegularExpressionMatch parts = hostAndPort.match(host);
    database.setHostName(decoded(parts.captured(1) + parts.captured(2)));
    if (parts.hasCaptured(3))
        database.setPort(parts.captured(3).toInt());

    QStringList options = libpqPatience; // of two of a name the library takes the later, that is the address's
    for (const auto &[name, value] : QUrlQuery(address.section(u'?', 1)).queryItems(QUrl::FullyDecoded)) {
        if (name == QLatin1String("host"))
            database.setHostName(value);
        else if (name == QLatin1String("port"))
            database.setPort(value.toInt());
        else if (name == QLatin1String("dbname"))
            database.setDatabaseName(value);
        else if (name == QLatin1String("user"))
            database.setUserName(value);
        else if (name == QLatin1String("password"))
            database.setPassword(value);
        else
            options << option(name, value);
    }
    database.setConnectOptions(options.join(u';'));
}

bool isNumeric(Oid type)
{
    return std::ranges::find(numericTypes, type) != std::end(numericTypes);
}

} // namespace

void PostgresDriver::ResultDeleter::operator()(pg_result *result) const
{
    PQclear(result);
}

PostgresDriver::PostgresDriver(const QString &address)
    : Driver(newDatabase(QStringLiteral("QPSQL")))
{
    QSqlDatabase database = this->database();
    applyAddress(database, address);
    database.setNumericalPrecisionPolicy(QSql::HighPrecision);
}

void PostgresDriver::prepareSession()
{
    const QVariant handle = database().driver()->handle();
    // The type's name is the alias or the structure behind it, as the driver was compiled.
    if (qstrcmp(handle.typeName(), "PGconn*") != 0 && qstrcmp(handle.typeName(), "pg_conn*") != 0)
        connectionLost(QStringLiteral("QPSQL: no handle"));
    handle_ = *static_cast<PGconn *const *>(handle.constData());
    ending_ = false;
    PQsetNoticeReceiver(handle_, &PostgresDriver::notice, this);
    run("SET standard_conforming_strings = on"); // literals are read so when a second statement is looked for
    run("SET client_min_messages = warning");
}

PostgresDriver::Result PostgresDriver::run(const Command &statement)
{
    std::vector<QByteArray> texts;
    std::vector<const char *> values;
    for (const QVariant &value : statement.values()) {
        texts.push_back(value.typeId() == QMetaType::Double ? QByteArray::number(value.toDouble(), 'g', 17)
                                                            : value.toString().toUtf8());
    }
    for (const QByteArray &text : texts)
        values.push_back(text.constData());
    const QByteArray text = statement.text().toUtf8();
    Result result(texts.empty() ? PQexec(handle_, text.constData())
                                : PQexecParams(handle_, text.constData(), static_cast<int>(values.size()), nullptr,
                                               values.data(), nullptr, nullptr, 0));
    const ExecStatusType status = PQresultStatus(result.get());
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY)
        return result;
    if (PQstatus(handle_) == CONNECTION_BAD)
        sessionLost();
    refuse(QString::fromUtf8(result ? PQresultErrorMessage(result.get()) : PQerrorMessage(handle_)),
           PQresultErrorField(result.get(), PG_DIAG_SQLSTATE));
}

void PostgresDriver::run(const char *statement)
{
    run(Command(Command::Values::Numbered) << QString::fromLatin1(statement));
}

CellTable PostgresDriver::read(const Command &select)
{
    const Result result = run(select);
    const PGresult *const rows = result.get();
    const int columnCount = PQnfields(rows);
    const int rowCount = PQntuples(rows);
    std::vector<ResultColumn> described;
    for (int column = 0; column < columnCount; ++column)
        described.push_back(
            describeColumn(QString::fromUtf8(PQfname(rows, column)), isNumeric(PQftype(rows, column)), select.text()));
    CellTable table(std::move(described));
    for (int row = 0; row < rowCount; ++row) {
        for (int column = 0; column < columnCount; ++column) {
            if (PQgetisnull(rows, row, column))
                table.addNull();
            else
                table.addText(PQgetvalue(rows, row, column), static_cast<std::size_t>(PQgetlength(rows, row, column)));
        }
    }
    return table;
}

int PostgresDriver::write(const Command &statement)
{
    const Result result = run(statement);
    bool told = false;
    const int rows = QByteArray(PQcmdTuples(result.get())).toInt(&told);
    return told ? rows : -1;
}

void PostgresDriver::begin()
{
    run("BEGIN");
}

void PostgresDriver::commit()
{
    // The server answers a commit of a failed transaction with a rollback and no error.
    const Result result = run(Command(Command::Values::Numbered) << u"COMMIT");
    if (qstrcmp(PQcmdStatus(result.get()), "COMMIT") != 0)
        refuse(QString::fromUtf8(PQcmdStatus(result.get())));
}

void PostgresDriver::rollback()
{
    run("ROLLBACK");
}

bool PostgresDriver::holdsTransaction() const
{
    const PGTransactionStatusType status = PQtransactionStatus(handle_);
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR || status == PQTRANS_ACTIVE;
}

bool PostgresDriver::alive(Asking)
{
    // A server that was stopped has said so and closed the socket, which can be seen without asking it.
    const bool open = PQstatus(handle_) == CONNECTION_OK && PQconsumeInput(handle_) == 1;
    PQisBusy(handle_); // lets notice() see what came in
    return open && !ending_ && PQstatus(handle_) == CONNECTION_OK;
}

void PostgresDriver::notice(void *driver, const pg_result *message)
{
    if (qstrcmp(PQresultErrorField(message, PG_DIAG_SEVERITY_NONLOCALIZED), "FATAL") == 0)
        static_cast<PostgresDriver *>(driver)->ending_ = true;
}

} // namespace ado
