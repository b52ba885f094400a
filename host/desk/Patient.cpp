#include "host/desk/Patient.h"

#include "platform/runtime/RuntimeError.h"

#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>
#include <tuple>

namespace desk {

std::vector<Patient> readPatients(ado::Connection &connection)
{
    QSqlQuery rows(connection.database());
    rows.setForwardOnly(true);
    if (!rows.exec(QStringLiteral("SELECT Customer_PK, name, sn, sex, birth, zipcode, address, phone, cell, vip FROM Customer")))
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("환자 목록을 읽지 못했습니다.\n") + rows.lastError().text());
    std::vector<Patient> list;
    while (rows.next()) {
        Patient patient;
        patient.key = rows.value(0).toInt();
        patient.name = rows.value(1).toString();
        patient.chartNumber = rows.value(2).toString();
        patient.male = rows.value(3).toInt() != 0;
        patient.birth = QDate::fromString(rows.value(4).toString(), Qt::ISODate);
        patient.zipCode = rows.value(5).toString();
        patient.address = rows.value(6).toString();
        patient.phone = rows.value(7).toString();
        patient.cell = rows.value(8).toString();
        patient.vip = rows.value(9).toString();
        list.push_back(std::move(patient));
    }
    // Servers sort by alphabets of their own; a patient stands at the same place on all of them.
    std::sort(list.begin(), list.end(), [](const Patient &one, const Patient &other) {
        return std::tie(one.name, one.chartNumber, one.key) < std::tie(other.name, other.chartNumber, other.key);
    });
    return list;
}

} // namespace desk
