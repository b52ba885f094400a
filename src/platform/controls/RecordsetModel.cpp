#include "platform/controls/RecordsetModel.h"

#include "platform/ado/Waiting.h"
#include "platform/controls/Palette.h"
#include "platform/controls/Spoken.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Log.h"

#include <algorithm>
#include <exception>

namespace controls {

namespace {

using Kind = GridColumn::Kind;

/// Cells are read while the grid paints, where no box may open: a cell that cannot be read says so itself.
const QString unreadable = QStringLiteral("#오류");

Qt::Alignment alignmentOf(Kind kind)
{
    switch (kind) {
    case Kind::Money:
    case Kind::Number:
        return Qt::AlignRight | Qt::AlignVCenter;
    case Kind::Check:
        return Qt::AlignCenter;
    default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

QString translated(const std::vector<GridColumn::Item> &items, const QVariant &value)
{
    const bool null = runtime::isNull(value);
    const QString stored = runtime::text(value);
    for (const GridColumn::Item &item : items) {
        if (null ? item.stored.isNull() : !item.stored.isNull() && item.stored == stored)
            return item.shown;
    }
    return stored;
}

} // namespace

void RecordsetModel::setColumns(std::vector<GridColumn> columns)
{
    beginResetModel();
    columns_ = std::move(columns);
    startAnew();
    endResetModel();
}

void RecordsetModel::setRecordset(ado::Recordset *recordset)
{
    recordset_ = recordset;
    reread();
}

void RecordsetModel::setUnboundFetch(RecordsetGrid::UnboundFetch fetch)
{
    fetch_ = std::move(fetch);
    fetched_.clear();
}

void RecordsetModel::reread()
{
    beginResetModel();
    startAnew();
    endResetModel();
}

void RecordsetModel::startAnew()
{
    fetched_.clear();
    toLogNoMore_.clear();
    markedRow_ = -1;
    found_.clear();
    const bool open = recordset_ && recordset_->isOpen();
    rows_ = open ? recordset_->rowCount() : 0;
    fieldIndexes_.clear();
    for (const GridColumn &column : columns_)
        fieldIndexes_.push_back(open && column.kind != Kind::Unbound ? recordset_->columnIndex(column.field) : -1);
}

void RecordsetModel::rowRemoved(int row)
{
    if (row < 0 || row >= rows_)
        return;
    beginRemoveRows({}, row, row);
    fetched_.clear(); // kept by row numbers, which move up
    toLogNoMore_.clear();
    markedRow_ = -1;
    found_.clear();
    --rows_;
    endRemoveRows();
}

void RecordsetModel::rowRead(int row)
{
    toLogNoMore_.erase(row);
    if (row >= 0 && row < rows_ && !columns_.empty())
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

int RecordsetModel::setMarkedRow(int row)
{
    return std::exchange(markedRow_, row);
}

void RecordsetModel::setFoundRows(std::vector<int> rows)
{
    found_ = std::move(rows);
}

bool RecordsetModel::isFound(int row) const
{
    return std::ranges::binary_search(found_, row);
}

int RecordsetModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : rows_;
}

int RecordsetModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(columns_.size());
}

QVariant RecordsetModel::storedValue(int row, int column) const
{
    const int field = fieldIndexes_[std::size_t(column)];
    if (field < 0 || !recordset_ || !recordset_->isOpen())
        return {};
    return recordset_->valueAt(row, field);
}

QString RecordsetModel::unboundText(int row, int column) const
{
    if (!fetch_ || !recordset_ || !recordset_->isOpen())
        return {};
    const std::pair cell(row, column);
    if (const auto known = fetched_.find(cell); known != fetched_.end())
        return known->second;
    if (ado::serverIsAwaited()) {
        leftOut_ = true;
        return {};
    }
    try {
        return fetched_.insert_or_assign(cell, fetch_(recordset_->bookmarkAt(row), column)).first->second;
    } catch (...) {
        fetched_.insert_or_assign(cell, unreadable);
        throw;
    }
}

void RecordsetModel::fetch(int row, int column) const
{
    if (columns_[std::size_t(column)].kind == Kind::Unbound && !fetched_.contains({row, column}))
        index(row, column).data(Qt::DisplayRole);
}

QString RecordsetModel::shownText(int row, int column) const
{
    const GridColumn &shown = columns_[std::size_t(column)];
    switch (shown.kind) {
    case Kind::Unbound:
        return unboundText(row, column);
    case Kind::Money:
        return runtime::Format(storedValue(row, column),
                               shown.format.isEmpty() ? runtime::strMoneyFormat : shown.format);
    case Kind::Values:
        return translated(shown.values, storedValue(row, column));
    case Kind::Check:
        storedValue(row, column); // shown by the box alone, unless it cannot be read
        return {};
    default:
        return runtime::text(storedValue(row, column));
    }
}

bool RecordsetModel::isChecked(int row, int column) const
{
    return runtime::text(storedValue(row, column)) == columns_[std::size_t(column)].checkedText;
}

QVariant RecordsetModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rows_)
        return {};
    const int row = index.row();
    const int column = index.column();
    const Kind kind = columns_[std::size_t(column)].kind;
    try {
        switch (role) {
        case Qt::DisplayRole:
            return shownText(row, column);
        case Qt::EditRole:
            return runtime::text(storedValue(row, column));
        case Qt::CheckStateRole:
            return kind == Kind::Check ? QVariant(isChecked(row, column) ? Qt::Checked : Qt::Unchecked) : QVariant();
        case Qt::AccessibleTextRole:
            if (kind == Kind::Money)
                return spokenMoney(shownText(row, column));
            return kind == Kind::Check
                       ? QVariant(isChecked(row, column) ? QStringLiteral("선택됨") : QStringLiteral("선택 안 됨"))
                       : QVariant();
        case Qt::AccessibleDescriptionRole:
            return isFound(row) ? QVariant(QStringLiteral("찾은 행")) : QVariant();
        case FoundRole:
            return isFound(row);
        case Qt::TextAlignmentRole:
            return QVariant(alignmentOf(kind));
        case Qt::ForegroundRole:
            return (kind == Kind::Money || kind == Kind::Number) && shownText(row, column).startsWith(QLatin1Char('-'))
                       ? QVariant(ink(Ink::Negative))
                       : QVariant();
        default:
            return {};
        }
    } catch (const std::exception &) { // none may leave a painting
        if (ado::serverIsAwaited()) {  // it is painted again when the server has answered
            leftOut_ = true;
            return {};
        }
        if (toLogNoMore_.insert(row).second)
            runtime::trapped();
        return role == Qt::DisplayRole || role == Qt::AccessibleTextRole ? QVariant(unreadable) : QVariant();
    }
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) {
        if (role == Qt::DisplayRole)
            return section == markedRow_ ? QStringLiteral("▶") : QString();
        // Their size is fixed. The stock header would measure two hundred of them each time it is asked what it takes.
        if (role == Qt::SizeHintRole)
            return QSize(0, 0);
        return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignCenter) : QVariant();
    }
    if (section < 0 || section >= columnCount())
        return {};
    const GridColumn &shown = columns_[std::size_t(section)];
    if (role == Qt::DisplayRole)
        return shown.caption;
    return role == Qt::TextAlignmentRole ? QVariant(alignmentOf(shown.kind)) : QVariant();
}

Qt::ItemFlags RecordsetModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    const GridColumn &shown = columns_[std::size_t(index.column())];
    if (shown.editable)
        flags |= shown.kind == Kind::Check ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
    return flags;
}

} // namespace controls
