#include "platform/ado/OdbcDriver.h"

#include "platform/ado/MariaDbText.h"

#include <QDate>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

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
        const QByteArray text = value.typeId() == QMetaType::QByteArray ? value.toByteArray()
                                : value.typeId() == QMetaType::QDate    ? value.toDate().toString(Qt::ISODate).toUtf8()
                                                                        : value.toString().toUtf8();
        table.addText(text.constData(), static_cast<std::size_t>(text.size()));
    }
    }
}

/// Whether the server ends a transaction before it runs the statement.
bool isDefinition(const QString &statement)
{
    static const QRegularExpression begins(QStringLiteral("^\\s*(CREATE|ALTER|DROP|RENAME|TRUNCATE|ANALYZE)\\b"),
                                           QRegularExpression::CaseInsensitiveOption);
    return begins.match(statement).hasMatch();
}

bool isDouble(const QSqlField &field)
{
    constexpr int types[]{6 /* float */, 7 /* real */, 8 /* double */};
    return std::ranges::find(types, field.typeID()) != std::end(types);
}

bool isWideText(const QSqlField &field)
{
    constexpr int types[]{1 /* char */, 12 /* varchar */, -1 /* long */, -8 /* wide */, -9, -10};
    return std::ranges::find(types, field.typeID()) != std::end(types);
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
    knowServer();
    const QString asked = server_->completed(database_.databaseName());
    if (asked != database_.databaseName()) {
        database_.close();
        database_.setDatabaseName(asked);
        open();
    }
    try {
        server_->requireFit(database_);
    } catch (const runtime::RuntimeError &) {
        closeSession();
        throw;
    }
    sessionStands();
    for (const QString &statement : server_->beginning)
        run(command() << statement);
}

void OdbcDriver::knowServer()
{
    if (const OdbcServer *const server = OdbcServer::behind(database()))
        server_ = server;
    else
        refuseKind(QStringLiteral("ODBC로는 PostgreSQL이나 MariaDB 서버에만 연결할 수 있습니다."));
}

void OdbcDriver::refuseKind(const QString &kinds)
{
    closeSession();
    throw runtime::RuntimeError(runtime::ErrorNumber::ConnectionLost,
                                QStringLiteral("사용할 수 없는 종류의 데이터베이스 서버입니다. %1\n"
                                               "데이터베이스 주소를 확인하십시오.")
                                    .arg(kinds));
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
    for (const QString &setting : server_->reading)
        QSqlQuery(database()).exec(setting);
    readOtherwise_ = false;
}

void OdbcDriver::requireOurReading(const QString &statement)
{
    // The settings change what these signs do, and nothing else; asking costs a journey to the server.
    if (std::ranges::none_of(server_->readOtherwise, [&](QChar sign) { return statement.contains(sign); }))
        return;
    QSqlQuery settings(database());
    if (!settings.exec(server_->askReading) || !settings.next())
        fail(settings.lastError());
    if (settings.value(0).toInt() == 1)
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
    if (server_->endsTransactions) {
        const bool stands = transactionIsOpen();
        inTransaction_ = inTransaction_ && stands;
        foreign_ = foreign_ && stands;
    }
    refuse(server_->textsAreBytes ? withoutHex(text) : text, error.nativeErrorCode().toLatin1());
}

bool OdbcDriver::answers()
{
    return database().isOpen() && QSqlQuery(database()).exec(QStringLiteral("SELECT 1"));
}

QSqlQuery OdbcDriver::run(const Command &statement)
{
    const QString text = server_->translated(statement.text());
    requireOurReading(text);
    QSqlQuery query(database());
    query.setNumericalPrecisionPolicy(QSql::HighPrecision);
    query.setForwardOnly(true);
    if (!query.exec(text))
        fail(query.lastError());
    if (server_->endsTransactions && inTransaction_ && isDefinition(text))
        begin(); // what follows belongs together again
    return query;
}

CellTable OdbcDriver::read(const Command &select)
{
    QSqlQuery query = run(select);
    const QSqlRecord record = query.record();
    const int columnCount = record.count();
    std::vector<ResultColumn> described;
    std::vector<QSql::NumericalPrecisionPolicy> precision;
    std::vector<bool> mayBeCut;
    for (int column = 0; column < columnCount; ++column) {
        const bool asNumber = server_->cutsDoubles && isDouble(record.field(column));
        precision.push_back(asNumber ? QSql::LowPrecisionDouble : QSql::HighPrecision);
        mayBeCut.push_back(server_->textsAreBytes && isWideText(record.field(column)));
        described.push_back(describeColumn(record.fieldName(column), isNumeric(record.field(column)), select.text()));
    }
    CellTable table(std::move(described));
    while (query.next()) {
        for (int column = 0; column < columnCount; ++column) {
            query.setNumericalPrecisionPolicy(precision[static_cast<std::size_t>(column)]);
            const QVariant value = query.value(column);
            if (mayBeCut[static_cast<std::size_t>(column)] && !value.isNull()) {
                putReadingRight(); // somebody set it past this layer
                refuseOtherReading();
            }
            addCell(table, value);
        }
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
    if (!server_->begin.isEmpty()) {
        inTransaction_ = false;
        run(command() << server_->begin);
    } else if (!session.transaction()) {
        fail(session.lastError());
    }
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
    if (!server_->begin.isEmpty())
        return endBy(done ? server_->commit : server_->rollback);
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

void OdbcDriver::endBy(const QString &statement)
{
    try {
        run(command() << statement);
    } catch (const runtime::RuntimeError &) {
        QSqlQuery(database()).exec(server_->rollback); // or the next statements would go on inside it
        throw;
    }
    if (readOtherwise_)
        putReadingRight();
}

bool OdbcDriver::alive(Asking asking)
{
    if (lost_ || !database().isOpen())
        return false;
    if (asking == Asking::Never)
        return true;
    if (!answers())
        return false;
    foreign_ = transactionIsOpen();
    return true;
}

bool OdbcDriver::transactionIsOpen()
{
    QSqlQuery query(database());
    return query.exec(server_->askTransaction) && query.next() && query.value(0).toInt() == 1;
}

} // namespace ado
