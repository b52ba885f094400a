#pragma once

#include "platform/controls/RecordsetGrid.h"
#include "session/SaleSession.h"

/// A list on view: one of the session's recordsets and the grid that shows it. Owns neither; both, and the session, outlive
/// what is asked of it. Each raises RuntimeError.
class BoundList
{
public:
    using RecordsetPtr = SaleSession::RecordsetPtr;

    /// `rows` is the session's, and may be null until it is created.
    explicit BoundList(RecordsetPtr &rows, ado::CursorType cursor = ado::CursorType::Keyset,
                       ado::LockType lock = ado::LockType::Optimistic);
    /// Before all else.
    void setGrid(controls::RecordsetGrid *grid) { grid_ = grid; }

    /// A new recordset in the session, not open, bound to the grid; the old one goes.
    void create(RecordsetPtr made = std::make_unique<ado::Recordset>());
    /// Opens the statement's rows and rebinds the grid; creates the recordset if it is missing.
    void load(const QString &statement);
    /// The same, but the row of the key is current then, if it is still on the list, and no other before it.
    void loadAt(const QString &statement, const ado::Bookmark &key);
    /// Binds the recordset, if there is one, and closes it.
    void close();

    bool isLoaded() const { return rows_ && rows_->isOpen(); }
    /// Whether rows come anew and the row to be shown is not current yet: a handler of rowChange() shows nothing then.
    bool comesAnew() const { return comesAnew_; }

    // Of a list that is loaded: the same rows are read anew. Whether the row is still among them; without it none is
    // current.
    /// Stands on the row of the key and selects it.
    bool requeryAt(const ado::Bookmark &key);
    /// Keeps the current row, and its selection if it was selected.
    bool requeryHere();
    /// Stands on the row of the key while comesAnew().
    bool requeryQuietlyAt(const ado::Bookmark &key);
    /// Stands on the first row, and rebinds the grid.
    void requery();
    /// Leaves the current row while comesAnew(), also where the rows cannot be read anew; whether they were.
    bool leaveRow();

private:
    void bind();
    void open(const QString &statement);

    RecordsetPtr &rows_;
    controls::RecordsetGrid *grid_ = nullptr;
    const ado::CursorType cursor_;
    const ado::LockType lock_;
    bool comesAnew_ = false;
};
