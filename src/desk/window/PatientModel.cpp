#include "desk/window/PatientModel.h"

#include "platform/runtime/Format.h"

#include <algorithm>

namespace desk {

PatientModel::PatientModel(QObject *parent)
    : QAbstractTableModel(parent)
{
    constexpr int aFewMilliseconds = 1000; // of keys, so that nobody at the desk notices
    connect(&idle_, &QTimer::timeout, this, [this] {
        idle_.setInterval(0);
        makeKeys(aFewMilliseconds);
    });
}

void PatientModel::setPatients(PatientFile patients)
{
    beginResetModel();
    patients_ = std::move(patients);
    keys_.clear();
    keys_.reserve(std::size_t(patients_.count()));
    constexpr int painted = 50; // milliseconds, until which the list is on the screen
    idle_.start(painted);
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
    filtered_ = !typed_.isEmpty();
    if (!filtered_)
        return;
    makeKeys(patients_.count());
    using runtime::SearchPattern;
    chooseBy(SearchPattern(typed_));
    if (shown_.empty()) // of a syllable that is still being typed
        chooseBy(SearchPattern(typed_, SearchPattern::LastSyllable::Begun));
}

void PatientModel::chooseBy(const runtime::SearchPattern &typed)
{
    for (int row = 0; row < patients_.count(); ++row) {
        if (keys_[std::size_t(row)].matches(typed))
            shown_.push_back(row);
    }
}

void PatientModel::makeKeys(int most)
{
    const int made = int(keys_.size());
    const int end = made + std::min(most, patients_.count() - made);
    for (int row = made; row < end; ++row)
        keys_.emplace_back(patients_.soughtAt(row));
    if (end == patients_.count())
        idle_.stop();
}

int PatientModel::rowOf(int key) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (patients_.keyAt(placeOf(row)) == key)
            return row;
    }
    return -1;
}

int PatientModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : filtered_ ? int(shown_.size()) : patients_.count();
}

int PatientModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PatientModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const auto column = Column(index.column());
    if (role == Qt::TextAlignmentRole) {
        const bool centred = column == Birth || column == Sex || column == ChartNumber;
        return int(Qt::AlignVCenter | (centred ? Qt::AlignHCenter : Qt::AlignLeft));
    }
    if (role != Qt::DisplayRole && (role != Qt::ToolTipRole || column != Address))
        return {};
    const Patient row = patient(index.row());
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
    static const char16_t *const captions[ColumnCount]{u"이름",     u"챠트번호", u"생일", u"성별",
                                                       u"전화번호", u"핸드폰",   u"주소"};
    return QString::fromUtf16(captions[section]);
}

} // namespace desk
