#include "forms/BoundList.h"

#include "platform/runtime/Attempt.h"
#include "session/modGlobalVars.h"

#include <QItemSelectionModel>
#include <QPointer>
#include <QScopedValueRollback>

#include <utility>

// Wherever rows come, a handler of the row change may open a box, and the window may go beneath it: what is done to the
// grid afterwards asks whether it is still there.
using GridPtr = QPointer<controls::RecordsetGrid>;

BoundList::BoundList(RecordsetPtr &rows, ado::CursorType cursor, ado::LockType lock)
    : rows_(rows)
    , cursor_(cursor)
    , lock_(lock)
{
}

void BoundList::create(RecordsetPtr made)
{
    grid_->setDataSource(made.get());
    rows_ = std::move(made);
}

/// Before the rows open: the row change that comes with them is the grid's as well.
void BoundList::bind()
{
    if (grid_->dataSource() != rows_.get())
        grid_->setDataSource(rows_.get());
}

void BoundList::close()
{
    if (!rows_)
        return;
    bind();
    rows_->Close();
}

void BoundList::open(const QString &statement)
{
    if (!rows_)
        create();
    close();
    rows_->Open(statement, gcnnMasterDB, cursor_, lock_);
}

void BoundList::load(const QString &statement)
{
    const GridPtr grid(grid_);
    open(statement);
    if (grid)
        grid->Rebind();
}

void BoundList::loadAt(const QString &statement, const ado::Bookmark &key)
{
    const GridPtr grid(grid_);
    {
        const QScopedValueRollback guard(comesAnew_, true);
        open(statement);
    }
    rows_->setBookmark(key);
    if (grid)
        grid->Rebind();
}

bool BoundList::requeryAt(const ado::Bookmark &key)
{
    const GridPtr grid(grid_);
    const bool stands = rows_->requeryAt(key);
    if (stands && grid)
        grid->selectRow(rows_->currentRow());
    return stands;
}

bool BoundList::requeryHere()
{
    const ado::Bookmark key = rows_->bookmark();
    return grid_->selectionModel()->hasSelection() ? requeryAt(key) : rows_->requeryAt(key);
}

bool BoundList::requeryQuietlyAt(const ado::Bookmark &key)
{
    const QScopedValueRollback guard(comesAnew_, true);
    return rows_->requeryAt(key);
}

void BoundList::requery()
{
    const GridPtr grid(grid_);
    rows_->Requery();
    if (grid)
        grid->Rebind();
}

bool BoundList::leaveRow()
{
    const QScopedValueRollback guard(comesAnew_, true);
    rows_->moveTo(rows_->rowCount());
    runtime::Attempt attempt;
    attempt([this] { rows_->requeryAt({}); });
    return !attempt.failed();
}
