#pragma once

#include "platform/ado/Connection.h"

#include <QDate>
#include <QString>

#include <vector>

namespace desk {

/// A row of the clinic's patient file.
struct Patient
{
    int key = 0; ///< Customer_PK
    QString name;
    QString chartNumber;
    bool male = false;
    QDate birth;
    QString zipCode;
    QString address;
    QString phone;
    QString cell;
    QString vip;
};

/// All patients, by name and chart number. Raises RuntimeError.
std::vector<Patient> readPatients(ado::Connection &connection);

} // namespace desk
