#pragma once

#include "platform/controls/CellTexts.h"

#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

#include <functional>

namespace controls {

/// Draws the cells of a bound grid and edits its text cells.
class GridDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    using Taken = std::function<void(const QModelIndex &cell, const QString &typed)>;

    /// `taken` gets what was typed, when it was changed and the user leaves the cell.
    GridDelegate(Taken taken, QObject *parent);

    /// The box in which a cell of that column is being typed; null when there is none.
    const QLineEdit *editorOf(int column) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void keepWhole(QStyleOptionViewItem &option) const;

    Taken taken_;
    CellTexts texts_;
    mutable QPointer<QLineEdit> editor_;
    mutable int editedColumn_ = -1;
};

} // namespace controls
