#pragma once

#include "desk/window/Patient.h"
#include "desk/window/PatientSearch.h"

#include <QAbstractTableModel>
#include <QTimer>

#include <vector>

namespace desk {

/// The patients that fit what was typed.
class PatientModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Name, ChartNumber, Birth, Sex, Phone, Cell, Address, ColumnCount };

    explicit PatientModel(QObject *parent = nullptr);

    void setPatients(PatientFile patients);
    void setSearch(const QString &typed);
    int allPatients() const { return patients_.count(); }
    Patient patient(int row) const { return patients_.at(placeOf(row)); }

    /// -1 for a patient that is not shown.
    int rowOf(int key) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    int placeOf(int row) const { return filtered_ ? shown_[std::size_t(row)] : row; }
    void choose();
    void chooseBy(const runtime::SearchPattern &typed);
    /// Makes the search keys of that many more patients; stops the timer with the last one.
    void makeKeys(int most);

    PatientFile patients_;
    std::vector<SearchKey> keys_; ///< of the first patients, in the end of all
    QTimer idle_;                 ///< makes keys while nothing else is to be done
    bool filtered_ = false;
    std::vector<int> shown_; ///< while filtered_
    QString typed_;
};

} // namespace desk
