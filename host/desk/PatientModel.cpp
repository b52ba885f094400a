#include "host/desk/PatientModel.h"

#include "platform/runtime/Format.h"

namespace desk {

PatientModel::PatientModel(QObject *parent)
    : QAbstractTableModel(parent)
{
}

void PatientModel::setPatients(std::vector<Patient> patients)
{
    beginResetModel();
    patients_ = std::move(patients);
    keys_.clear();
    keys_.reserve(patients_.size());
    for (const Patient &patient : patients_)
        keys_.emplace_back(patient);
    choose();
    endResetModel();
}

void PatientModel::setSearch(const QString &typed)
{
    beginResetModel();
    typed_ = typed;
    choose();
    endResetModel();
}

void PatientModel::choose()
{
    shown_.clear();
    for (std::size_t index = 0; index < keys_.size(); ++index) {
        if (keys_[index].matches(typed_))
            shown_.push_back(index);
    }
}

int PatientModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(shown_.size());
}

int PatientModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PatientModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Patient &row = patient(index.row());
    const auto column = Column(index.column());
    if (role == Qt::TextAlignmentRole) {
        const bool centred = column == Birth || column == Sex || column == ChartNumber;
        return int(Qt::AlignVCenter | (centred ? Qt::AlignHCenter : Qt::AlignLeft));
    }
    if (role == Qt::ToolTipRole)
        return column == Address ? QVariant(row.address) : QVariant();
    if (role != Qt::DisplayRole)
        return {};
    switch (column) {
    case Name:
        return row.name;
    case ChartNumber:
        return row.chartNumber;
    case Birth:
        return runtime::dateText(row.birth);
    case Sex:
        return row.male ? QStringLiteral("남") : QStringLiteral("여");
    case Phone:
        return row.phone;
    case Cell:
        return row.cell;
    case Address:
        return row.address;
    case ColumnCount:
        break;
    }
    return {};
}

QVariant PatientModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const char16_t *const captions[ColumnCount]{u"성함", u"챠트번호", u"생일", u"성별", u"전화번호", u"핸드폰", u"주소"};
    return QString::fromUtf16(captions[section]);
}

} // namespace desk
