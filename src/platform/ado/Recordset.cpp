#include "platform/ado/Recordset.h"

#include "platform/ado/ConnectionPrivate.h"
#include "platform/ado/RecordsetPrivate.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/ProgramThread.h"
#include "platform/runtime/RuntimeError.h"

#include <QPointer>

#include <algorithm>

namespace ado {

using runtime::ErrorNumber;
using runtime::RuntimeError;

RowStore &Recordset::Private::open() const
{
    if (!rows)
        throw RuntimeError(ErrorNumber::ObjectClosed, QStringLiteral("목록이 열려 있지 않습니다."));
    runtime::demandProgramThread();
    return *rows;
}

void Recordset::Private::requireCurrent() const
{
    open();
    if (!atRow() && !adding)
        throw RuntimeError(ErrorNumber::NoCurrentRow, QStringLiteral("선택된 행이 없습니다."));
    if (!adding && current.gone())
        raiseConflict();
}

std::shared_ptr<RowStore> Recordset::Private::load(const RowStore *before) const
{
    if (!connection)
        throw RuntimeError(ErrorNumber::ObjectClosed, QStringLiteral("데이터베이스에 연결되어 있지 않습니다."));
    SelectShape shape(source, connection->layer().driver->dialect());
    bool keyset = cursor == CursorType::Keyset && location == CursorLocation::Server;
    if (keyset && shape.base() && !shape.base()->keyIsTold) {
        keyset = lock == LockType::Optimistic;
        if (keyset)
            shape.setKey(connection->layer().realKeyOf(*shape.base()));
    }
    return std::make_shared<RowStore>(connection, shape, keyset, before,
                                      before && extent == RowStore::Extent::FirstRows ? RowStore::Extent::All : extent);
}

void Recordset::Private::take(std::shared_ptr<RowStore> loaded)
{
    discardPending();
    release();
    rows = std::move(loaded);
    rows->attach(&position);
    position = 0;
    keep(atRow() ? rows->image(0) : RowImage());
}

void Recordset::Private::loadAnew()
{
    open();
    discardPending();
    const std::shared_ptr<RowStore> old = rows;
    take(load(old.get()));
    old->drop();
}

void Recordset::Private::release()
{
    if (rows)
        rows->detach(&position);
    rows.reset();
}

void Recordset::Private::discardPending()
{
    adding = false;
    assigned.clear();
}

void Recordset::Private::stand(int row)
{
    const bool inside = row >= 0 && row < rows->count();
    const bool asRead = rows->readWhole() || looksOnly;
    const RowImage image = !inside ? RowImage() : asRead ? rows->image(row) : rows->readAgain(row);
    discardPending();
    position = inside ? row : rows->count();
    keep(image);
}

void Recordset::Private::keep(const RowImage &image)
{
    current = image;
    currentReadIn = connection->layer().startedSerial();
    currentIsUndone = false;
}

void Recordset::Private::standOnWritten(int row, Then then)
{
    Connection::Private &layer = connection->layer();
    if (then == Then::Commit)
        layer.commitBehindNext();
    runtime::Attempt read;
    read([&] { stand(row); });
    layer.driver->commitBehindNext(false);
    if (!read.failed())
        return;
    discardPending();
    position = row;
    keep({});
    currentIsUndone = true;
}

void Recordset::Private::refreshUndone()
{
    if (currentIsUndone && atRow() && !adding && assigned.empty())
        keep(looksOnly ? rows->image(position) : rows->readAgain(position));
}

void Recordset::Private::reload()
{
    const Bookmark key = atRow() ? rows->key(position) : Bookmark();
    const bool wasAdding = adding;
    std::map<const Column *, QVariant> pending = assigned;
    take(load(rows.get()));
    const int row = key.isValid() ? rows->find(key) : -1;
    position = row >= 0 ? row : rows->count();
    keep(atRow() ? rows->image(position) : RowImage());
    adding = wasAdding;
    assigned = std::move(pending);
}

int Recordset::Private::column(const QString &field) const
{
    const int index = open().columnIndex(field);
    if (index < 0)
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("목록에 '%1' 항목이 없습니다.").arg(field));
    return index;
}

Recordset::Recordset(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
}

Recordset::~Recordset() = default;

void Recordset::setCursorLocation(CursorLocation location)
{
    d->location = location;
}

void Recordset::openWithFirstRows()
{
    d->extent = RowStore::Extent::FirstRows;
}

void Recordset::openWithKeptRows()
{
    d->extent = RowStore::Extent::Kept;
}

bool Recordset::hasAllRows() const
{
    return d->open().hasAllRows();
}

void Recordset::Open(const QString &source, const ConnectionPtr &connection, CursorType cursor, LockType lock)
{
    if (d->rows)
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("목록이 이미 열려 있습니다."));
    d->source = source;
    d->connection = connection;
    d->cursor = cursor;
    d->lock = lock;
    d->take(d->load());
    watchRollbacks();
    announceRows();
}

void Recordset::watchRollbacks()
{
    disconnect(d->rollbackBond);
    d->rollbackBond = connect(&d->connection->layer().rollbacks, &Rollbacks::happened, this,
                              [this](quint64 transaction) { afterRollback(transaction); });
}

/// Raises no rowChanged: nothing was chosen, and the handlers of one would wipe what the user typed.
void Recordset::afterRollback(quint64 transaction)
{
    if (!d->rows)
        return;
    d->currentIsUndone = d->currentIsUndone || d->currentReadIn >= transaction;
    const RowStore::Undone undone = d->rows->undo(transaction);
    if (undone.loaded && !d->looksOnly) {
        runtime::Attempt attempt; // a server that is gone is told by the next reading
        attempt([this] { d->reload(); });
        emit rowsReset();
    } else if (undone.membership) {
        emit rowsReset();
    } else {
        const QPointer<Recordset> alive(this);
        for (std::size_t at = 0; alive && at < undone.rows.size(); ++at)
            emit rowRead(undone.rows[at]);
    }
}

void Recordset::announceRows()
{
    const QPointer<Recordset> alive(this);
    emit rowsReset();
    if (alive)
        emit rowChanged();
}

void Recordset::Close()
{
    if (!d->rows)
        return;
    d->open();
    disconnect(d->rollbackBond);
    d->discardPending();
    d->release();
    emit rowsReset();
}

bool Recordset::isOpen() const
{
    return d->rows != nullptr;
}

const QString &Recordset::source() const
{
    return d->source;
}

void Recordset::Requery()
{
    d->loadAnew();
    announceRows();
}

bool Recordset::requeryAt(const Bookmark &key)
{
    d->loadAnew();
    const int row = d->rows->find(key);
    d->stand(row);
    announceRows();
    return row >= 0;
}

void Recordset::Resync()
{
    if (!d->open().keyed())
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("이 목록은 새로 가져올 수 없습니다."));
    d->discardPending();
    if (!d->atRow())
        d->requireCurrent();
    d->keep(d->rows->readAgain(d->position));
    const bool gone = d->current.gone();
    emit rowRead(d->position);
    if (gone)
        d->requireCurrent();
}

bool Recordset::Bof() const
{
    return d->open().count() == 0 && !d->adding;
}

bool Recordset::Eof() const
{
    return d->position >= d->open().count() && !d->adding;
}

bool Recordset::isGone() const
{
    return d->atRow() && !d->adding && !d->currentIsUndone && d->current.gone();
}

void Recordset::MoveFirst()
{
    moveTo(0);
}

void Recordset::MoveNext()
{
    if (d->position >= d->open().count())
        throw RuntimeError(ErrorNumber::NoCurrentRow, QStringLiteral("마지막 행을 지났습니다."));
    moveTo(d->position + 1);
}

void Recordset::moveTo(int row)
{
    d->open();
    d->stand(row);
    const QPointer<Recordset> alive(this);
    if (d->atRow() && !d->rows->readWhole() && !d->looksOnly)
        emit rowRead(d->position);
    if (alive)
        emit rowChanged();
}

bool Recordset::moveToKey(const Bookmark &key)
{
    const int row = d->open().find(key, d->position);
    if (row < 0)
        return false;
    if (row != currentRow() || d->adding) {
        const RowImage image = d->rows->readWhole() || d->looksOnly ? d->rows->image(row) : d->rows->readAgain(row);
        if (image.gone())
            return false;
        moveTo(row);
    }
    return !isGone();
}

QStringList Recordset::fieldNames() const
{
    QStringList names;
    for (const ResultColumn &column : d->open().columns())
        names << column.name;
    return names;
}

int Recordset::columnIndex(const QString &field) const
{
    return d->open().columnIndex(field);
}

QVariant Recordset::value(const QString &field) const
{
    const int column = d->column(field);
    d->refreshUndone();
    if (const Column *own = d->rows->shape().baseColumn(field)) {
        if (const auto pending = d->assigned.find(own); pending != d->assigned.end())
            return pending->second;
    }
    if (d->adding)
        return {};
    d->requireCurrent();
    return d->current.value(column);
}

Bookmark Recordset::bookmark() const
{
    if (d->adding)
        return {};
    return bookmarkAt(currentRow());
}

void Recordset::setBookmark(const Bookmark &key)
{
    moveTo(std::max(d->open().find(key, d->position), 0));
}

std::unique_ptr<Recordset> Recordset::Clone() const
{
    d->open();
    auto clone = std::make_unique<Recordset>();
    clone->d->source = d->source;
    clone->d->connection = d->connection;
    clone->d->cursor = d->cursor;
    clone->d->lock = d->lock;
    clone->d->location = d->location;
    clone->d->looksOnly = true;
    clone->d->take(d->rows);
    clone->watchRollbacks();
    return clone;
}

void Recordset::Sort(const QString &order)
{
    if (!d->open().readWhole() || d->rows->byContent())
        throw RuntimeError(ErrorNumber::InvalidCall, QStringLiteral("이 목록은 정렬할 수 없습니다."));
    std::vector<OrderColumn> columns;
    for (const QString &part : order.split(u',', Qt::SkipEmptyParts)) {
        QString field = part.trimmed();
        const auto endsWith = [&](QLatin1String word) { return field.endsWith(word, Qt::CaseInsensitive); };
        const bool descending = endsWith(QLatin1String(" DESC"));
        if (descending || endsWith(QLatin1String(" ASC")))
            field = field.left(field.lastIndexOf(u' ')).trimmed();
        if (field.startsWith(u'[') && field.endsWith(u']'))
            field = field.sliced(1, field.size() - 2);
        columns.push_back({d->column(field), descending});
    }
    d->rows->sort(columns);
    d->stand(0);
    announceRows();
}

int Recordset::rowCount() const
{
    return d->rows ? d->rows->count() : 0;
}

int Recordset::currentRow() const
{
    return d->atRow() ? d->position : -1;
}

Bookmark Recordset::bookmarkAt(int row) const
{
    return row >= 0 && row < rowCount() ? d->rows->key(row) : Bookmark();
}

QVariant Recordset::valueAt(int row, int column) const
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= static_cast<int>(d->rows->columns().size()))
        return {};
    return d->rows->value(row, column);
}

} // namespace ado
