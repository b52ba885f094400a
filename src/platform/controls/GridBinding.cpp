#include "platform/controls/EventEdge.h"
#include "platform/controls/RecordsetGridPrivate.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"

#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <optional>
#include <utility>

namespace controls {

RecordsetGrid::Private::Private(RecordsetGrid *owner)
    : grid(owner)
    , delegate([this](const QModelIndex &cell, const QString &typed) { takeTyped(cell, typed); }, nullptr)
{
}

void RecordsetGrid::Private::makeHeaders()
{
    header = new GridHeader(grid);
    grid->setHorizontalHeader(header);
    connect(header, &GridHeader::headClicked, grid,
            [this](int column) { runEvent([&] { emit grid->headClick(column); }, grid); });
    connect(header, &GridHeader::changedByUser, grid, [this] {
        layoutIsChosen = true;
        noteWidths();
        runEvent([&] { emit grid->layoutChanged(true); }, grid);
    });
    connect(header, &GridHeader::designAsked, grid, [this] {
        grid->resetLayout();
        runEvent([&] { emit grid->layoutChanged(true); }, grid);
    });

    QHeaderView *rows = grid->verticalHeader();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setHighlightSections(false);
    setRowHeight();
}

void RecordsetGrid::Private::setRowHeight()
{
    const int textHeight = grid->fontMetrics().height();
    QHeaderView *rows = grid->verticalHeader();
    rows->setMinimumSectionSize(textHeight);
    rows->setDefaultSectionSize(textHeight + 7);
    rows->setFixedWidth(textHeight + 6);
}

void RecordsetGrid::Private::bind(ado::Recordset *recordset)
{
    for (const QMetaObject::Connection &bond : std::exchange(bonds, {}))
        disconnect(bond);
    model.setRecordset(recordset);
    rowsReset();
    if (!recordset)
        return;
    using ado::Recordset;
    bonds = {
        connect(recordset, &Recordset::rowsReset, grid, [this] { rowsReset(); }),
        connect(recordset, &Recordset::rowRemoved, grid, [this](int row) { rowRemoved(row); }),
        connect(recordset, &Recordset::rowRead, grid, [this](int row) { model.rowRead(row); }),
        connect(recordset, &Recordset::rowChanged, grid, [this] { rowChanged(); }),
        connect(recordset, &QObject::destroyed, grid, [this] { bind(nullptr); }),
    };
}

void RecordsetGrid::Private::rowsReset()
{
    model.reread();
    freshRows = true;
    follow(false);
}

void RecordsetGrid::Private::rowRemoved(int row)
{
    const bool shownSelected = grid->selectionModel()->hasSelection();
    const QScopedValueRollback guard(following, true);
    model.rowRemoved(row);
    freshRows = !shownSelected;
}

void RecordsetGrid::Private::rowChanged()
{
    const bool fresh = std::exchange(freshRows, false);
    const bool byUser = std::exchange(movedByUser, false); // what the handlers do from here on is the flows' doing
    follow(byUser || !fresh);
    tellRowChange();
}

void RecordsetGrid::Private::byStockView(const std::function<void()> &answer)
{
    const QPointer<RecordsetGrid> alive(grid);
    inStockView = true;
    answer();
    if (!alive)
        return;
    inStockView = false;
    moveRecordset();
}

/// After a step of the user in the view.
void RecordsetGrid::Private::moveRecordset()
{
    const int row = grid->currentIndex().row();
    if (following || row < 0 || !recordset() || !recordset()->isOpen() || row == recordset()->currentRow())
        return;
    std::optional<ado::Foresight> read;
    if (foresight)
        read.emplace(foresight(row));
    const QPointer<RecordsetGrid> alive(grid);
    const auto move = [&] {
        movedByUser = true;
        recordset()->moveTo(row);
    };
    runEvent(move, grid);
    if (!alive)
        return;
    movedByUser = false;
    // Where the step failed, or its handlers went elsewhere, the view goes back.
    if (recordset() && recordset()->isOpen() && recordset()->currentRow() != grid->currentIndex().row())
        follow(false);
}

/// After a click or a key on a row. The row that is current already is chosen as well: where it did not show as selected
/// yet, the panes behind it may be empty, so the change is raised.
void RecordsetGrid::Private::chooseCurrent(bool untold)
{
    if (!hasRow() || grid->state() == QAbstractItemView::EditingState)
        return;
    follow(true);
    if (untold)
        tellRowChange();
}

void RecordsetGrid::Private::tellRowChange()
{
    ++told;
    marked = true;
    markRow(hasRow() ? recordset()->currentRow() : -1);
    runEvent([this] { emit grid->rowChange(); }, grid);
}

int RecordsetGrid::Private::columnToStandIn() const
{
    const int current = grid->currentIndex().column();
    if (current >= 0 && !header->isSectionHidden(current))
        return current;
    for (int place = 0; place < header->count(); ++place) {
        if (!header->isSectionHidden(header->logicalIndex(place)))
            return header->logicalIndex(place);
    }
    return 0;
}

/// Tells the heads alone: a model that says so itself has the stock view lay out and paint all of its rows once more.
void RecordsetGrid::Private::markRow(int row)
{
    QHeaderView *const heads = grid->verticalHeader();
    for (const int changed : {model.setMarkedRow(row), row}) {
        if (changed >= 0 && changed < heads->count())
            heads->headerDataChanged(Qt::Vertical, changed, changed);
    }
}

void RecordsetGrid::Private::follow(bool select)
{
    const QScopedValueRollback guard(following, true);
    QItemSelectionModel *selection = grid->selectionModel();
    const int row = recordset() && recordset()->isOpen() ? recordset()->currentRow() : -1;
    const QModelIndex cell = model.index(row, columnToStandIn());
    markRow(cell.isValid() && marked ? row : -1);
    if (!cell.isValid()) {
        selection->clear();
        return;
    }
    selection->setCurrentIndex(cell, QItemSelectionModel::NoUpdate);
    selection->select(cell, select ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                                   : QItemSelectionModel::Clear);
    const int side = grid->horizontalScrollBar()->value();
    grid->scrollTo(cell);
    grid->horizontalScrollBar()->setValue(side); // a change of row never shifts the columns
}

void RecordsetGrid::Private::takeTyped(const QModelIndex &cell, QString typed)
{
    const GridColumn column = model.column(cell.column());
    const auto take = [&] {
        if (before)
            before(cell.column(), typed);
        const bool money = column.kind == GridColumn::Kind::Money;
        assign(cell.column(), money ? QVariant::fromValue(runtime::CCur(typed)) : QVariant(typed));
    };
    const BoxesLater wait; // the stock view goes on with the cell when this returns
    runEvent(take, grid);
}

void RecordsetGrid::Private::toggle(const QModelIndex &cell)
{
    if (!cell.isValid() || !hasRow() || recordset()->currentRow() != cell.row()
        || !model.flags(cell).testFlag(Qt::ItemIsUserCheckable))
        return;
    const bool checked = cell.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    runEvent([&] { assign(cell.column(), !checked); }, grid);
}

/// The value goes to the field, then the handler saves it.
void RecordsetGrid::Private::assign(int column, const QVariant &value)
{
    if (!hasRow())
        return;
    const QPointer<RecordsetGrid> alive(grid);
    const QString field = model.column(column).field;
    const ado::Bookmark row = recordset()->bookmark();
    recordset()->setValue(field, value);
    runEvent([&] { emit grid->afterColumnUpdate(column); }, grid);
    if (alive)
        settle(row, field, value);
}

/// What the handler could not save is not left pending: the cell shows what the database holds.
void RecordsetGrid::Private::settle(const ado::Bookmark &row, const QString &field, const QVariant &value)
{
    if (!hasRow() || recordset()->bookmark() != row)
        return;
    recordset()->CancelUpdate();
    if (runtime::text(recordset()->value(field)) != runtime::text(value)) {
        runtime::Attempt attempt; // the box of the failed save has told the user already
        attempt([&] { recordset()->Resync(); });
    }
    model.rowRead(recordset()->currentRow());
}

int RecordsetGrid::Private::firstTypedColumn() const
{
    for (int place = 0; place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        const GridColumn &shown = model.column(column);
        if (!header->isSectionHidden(column) && shown.editable && shown.kind != GridColumn::Kind::Check)
            return column;
    }
    return -1;
}

int RecordsetGrid::Private::lastShownColumn() const
{
    for (int place = header->count() - 1; place >= 0; --place) {
        if (!header->isSectionHidden(header->logicalIndex(place)))
            return header->logicalIndex(place);
    }
    return -1;
}

/// A column that is hidden, or that fills what is left of the grid, keeps the width that was last chosen for it.
void RecordsetGrid::Private::noteWidths()
{
    const int stretched = lastShownColumn();
    for (int column = 0; column < header->count(); ++column) {
        if (column != stretched && !header->isSectionHidden(column))
            widths[std::size_t(column)] = qRound(header->sectionSize(column) / pixelsPerUnit());
    }
}

GridLayout RecordsetGrid::Private::currentLayout() const
{
    GridLayout layout;
    for (int place = 0; place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        layout.places.push_back({column, widths[std::size_t(column)], !header->isSectionHidden(column)});
    }
    return layout;
}

void RecordsetGrid::Private::applyLayout(const GridLayout &layout)
{
    widths.resize(layout.places.size());
    for (std::size_t place = 0; place < layout.places.size(); ++place) {
        const GridLayout::Place &column = layout.places[place];
        widths[std::size_t(column.column)] = column.width;
        header->setSectionHidden(column.column, false);
        header->moveSection(header->visualIndex(column.column), int(place));
        header->resizeSection(column.column, qRound(column.width * pixelsPerUnit()));
        header->setSectionHidden(column.column, !column.visible);
    }
}

void RecordsetGrid::Private::applyDesign()
{
    GridLayout layout = designedLayout(model.columns());
    for (GridLayout::Place &place : layout.places)
        place.width = std::max(place.width, leastWidth(place.column));
    applyLayout(layout);
    fillRoom();
}

/// Pixels at 96 dpi in which caption and usual values show whole. Longer amounts are drawn smaller.
int RecordsetGrid::Private::leastWidth(int column) const
{
    const GridColumn &shown = model.column(column);
    QString usual;
    if (shown.kind == GridColumn::Kind::Money)
        usual = QStringLiteral("\\9,999,999");
    else if (shown.kind == GridColumn::Kind::Date)
        usual = QStringLiteral("2026-11-25");
    // Of the cell, its line and what a text layout rounds up.
    const int margins = 2 * (grid->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, grid) + 1) + 4;
    int pixels = std::max(header->sectionSizeHint(column), grid->fontMetrics().horizontalAdvance(usual) + margins);
    for (const GridColumn::Item &item : shown.values)
        pixels = std::max(pixels, grid->fontMetrics().horizontalAdvance(item.shown) + margins);
    return qCeil(pixels / pixelsPerUnit());
}

int RecordsetGrid::Private::fillingColumn() const
{
    for (int column = 0; column < header->count(); ++column) {
        if (model.column(column).fills && !header->isSectionHidden(column))
            return column;
    }
    return -1;
}

/// Remarks at the right end give way to a name of twenty syllables: they are reached by scrolling.
void RecordsetGrid::Private::fillRoom()
{
    const int filling = layoutIsChosen ? -1 : fillingColumn();
    if (filling < 0)
        return;
    const auto pixels = [this](int column) { return qRound(widths[std::size_t(column)] * pixelsPerUnit()); };
    int room = grid->viewport()->width();
    for (int column = 0; column < header->count(); ++column) {
        if (column != filling && !header->isSectionHidden(column))
            room -= pixels(column);
    }
    const int wanted = grid->fontMetrics().horizontalAdvance(QString(21, QChar(u'가')));
    for (int last = header->count() - 1; last > filling && room < wanted; --last) {
        if (model.column(last).kind != GridColumn::Kind::Text)
            break;
        if (!header->isSectionHidden(last))
            room += pixels(last);
    }
    header->resizeSection(filling, std::max(room, pixels(filling)));
}

} // namespace controls
