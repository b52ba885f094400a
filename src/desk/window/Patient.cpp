#include "desk/window/Patient.h"

#include "clinic/Catalogue.h"
#include "platform/runtime/Attempt.h"

namespace desk {

namespace {

enum class Field { Key, Name, ChartNumber, Sex, Birth, ZipCode, Address, Phone, Cell, Vip };

const char *const columnNames[]{"Customer_PK", "name",    "sn",    "sex",  "birth",
                                "zipcode",     "address", "phone", "cell", "vip"};

const QString tableName = QStringLiteral("Customer");

/// As a clinic has them that the desk has made.
QString allColumns()
{
    QStringList names;
    for (const char *column : columnNames)
        names << QString::fromLatin1(column);
    return names.join(QStringLiteral(", "));
}

/// As they are there: a clinic's own table need not have more than the sale reads.
QString columnsOf(const ado::Connection &connection)
{
    const clinic::Catalogue catalogue = clinic::readCatalogue(connection, {tableName});
    const clinic::FoundTable *const found = catalogue.table(tableName);
    QStringList names;
    for (const char *column : columnNames) {
        const QString name = QString::fromLatin1(column);
        names << (!found || found->column(name) ? name : QStringLiteral("NULL AS ") + name);
    }
    return names.join(QStringLiteral(", "));
}

/// The order is the recordset's own, so that a patient stands at the same place on all servers.
QString selectOf(const QString &columns, const QString &condition)
{
    return QStringLiteral("SELECT %1 FROM Customer%2 ORDER BY name, sn, Customer_PK").arg(columns, condition);
}

/// A server far away is not waited for twice.
void tellRows(ado::Foresight &next, const ado::Connection &connection, const QString &condition)
{
    clinic::foreseeCatalogue(next, connection, {tableName});
    next.open(selectOf(allColumns(), condition), ado::CursorType::Static);
}

std::unique_ptr<ado::Recordset> rowsWhere(const ado::ConnectionPtr &connection, const QString &condition)
{
    auto rows = std::make_unique<ado::Recordset>();
    try {
        ado::Foresight next(connection);
        tellRows(next, *connection, condition);
        rows->Open(selectOf(columnsOf(*connection), condition), connection, ado::CursorType::Static,
                   ado::LockType::ReadOnly);
    } catch (const runtime::RuntimeError &error) {
        throw error.toldAs(error.number(), QStringLiteral("환자 목록을 가져오지 못했습니다.\n") + error.description());
    }
    return rows;
}

/// One figure that nobody can read must not keep the patient from being found.
QVariant valueOf(const ado::Recordset &rows, int row, Field field)
{
    QVariant read;
    runtime::Attempt attempt(runtime::Attempt::Failure::IsAnswer);
    attempt([&] { read = rows.valueAt(row, int(field)); });
    return read;
}

QString textOf(const ado::Recordset &rows, int row, Field field)
{
    return valueOf(rows, row, field).toString();
}

Patient soughtPatientAt(const ado::Recordset &rows, int row)
{
    Patient patient;
    patient.name = textOf(rows, row, Field::Name);
    patient.chartNumber = textOf(rows, row, Field::ChartNumber);
    patient.phone = textOf(rows, row, Field::Phone);
    patient.cell = textOf(rows, row, Field::Cell);
    return patient;
}

Patient patientAt(const ado::Recordset &rows, int row)
{
    Patient patient = soughtPatientAt(rows, row);
    patient.key = valueOf(rows, row, Field::Key).toInt();
    patient.male = valueOf(rows, row, Field::Sex).toBool();
    patient.birth = valueOf(rows, row, Field::Birth).toDate();
    patient.zipCode = textOf(rows, row, Field::ZipCode);
    patient.address = textOf(rows, row, Field::Address);
    patient.vip = textOf(rows, row, Field::Vip);
    return patient;
}

} // namespace

PatientFile::PatientFile(const ado::ConnectionPtr &connection)
    : rows_(rowsWhere(connection, {}))
{
}

ado::Foresight PatientFile::send(const ado::ConnectionPtr &connection)
{
    ado::Foresight coming(connection);
    if (coming.isOfUse())
        tellRows(coming, *connection, {});
    coming.send();
    return coming;
}

Patient PatientFile::at(int row) const
{
    return patientAt(*rows_, row);
}

Patient PatientFile::soughtAt(int row) const
{
    return soughtPatientAt(*rows_, row);
}

std::optional<Patient> readPatient(const ado::ConnectionPtr &connection, int key)
{
    const auto rows = rowsWhere(connection, QStringLiteral(" WHERE Customer_PK = %1").arg(key));
    return rows->rowCount() == 0 ? std::nullopt : std::optional(patientAt(*rows, 0));
}

} // namespace desk
