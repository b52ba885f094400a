#include "desk/window/JournalModel.h"

#include "platform/controls/Palette.h"
#include "platform/runtime/CsvText.h"

namespace desk {

void JournalModel::setEntries(std::vector<journal::Entry> entries)
{
    beginResetModel();
    entries_ = std::move(entries);
    endResetModel();
}

QString JournalModel::text(const journal::Entry &entry, int column) const
{
    switch (column) {
    case Time:
        return entry.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    case Who:
        return entry.who.isEmpty() ? QStringLiteral("(알 수 없음)") : entry.who;
    case Action:
        return journal::actionText(entry.action);
    case Table:
        return journal::tableText(entry.table);
    case Order:
        return entry.order;
    case Customer:
        return entry.customer;
    case Changes:
        return journal::changesText(entry);
    default:
        return {};
    }
}

QStringList JournalModel::captions() const
{
    return {QStringLiteral("시각"),     QStringLiteral("사용자"),   QStringLiteral("작업"),     QStringLiteral("대상"),
            QStringLiteral("거래번호"), QStringLiteral("환자번호"), QStringLiteral("바뀐 내용")};
}

QByteArray JournalModel::csv() const
{
    QString csv = captions().join(u',') + QStringLiteral("\r\n");
    for (const journal::Entry &entry : entries_) {
        QStringList cells;
        for (int column = 0; column < ColumnCount; ++column)
            cells << runtime::csvCell(runtime::spreadsheetText(text(entry, column)));
        csv += cells.join(u',') + QStringLiteral("\r\n");
    }
    return QByteArray("\xEF\xBB\xBF") + csv.toUtf8();
}

QString JournalModel::html(const QString &title) const
{
    QString html = QStringLiteral("<h3>%1</h3><table border='1' cellspacing='0' cellpadding='3' width='100%'>"
                                  "<thead><tr><th>%2</th></tr></thead>")
                       .arg(title.toHtmlEscaped(), captions().join(QStringLiteral("</th><th>")));
    for (const journal::Entry &entry : entries_) {
        QStringList cells;
        for (int column = 0; column < ColumnCount; ++column)
            cells << text(entry, column).toHtmlEscaped();
        html += QStringLiteral("<tr><td>") + cells.join(QStringLiteral("</td><td>")) + QStringLiteral("</td></tr>");
    }
    return html + QStringLiteral("</table>");
}

int JournalModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(entries_.size());
}

int JournalModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant JournalModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const journal::Entry &entry = entries_[std::size_t(index.row())];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return text(entry, index.column());
    if (role == Qt::TextAlignmentRole && index.column() != Changes && index.column() != Who)
        return int(Qt::AlignCenter);
    if (role == Qt::ForegroundRole && index.column() == Action && entry.action == 'D')
        return controls::ink(controls::Ink::Negative);
    return {};
}

QVariant JournalModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(captions().value(section)) : QVariant();
}

} // namespace desk
