#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/Foresight.h"
#include "platform/ado/Recordset.h"

#include <QDate>
#include <QString>

#include <memory>
#include <optional>

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

/// All patients, by name and chart number, as they stood when they were read. A patient is made when somebody asks: of
/// fifty thousand a window shows some twenty.
class PatientFile
{
public:
    PatientFile() = default; ///< of nobody
    /// Raises RuntimeError.
    explicit PatientFile(const ado::ConnectionPtr &connection);
    /// Asks for it, as long as the answer stands; what is done before it is read is done while it travels.
    static ado::Foresight send(const ado::ConnectionPtr &connection);

    int count() const { return rows_ ? rows_->rowCount() : 0; }
    /// `row` from 0 to below count().
    Patient at(int row) const;
    /// What a patient is found by alone: name, chart number and telephone numbers.
    Patient soughtAt(int row) const;
    /// The key alone.
    int keyAt(int row) const { return rows_->bookmarkAt(row).toInt(); }

private:
    std::unique_ptr<ado::Recordset> rows_;
};

/// The patient of that key, if there is one. Raises RuntimeError.
std::optional<Patient> readPatient(const ado::ConnectionPtr &connection, int key);

} // namespace desk
