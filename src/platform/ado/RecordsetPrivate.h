#pragma once

#include "platform/ado/Recordset.h"
#include "platform/ado/RowStore.h"

#include <map>
#include <memory>

namespace ado {

struct Recordset::Private
{
    ~Private() { release(); }

    QString source;
    ConnectionPtr connection;
    CursorType cursor = CursorType::ForwardOnly;
    LockType lock = LockType::ReadOnly;
    CursorLocation location = CursorLocation::Server;
    RowStore::Extent extent = RowStore::Extent::All; ///< of Open

    std::shared_ptr<RowStore> rows; ///< null while closed
    int position = 0;               ///< rows->count() at the end
    RowImage current;               ///< as it was when it became current; what Update compares with
    quint64 currentReadIn = 0;      ///< serial of the transaction that it was read in, 0 for none
    bool currentIsUndone = false;   ///< and that was rolled back, or could not be read after a writing
    QMetaObject::Connection rollbackBond;

    bool looksOnly = false; ///< a clone: it takes rows as they were last read by whoever read them

    bool adding = false;
    std::map<const Column *, QVariant> assigned;

    RowStore &open() const; ///< raises ObjectClosed
    void requireCurrent() const;
    bool atRow() const { return rows && position < rows->count(); }

    std::shared_ptr<RowStore> load(const RowStore *before = nullptr) const;
    void take(std::shared_ptr<RowStore> loaded);
    void loadAnew();
    void release();
    void discardPending();
    /// Makes the row current, read anew; at the end of the set there is nothing to read.
    void stand(int row);
    void keep(const RowImage &image);
    /// After a writing, which no failed reading makes undone: then the row is read when it is asked for.
    void standOnWritten(int row, Then then = Then::GoOn);
    /// An image that is no longer what the server holds, as after a rollback of what this desk wrote.
    void refreshUndone();
    /// Opens the list again, on the same row and with what is pending.
    void reload();

    /// Whether rows can be written: under a lock, keyed ones that are not read whole, or such as are known by their content.
    bool takesEdits() const
    {
        return lock == LockType::Optimistic && ((rows->keyed() && !rows->readWhole()) || rows->byContent());
    }
    int column(const QString &field) const; ///< raises InvalidCall when absent
    const Column *writable(const QString &field) const;

    void insertRow(Then then);
    void updateRow(Then then);
    void deleteRow();

private:
    enum class Compared { Assigned, All };
    void addConditions(Command &command, Compared compared) const;
    void addContent(Command &command) const;
    void addContentOfOneRow(Command &command) const;
    void requireAnswers() const;
    void requireTouched(int touched) const;
};

} // namespace ado
