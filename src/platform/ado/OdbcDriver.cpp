#include "platform/ado/OdbcDriver.h"

#include "platform/ado/LibpqPatience.h"

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
    const std::pair<QString, QString> settings[]{
        {QStringLiteral("Protocol="), QStringLiteral("7.4-2")},
        {QStringLiteral("pqopt="), u'{' + libpqPatience.join(u' ') + u'}'},
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
    : Driver(newDatabase(QStringLiteral("QODBC")))
{
    QSqlDatabase database = this->database();
    database.setDatabaseName(connectionString);
    database.setNumericalPrecisionPolicy(QSql::HighPrecision);
    database.setConnectOptions(QStringLiteral("SQL_ATTR_LOGIN_TIMEOUT=5"));
}

void OdbcDriver::prepareSession()
{
    lost_ = false;
    inTransaction_ = false;
    QSqlDatabase database = this->database();
    if (database.driver()->dbmsType() != QSqlDriver::PostgreSQL)
        return;
    dialect_ = Dialect::PostgreSQL;
    const QString asked = withSettingsForPostgres(database.databaseName());
    if (asked != database.databaseName()) {
        database.close();
        database.setDatabaseName(asked);
        openDatabase();
        return;
    }
    run(command() << u"SET standard_conforming_strings = on");
}

void OdbcDriver::endSession()
{
    lost_ = true;
    inTransaction_ = false;
}

Command OdbcDriver::command() const
{
    return Command(dialect_ == Dialect::SqlServer ? Command::Values::NationalLiteral : Command::Values::Literal);
}

void OdbcDriver::fail(const QSqlError &error)
{
    const QString text = error.databaseText();
    // Qt does not hand on the state that would tell a lost connection from a refused statement.
    lost_ = !answers();
    if (lost_) {
        inTransaction_ = false;
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
    QSqlQuery query(database());
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
    QSqlDatabase database = this->database();
    if (!database.transaction())
        fail(database.lastError());
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
    QSqlDatabase database = this->database();
    if (done ? database.commit() : database.rollback())
        return;
    const QSqlError error = database.lastError();
    if (done)
        database.rollback(); // or the next statements would go on inside it
    fail(error);
}

bool OdbcDriver::alive(Asking asking)
{
    return !lost_ && database().isOpen() && (asking == Asking::Never || answers());
}

} // namespace ado
