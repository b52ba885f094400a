#include "platform/ado/OdbcDriver.h"

#include "platform/ado/LibpqPatience.h"
#include "platform/ado/PostgresSession.h"

#include <QDate>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>
#include <utility>

namespace ado {

namespace {

// Type numbers of the ODBC interface.
constexpr int odbcNumericTypes[]{-7 /* bit */,    -6 /* tiny */, -5 /* big */,  2 /* numeric */, 3 /* decimal */,
                                 4 /* integer */, 5 /* small */, 6 /* float */, 7 /* real */,    8 /* double */};

void addCell(CellTable &table, const QVariant &value)
{
    switch (value.isNull() ? int{QMetaType::UnknownType} : value.typeId()) {
    case QMetaType::UnknownType:
        return table.addNull();
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
        return table.addInteger(value.toLongLong());
    case QMetaType::Double:
    case QMetaType::Float:
        return table.addReal(value.toDouble());
    default: {
        const QByteArray text =
            (value.typeId() == QMetaType::QDate ? value.toDate().toString(Qt::ISODate) : value.toString()).toUtf8();
        table.addText(text.constData(), static_cast<std::size_t>(text.size()));
    }
    }
}

/// The connection string with what it does not settle itself.
QString withSettingsForPostgres(QString connectionString)
{
    // The driver rolls a whole transaction back on any failed statement unless it is told to set savepoints.
    QStringList patience;
    for (const auto &[name, value] : libpqPatience)
        patience << name + u'=' + value;
    const std::pair<QString, QString> settings[]{
        {QStringLiteral("Protocol="), QStringLiteral("7.4-2")},
        {QStringLiteral("pqopt="), u'{' + patience.join(u' ') + u'}'},
    };
    for (const auto &[name, value] : settings) {
        if (!connectionString.contains(name, Qt::CaseInsensitive))
            connectionString += u';' + name + value;
    }
    return connectionString;
}

bool isNumeric(const QSqlField &field)
{
    return std::ranges::find(odbcNumericTypes, field.typeID()) != std::end(odbcNumericTypes);
}

} // namespace

OdbcDriver::OdbcDriver(const QString &connectionString)
{
    static int serial = 0;
    database_ = QSqlDatabase::addDatabase(QStringLiteral("QODBC"), QStringLiteral("clinic-%1").arg(++serial));
    database_.setDatabaseName(connectionString);
    database_.setConnectOptions(QStringLiteral("SQL_ATTR_LOGIN_TIMEOUT=5"));
    static const LastSessions last; // made after Qt's list of databases
}

OdbcDriver::~OdbcDriver()
{
    OdbcDriver::leave();
}

void OdbcDriver::open()
{
    if (!database_.isValid())
        connectionLost(QStringLiteral("QSqlDatabase: driver not loaded"));
    if (!database_.open())
        connectionLost(database_.lastError().text(), database_.lastError().nativeErrorCode().toLatin1());
}

void OdbcDriver::openSession()
{
    open();
    requirePostgres();
    const QString asked = withSettingsForPostgres(database_.databaseName());
    if (asked != database_.databaseName()) {
        database_.close();
        database_.setDatabaseName(asked);
        open();
    }
    sessionStands();
    run(command() << postgresSession::patience);
    run(command() << postgresSession::likeOperator);
}

void OdbcDriver::requirePostgres()
{
    if (database().driver()->dbmsType() == QSqlDriver::PostgreSQL)
        return;
    closeSession();
    throw runtime::RuntimeError(
        runtime::ErrorNumber::ConnectionLost,
        QStringLiteral(
            "사용할 수 없는 종류의 데이터베이스 서버입니다. ODBC로는 PostgreSQL 서버에만 연결할 수 있습니다.\n"
            "데이터베이스 주소를 확인하십시오."));
}

void OdbcDriver::sessionStands()
{
    lost_ = false;
    inTransaction_ = false;
    putReadingRight();
}

void OdbcDriver::forgetSession()
{
    lost_ = true;
    inTransaction_ = false;
    foreign_ = false;
}

void OdbcDriver::closeSession()
{
    forgetSession();
    database_.close();
}

void OdbcDriver::leave()
{
    const QString name = database_.connectionName();
    if (name.isEmpty())
        return;
    closeSession();
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name);
}

void OdbcDriver::putReadingRight()
{
    for (const QString &setting : postgresSession::readAsTheLayer)
        QSqlQuery(database()).exec(setting);
    readOtherwise_ = false;
}

void OdbcDriver::requireOurReading(const QString &statement)
{
    // The settings change what a backslash does, and nothing else; asking costs a journey to the server.
    if (!statement.contains(u'\\'))
        return;
    QSqlQuery settings(database());
    if (!settings.exec(QStringLiteral("SELECT current_setting('standard_conforming_strings') || ' ' || "
                                      "current_setting('client_encoding')"))
        || !settings.next())
        fail(settings.lastError());
    if (settings.value(0).toString() == QLatin1String("on UTF8"))
        return;
    putReadingRight();
    readOtherwise_ = inTransaction_; // whose rollback would take it back
    refuseOtherReading();
}

void OdbcDriver::fail(const QSqlError &error)
{
    const QString text = error.databaseText();
    // Qt does not hand on the state that would tell a lost connection from a refused statement.
    if (!answers()) {
        forgetSession();
        sessionLost();
    }
    refuse(text, error.nativeErrorCode().toLatin1());
}

bool OdbcDriver::answers()
{
    return database().isOpen() && QSqlQuery(database()).exec(QStringLiteral("SELECT 1"));
}

QSqlQuery OdbcDriver::run(const Command &statement)
{
    requireOurReading(statement.text());
    QSqlQuery query(database());
    query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    query.setForwardOnly(true);
    if (!query.exec(statement.text()))
        fail(query.lastError());
    return query;
}

CellTable OdbcDriver::read(const Command &select)
{
    QSqlQuery query = run(select);
    const QSqlRecord record = query.record();
    const int columnCount = record.count();
    std::vector<ResultColumn> described;
    for (int column = 0; column < columnCount; ++column)
        described.push_back(describeColumn(record.fieldName(column), isNumeric(record.field(column)), select.text()));
    CellTable table(std::move(described));
    while (query.next()) {
        for (int column = 0; column < columnCount; ++column)
            addCell(table, query.value(column));
    }
    if (query.lastError().isValid())
        fail(query.lastError());
    return table;
}

int OdbcDriver::write(const Command &statement)
{
    return run(statement).numRowsAffected();
}

void OdbcDriver::begin()
{
    QSqlDatabase session = database();
    if (!session.transaction())
        fail(session.lastError());
    inTransaction_ = true;
}

void OdbcDriver::commit()
{
    end(true);
}

void OdbcDriver::rollback()
{
    end(false);
}

void OdbcDriver::end(bool done)
{
    inTransaction_ = false;
    QSqlDatabase session = database();
    if (done ? session.commit() : session.rollback()) {
        if (readOtherwise_)
            putReadingRight();
        return;
    }
    const QSqlError error = session.lastError();
    if (done)
        session.rollback(); // or the next statements would go on inside it
    fail(error);
}

bool OdbcDriver::alive(Asking asking)
{
    if (lost_ || !database().isOpen())
        return false;
    if (asking == Asking::Never)
        return true;
    if (!answers())
        return false;
    foreign_ = foreignIsOpen();
    return true;
}

bool OdbcDriver::foreignIsOpen()
{
    QSqlQuery query(database());
    return query.exec(QStringLiteral("SELECT CASE WHEN now() = statement_timestamp() THEN 0 ELSE 1 END"))
           && query.next() && query.value(0).toInt() == 1;
}

} // namespace ado
