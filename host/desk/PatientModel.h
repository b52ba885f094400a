#pragma once

#include "host/desk/Patient.h"
#include "host/desk/PatientSearch.h"

#include <QAbstractTableModel>

namespace desk {

/// The patients that fit what was typed.
class PatientModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Name, ChartNumber, Birth, Sex, Phone, Cell, Address, ColumnCount };

    explicit PatientModel(QObject *parent = nullptr);

    void setPatients(std::vector<Patient> patients);
    void setSearch(const QString &typed);
    int allPatients() const { return int(patients_.size()); }
    const Patient &patient(int row) const { return patients_[shown_[std::size_t(row)]]; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void choose();

    std::vector<Patient> patients_;
    std::vector<SearchKey> keys_;
    std::vector<std::size_t> shown_;
    QString typed_;
};

} // namespace desk
