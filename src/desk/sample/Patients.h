#pragma once

#include <QDate>
#include <QString>

#include <vector>

namespace sample {

struct Patient
{
    QString name;
    QString chartNumber;
    bool male = false;
    QDate birth;
    QString zipCode;
    QString address;
    QString phone;
    QString cell;
    QString insuranceType;
    QString insuranceSymbol;
    QString insuranceNumber;
    QString vip;
};

/// Invented people: neither telephone nor citizen numbers can be anybody's. Key of an element is its index + 1.
std::vector<Patient> patients(int count);

} // namespace sample
