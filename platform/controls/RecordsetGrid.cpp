#include "platform/controls/RecordsetGrid.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/GridDelegate.h"
#include "platform/controls/GridHeader.h"
#include "platform/controls/GridLayout.h"
#include "platform/controls/RecordsetModel.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"

#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <utility>

namespace controls {

/// How view and recordset keep together: the user's step moves the recordset, and the recordset's rowChanged(), whoever
/// moved it, moves the view and then raises rowChange(). While the view follows, its own change of row moves nothing.
struct RecordsetGrid::Private
{
    explicit Private(RecordsetGrid *owner);

    void makeHeaders();
    void setRowHeight();
    void bind(ado::Recordset *recordset);
    void rowsReset();
    void rowRemoved(int row);
    void rowChanged();

    void moveRecordset();
    void follow(bool select);
    int columnToStandIn() const;

    void takeTyped(const QModelIndex &cell, QString typed);
    void toggle(const QModelIndex &cell);
    void assign(int column, const QVariant &value);
    void settle(const ado::Bookmark &row, const QString &field, const QVariant &value);
    int firstEditable(bool check) const;

    GridLayout currentLayout() const;
    void applyLayout(const GridLayout &layout);
    int lastShownColumn() const;
    double pixelsPerUnit() const { return grid->logicalDpiX() / 96.0; }

    ado::Recordset *recordset() const { return model.recordset(); }
    bool hasRow() const { return recordset() && recordset()->hasCurrent(); }

    RecordsetGrid *grid;
    RecordsetModel model;
    GridDelegate delegate;
    GridHeader *header = nullptr;
    BeforeUpdate before;
    std::vector<QMetaObject::Connection> bonds; ///< with the recordset
    std::vector<int> widths;                    ///< last known of each column, pixels at 96 dpi
    bool following = false;                     ///< the view is being moved to where the recordset stands
    bool movedByUser = false;
    bool freshRows = true; ///< the next change of row comes with new rows: no row shows as selected
};

RecordsetGrid::Private::Private(RecordsetGrid *owner)
    : grid(owner)
    , delegate([this](const QModelIndex &cell, const QString &typed) { takeTyped(cell, typed); }, nullptr)
{
}

void RecordsetGrid::Private::makeHeaders()
{
    header = new GridHeader(grid);
    grid->setHorizontalHeader(header);
    connect(header, &QHeaderView::sectionClicked, grid, [this](int column) {
        runEvent([&] { emit grid->headClick(column); });
    });
    connect(header, &GridHeader::changedByUser, grid, [this] {
        runEvent([&] { emit grid->layoutChanged(true); });
    });
    connect(header, &GridHeader::designAsked, grid, [this] {
        grid->resetLayout();
        runEvent([&] { emit grid->layoutChanged(true); });
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
    runEvent([this] { emit grid->rowChange(); });
}

/// After a step of the user in the view.
void RecordsetGrid::Private::moveRecordset()
{
    const int row = grid->currentIndex().row();
    if (following || row < 0 || !recordset() || !recordset()->isOpen() || row == recordset()->currentRow())
        return;
    const QPointer<RecordsetGrid> alive(grid);
    runEvent([&] {
        movedByUser = true;
        recordset()->moveTo(row);
    });
    if (!alive)
        return;
    movedByUser = false;
    // Where the step failed, or its handlers went elsewhere, the view goes back.
    if (recordset() && recordset()->isOpen() && recordset()->currentRow() != grid->currentIndex().row())
        follow(false);
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

void RecordsetGrid::Private::follow(bool select)
{
    const QScopedValueRollback guard(following, true);
    QItemSelectionModel *selection = grid->selectionModel();
    const int row = recordset() && recordset()->isOpen() ? recordset()->currentRow() : -1;
    const QModelIndex cell = model.index(row, columnToStandIn());
    model.setMarkedRow(cell.isValid() ? row : -1);
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
    runEvent([&] {
        if (before)
            before(cell.column(), typed);
        const bool money = column.kind == GridColumn::Kind::Money;
        assign(cell.column(), money ? QVariant::fromValue(runtime::CCur(typed)) : QVariant(typed));
    });
}

void RecordsetGrid::Private::toggle(const QModelIndex &cell)
{
    if (!cell.isValid() || !hasRow() || recordset()->currentRow() != cell.row()
        || !model.flags(cell).testFlag(Qt::ItemIsUserCheckable))
        return;
    const bool checked = cell.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    runEvent([&] { assign(cell.column(), !checked); });
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
    runEvent([&] { emit grid->afterColumnUpdate(column); });
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

int RecordsetGrid::Private::firstEditable(bool check) const
{
    for (int place = 0; place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        const GridColumn &shown = model.column(column);
        if (!header->isSectionHidden(column) && shown.editable && (shown.kind == GridColumn::Kind::Check) == check)
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

GridLayout RecordsetGrid::Private::currentLayout() const
{
    GridLayout layout;
    const int stretched = lastShownColumn(); // fills what is left, so its size on the screen is nobody's choice
    for (int place = 0; place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        const bool visible = !header->isSectionHidden(column);
        const bool sized = visible && column != stretched;
        const int width = sized ? qRound(header->sectionSize(column) / pixelsPerUnit()) : widths[std::size_t(column)];
        layout.places.push_back({column, width, visible});
    }
    return layout;
}

void RecordsetGrid::Private::applyLayout(const GridLayout &layout)
{
    widths.resize(layout.places.size());
    // Widths first: a column that is the last one for a moment would be stretched and keep it.
    header->setStretchLastSection(false);
    for (std::size_t place = 0; place < layout.places.size(); ++place) {
        const GridLayout::Place &column = layout.places[place];
        widths[std::size_t(column.column)] = column.width;
        header->setSectionHidden(column.column, false);
        header->moveSection(header->visualIndex(column.column), int(place));
        header->resizeSection(column.column, qRound(column.width * pixelsPerUnit()));
        header->setSectionHidden(column.column, !column.visible);
    }
    header->setStretchLastSection(true);
}

RecordsetGrid::RecordsetGrid(QWidget *parent)
    : QTableView(parent)
    , d(std::make_unique<Private>(this))
{
    setModel(&d->model);
    setItemDelegate(&d->delegate);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(DoubleClicked | AnyKeyPressed);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false); // Tab goes on to the next control
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    QPalette calm = palette();
    calm.setColor(QPalette::AlternateBase, QColor(0xF4, 0xF7, 0xFA));
    setPalette(calm);
    d->makeHeaders();

    connect(this, &QTableView::clicked, this, [this](const QModelIndex &cell) { d->toggle(cell); });
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &cell) {
        if (!d->model.column(cell.column()).editable)
            runEvent([this] { emit rowDoubleClicked(); });
    });
}

RecordsetGrid::~RecordsetGrid()
{
    d->bind(nullptr);
    setModel(nullptr);
}

void RecordsetGrid::setColumns(std::vector<GridColumn> columns)
{
    std::vector<int> offered;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].visible)
            offered.push_back(int(i));
    }
    d->header->offerColumns(std::move(offered));
    d->model.setColumns(std::move(columns));
    resetLayout();
    d->follow(false);
}

const std::vector<GridColumn> &RecordsetGrid::columns() const
{
    return d->model.columns();
}

void RecordsetGrid::setDataSource(ado::Recordset *recordset)
{
    if (recordset == d->recordset())
        return;
    d->bind(recordset);
    if (recordset && recordset->isOpen())
        d->rowChanged();
}

ado::Recordset *RecordsetGrid::dataSource() const
{
    return d->recordset();
}

void RecordsetGrid::Rebind()
{
    const bool shownSelected = selectionModel()->hasSelection();
    const QPoint place(horizontalScrollBar()->value(), verticalScrollBar()->value());
    d->model.reread();
    d->follow(shownSelected);
    horizontalScrollBar()->setValue(place.x());
    verticalScrollBar()->setValue(place.y());
}

void RecordsetGrid::Refresh()
{
    viewport()->update();
}

void RecordsetGrid::Delete()
{
    if (!d->hasRow())
        throw runtime::RuntimeError(runtime::ErrorNumber::NoCurrentRow, QStringLiteral("선택된 행이 없습니다."));
    d->recordset()->Delete();
}

QVariant RecordsetGrid::columnValue(const QString &field) const
{
    const std::vector<GridColumn> &shown = columns();
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const QLineEdit *editor = d->delegate.editorOf(int(i));
        if (editor && state() == EditingState && shown[i].field.compare(field, Qt::CaseInsensitive) == 0)
            return editor->text();
    }
    return d->hasRow() ? d->recordset()->value(field) : QVariant();
}

void RecordsetGrid::setUnboundFetch(UnboundFetch fetch)
{
    d->model.setUnboundFetch(std::move(fetch));
    viewport()->update();
}

void RecordsetGrid::setBeforeColumnUpdate(BeforeUpdate before)
{
    d->before = std::move(before);
}

bool RecordsetGrid::loadLayout(const QString &file, const QString &layoutName)
{
    const std::optional<GridLayout> layout = readGridLayout(file, layoutName, columns());
    if (layout)
        d->applyLayout(*layout);
    return layout.has_value();
}

void RecordsetGrid::saveLayout(const QString &file, const QString &layoutName) const
{
    writeGridLayout(file, layoutName, columns(), d->currentLayout());
}

void RecordsetGrid::resetLayout()
{
    d->applyLayout(designedLayout(columns()));
}

void RecordsetGrid::keyPressEvent(QKeyEvent *event)
{
    const bool plain = event->modifiers() == Qt::NoModifier;
    if (event->key() == Qt::Key_Space && plain) {
        const int column = d->firstEditable(true);
        if (column >= 0 && !event->isAutoRepeat())
            d->toggle(currentIndex().siblingAtColumn(column));
        if (d->hasRow())
            d->follow(true);
        return;
    }
    if (event->key() == Qt::Key_F2 && plain) {
        const int column = d->firstEditable(false);
        if (d->hasRow() && column >= 0) {
            setCurrentIndex(currentIndex().siblingAtColumn(column));
            edit(currentIndex());
        }
        return;
    }
    const QPointer<RecordsetGrid> alive(this);
    QTableView::keyPressEvent(event);
    if (!alive)
        return;
    static constexpr Qt::Key steps[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
    for (const Qt::Key step : steps) {
        if (event->key() == step && d->hasRow())
            d->follow(true); // selects the row even where the step leads nowhere
    }
}

void RecordsetGrid::mousePressEvent(QMouseEvent *event)
{
    const QPointer<RecordsetGrid> alive(this);
    QTableView::mousePressEvent(event);
    if (alive)
        d->moveRecordset();
}

void RecordsetGrid::mouseMoveEvent(QMouseEvent *event)
{
    // A row is chosen by the press alone: dragging over rows would load each of them.
    if (event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

void RecordsetGrid::focusInEvent(QFocusEvent *event)
{
    const QScopedValueRollback guard(d->following, true); // the focus alone moves nothing
    QTableView::focusInEvent(event);
}

void RecordsetGrid::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        d->setRowHeight();
}

void RecordsetGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    d->moveRecordset();
}

QModelIndex RecordsetGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action != MoveHome && action != MoveEnd)
        return QTableView::moveCursor(action, modifiers);
    return d->model.index(action == MoveHome ? 0 : d->model.rowCount() - 1, d->columnToStandIn());
}

QItemSelectionModel::SelectionFlags RecordsetGrid::selectionCommand(const QModelIndex &index, const QEvent *) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows : QItemSelectionModel::NoUpdate;
}

void RecordsetGrid::keyboardSearch(const QString &) {}

} // namespace controls
