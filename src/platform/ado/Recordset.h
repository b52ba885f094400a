#pragma once

#include "platform/ado/Connection.h"

#include <QObject>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace ado {

enum class CursorType { ForwardOnly = 0, Keyset = 1, Static = 3 };
enum class LockType { ReadOnly = 1, Optimistic = 3 };
enum class CursorLocation { Server = 2, Client = 3 };

/// Key of a row; finds its row again after a requery.
using Bookmark = QVariant;

/// The rows of one SELECT with a current row.
///
/// Keyset: membership is fixed at Open, a row is read again when it becomes current. Update writes only the assigned
/// columns, under the condition that these still are as last read: edits of different columns do not collide. Delete
/// compares every base column. No row hit raises Conflict. What was assigned stays pending after a failed Update, until a
/// move, CancelUpdate, Resync or Requery discards it.
/// What was written stays so when the row cannot be read after it: it is read again when it is asked for.
/// A row that another desk deleted stays a member; reading a value of it raises Conflict.
/// After a rollback of a transaction the rows are those that are stored: what was read, added and deleted in it is undone.
/// Static and client-side: all rows are read once, into flat cells; Sort orders them in memory. They are looked at and read
/// again, never written, whatever the lock.
/// Positions: Open, Requery and Sort stand on the first row, Eof and Bof are both true when there is none.
///
/// rowChanged() is raised after every Open, Requery, Delete, Sort and move, also when the row number stayed the same or
/// the set is empty. AddNew and Update raise none.
///
/// Values: see runtime/Conversions.h. Columns of registered tables come in the type that was told (TableRegistry), others as
/// Currency, QString or NULL. Field names ignore case. Every failure raises runtime::RuntimeError.
class Recordset : public QObject
{
    Q_OBJECT
public:
    explicit Recordset(QObject *parent = nullptr);
    ~Recordset() override;

    void setCursorLocation(CursorLocation location); ///< before Open
    /// Before Open, client-side: a long list may open with no more than its first rows. Requery then reads all.
    void openWithFirstRows();
    bool hasAllRows() const; ///< false between the two
    /// To be said before Open of a long list that is opened again and again, as by one window after the other. The connection
    /// keeps its rows, those of one such list, and the next of the same statement takes them over where that gives for
    /// certain what a reading would give.
    void openWithKeptRows();
    void Open(const QString &source, const ConnectionPtr &connection, CursorType cursor, LockType lock);
    void Close(); ///< discards a pending row
    /// The State test of the flows: open or not.
    bool isOpen() const;
    const QString &source() const;

    void Requery();
    /// The same, but stands on the row of the key; behind the last row, and false, when it is no member any more.
    bool requeryAt(const Bookmark &key);
    /// Reads the current row again by its key, even if it no longer meets the filter.
    void Resync();
    bool Bof() const;
    bool Eof() const;
    bool hasCurrent() const { return isOpen() && !Bof() && !Eof(); } ///< neither at its beginning nor at its end
    /// Whether the current row was gone when it was last read: another desk deleted it.
    bool isGone() const;

    void MoveFirst();
    void MoveNext();
    void moveTo(int row); ///< 0-based; out of range is Eof
    /// Makes the row of the key current, without a move where it is already. False, and nothing moves, when the key is no
    /// member or its row is gone.
    bool moveToKey(const Bookmark &key);

    QStringList fieldNames() const;
    /// Value of the current row (of the pending row after AddNew).
    QVariant value(const QString &field) const;
    void setValue(const QString &field, const QVariant &value);
    QVariant operator[](const QString &field) const { return value(field); }

    /// A pending row in memory until Update; over a pending row it replaces it.
    void AddNew();
    /// With its commit the row is read in the transaction, as ever.
    void Update(Then then = Then::GoOn);
    void CancelUpdate();
    /// Deletes the current row; a failed delete leaves it. Goes to the next row, else the last, else Eof.
    void Delete();

    Bookmark bookmark() const;
    /// Finds the row of the key; if it is gone, the first row.
    void setBookmark(const Bookmark &key);
    /// Shares the rows as they were last read, with a position of its own that raises nothing here. A clone whose row the
    /// original deletes stands behind the last one. Requery of the original drops the clone's rows.
    std::unique_ptr<Recordset> Clone() const;
    /// "PM_Name ASC", "[field] DESC, other", empty for the order of Open; static and client-side cursors only. A requery
    /// goes back to the order of Open.
    void Sort(const QString &order);

    // For a grid: looking without moving.
    int rowCount() const;
    int currentRow() const; ///< 0-based, -1 when there is no current row
    Bookmark bookmarkAt(int row) const;
    /// As stored, without what is pending; NULL out of range. Raises what reading raises.
    QVariant valueAt(int row, int column) const;
    int columnIndex(const QString &field) const; ///< -1 when absent

signals:
    void rowChanged();
    /// Rows were replaced (Open, Requery, Sort, Close), one was added (Update of a new row), or a rollback took rows out or
    /// brought them back; a view reads them anew.
    void rowsReset();
    void rowRemoved(int row);
    /// The cached values of one row are new (Update, Resync, a row read again, a rollback).
    void rowRead(int row);

private:
    friend class Foresight;
    void announceRows();
    void watchRollbacks();
    void afterRollback(quint64 transaction);

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ado
