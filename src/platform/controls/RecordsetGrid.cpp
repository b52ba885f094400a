#include "platform/controls/RecordsetGrid.h"

#include "platform/ado/Waiting.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/GridSpoken.h"
#include "platform/controls/RecordsetGridPrivate.h"
#include "platform/controls/Spoken.h"
#include "platform/runtime/RuntimeError.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <iterator>
#include <utility>

namespace controls {

RecordsetGrid::RecordsetGrid(QWidget *parent)
    : QTableView(parent)
    , d(std::make_unique<Private>(this))
{
    d->makeHeaders(); // before the model, to which the stock header would be bound for nothing
    setModel(&d->model);
    setItemDelegate(&d->delegate);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(DoubleClicked | AnyKeyPressed);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false); // Tab goes on to the next control
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    dressList(this);
    installSpokenControls();

    // Acted upon when the stock view is through with the mouse: a handler may open a box, and the window may go beneath it.
    connect(this, &QTableView::clicked, this, [this](const QModelIndex &cell) { d->clicked = cell; });
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &cell) { d->doubleClicked = cell; });
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

void RecordsetGrid::fetchInSight()
{
    if (!isVisible())
        return;
    for (int row = rowAt(0); row >= 0 && row < d->model.rowCount(); ++row) {
        if (rowViewportPosition(row) >= viewport()->height())
            break;
        for (int column = 0; column < d->model.columnCount(); ++column) {
            if (!isColumnHidden(column))
                d->model.fetch(row, column);
        }
    }
}

void RecordsetGrid::paintLeftOut()
{
    if (!ado::serverIsAwaited() && d->model.wasLeftOut())
        viewport()->update();
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

void RecordsetGrid::chooseRow(int row)
{
    const bool nothingChosen = !selectionModel()->hasSelection();
    const int toldBefore = d->told;
    const QPointer<RecordsetGrid> alive(this);
    d->byStockView([&] { setCurrentIndex(d->model.index(row, d->columnToStandIn())); });
    if (alive)
        d->chooseCurrent(nothingChosen && d->told == toldBefore);
}

void RecordsetGrid::setFoundRows(std::vector<int> rows)
{
    d->model.setFoundRows(std::move(rows));
    viewport()->update();
}

void RecordsetGrid::leaveUnchosen()
{
    d->marked = false;
    d->follow(false);
}

void RecordsetGrid::chooseRow()
{
    if (!d->marked)
        d->chooseCurrent(true);
}

void RecordsetGrid::setEmptyText(const QString &text)
{
    d->emptyText = text;
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

void RecordsetGrid::setStepForesight(StepForesight foresight)
{
    d->foresight = std::move(foresight);
}

void RecordsetGrid::setBeforeColumnUpdate(BeforeUpdate before)
{
    d->before = std::move(before);
}

bool RecordsetGrid::loadLayout(const QString &file, const QString &layoutName)
{
    const std::optional<GridLayout> layout = readGridLayout(file, layoutName, columns());
    if (layout) {
        d->layoutIsChosen = true;
        d->applyLayout(*layout);
    }
    return layout.has_value();
}

void RecordsetGrid::saveLayout(const QString &file, const QString &layoutName) const
{
    writeGridLayout(file, layoutName, columns(), d->currentLayout());
}

void RecordsetGrid::resetLayout()
{
    d->layoutIsChosen = false;
    d->applyDesign();
}

void RecordsetGrid::keyPressEvent(QKeyEvent *event)
{
    const bool plain = event->modifiers() == Qt::NoModifier;
    const QPointer<RecordsetGrid> alive(this);
    if (event->key() == Qt::Key_F2 || (!event->text().isEmpty() && event->text().front().isPrint())) {
        chooseRow(); // what is typed goes to a row that is chosen
        if (!alive)
            return;
    }
    if (event->key() == Qt::Key_Space && plain) {
        if (!event->isAutoRepeat())
            d->toggle(currentIndex());
        if (alive && d->hasRow())
            d->follow(true);
        return;
    }
    if (event->key() == Qt::Key_F2 && plain) {
        const int column = d->firstTypedColumn();
        if (d->hasRow() && column >= 0) {
            setCurrentIndex(currentIndex().siblingAtColumn(column));
            edit(currentIndex());
        }
        return;
    }
    static constexpr Qt::Key steps[] = {Qt::Key_Up,       Qt::Key_Down, Qt::Key_PageUp,
                                        Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
    const bool isStep = std::find(std::begin(steps), std::end(steps), event->key()) != std::end(steps);
    const bool nothingChosen = !selectionModel()->hasSelection();
    const int toldBefore = d->told;
    d->byStockView([&] { QTableView::keyPressEvent(event); });
    if (alive && isStep)
        d->chooseCurrent(nothingChosen && d->told == toldBefore);
}

void RecordsetGrid::mousePressEvent(QMouseEvent *event)
{
    const bool nothingChosen = !selectionModel()->hasSelection();
    const bool onRow = indexAt(event->pos()).isValid();
    const int toldBefore = d->told;
    const QPointer<RecordsetGrid> alive(this);
    d->byStockView([&] { QTableView::mousePressEvent(event); });
    if (alive && onRow)
        d->chooseCurrent(nothingChosen && d->told == toldBefore);
}

void RecordsetGrid::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointer<RecordsetGrid> alive(this);
    QTableView::mouseReleaseEvent(event);
    if (alive)
        d->toggle(std::exchange(d->clicked, {}));
}

void RecordsetGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    const bool onNothing = event->button() == Qt::LeftButton && !indexAt(event->pos()).isValid();
    const QPointer<RecordsetGrid> alive(this);
    QTableView::mouseDoubleClickEvent(event);
    if (!alive)
        return;
    const QModelIndex cell = std::exchange(d->doubleClicked, {});
    const bool onText = cell.isValid() && !d->model.column(cell.column()).editable;
    // Whoever works on a row by a double click tells here that there is none.
    if (onText || (onNothing && !d->hasRow()))
        runEvent([this] { emit rowDoubleClicked(); }, this);
}

void RecordsetGrid::mouseMoveEvent(QMouseEvent *event)
{
    // A row is chosen by the press alone: dragging over rows would load each of them.
    if (event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

void RecordsetGrid::focusInEvent(QFocusEvent *event)
{
    {
        const QScopedValueRollback guard(d->following, true); // the focus alone moves nothing
        QTableView::focusInEvent(event);
    }
    // The stock view stands on its first row then, which a key for the next row would pass over.
    if (!d->hasRow())
        d->follow(false);
}

void RecordsetGrid::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        d->setRowHeight();
        if (!d->layoutIsChosen)
            d->applyDesign();
    }
}

void RecordsetGrid::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    d->fillRoom();
}

void RecordsetGrid::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (d->emptyText.isEmpty() || d->model.rowCount() > 0 || !d->recordset() || !d->recordset()->isOpen())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Active, QPalette::Text));
    constexpr int margin = 8;
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, d->emptyText);
}

void RecordsetGrid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    // The stock table would tell of a cell counted with the columns that are not shown.
    QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
    if (hasFocus())
        tellOf(current, QAccessible::Focus);
    if (!d->inStockView)
        d->moveRecordset();
}

void RecordsetGrid::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected); // NOLINT(bugprone-parent-virtual-call)
    if (const QModelIndexList cells = selected.indexes(); !cells.isEmpty())
        tellOf(currentIndex().isValid() ? currentIndex() : cells.constFirst(), QAccessible::Selection);
}

void RecordsetGrid::tellOf(const QModelIndex &cell, int accessibleEvent)
{
    const int number = QAccessible::isActive() && cell.isValid() ? GridSpoken::numberOf(*this, cell) : -1;
    if (number < 0)
        return;
    QAccessibleEvent event(this, QAccessible::Event(accessibleEvent));
    event.setChild(number);
    QAccessible::updateAccessibility(&event);
}

QModelIndex RecordsetGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action != MoveHome && action != MoveEnd)
        return QTableView::moveCursor(action, modifiers);
    return d->model.index(action == MoveHome ? 0 : d->model.rowCount() - 1, d->columnToStandIn());
}

QItemSelectionModel::SelectionFlags RecordsetGrid::selectionCommand(const QModelIndex &index, const QEvent *) const
{
    return index.isValid() ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                           : QItemSelectionModel::NoUpdate;
}

void RecordsetGrid::keyboardSearch(const QString &) {}

} // namespace controls
