#include "platform/ado/Foresight.h"

#include "platform/ado/ConnectionPrivate.h"
#include "platform/ado/RecordsetPrivate.h"

#include <QHash>

#include <utility>

namespace ado {

namespace {

QHash<const Driver *, int> standing; ///< that tell each

} // namespace

struct Foresight::Private
{
    ConnectionPtr connection;
    Driver &driver;
    const Behind behind;
    std::vector<Command> next = {};
    bool known = true; ///< all that comes, so far
};

Foresight::Foresight(ConnectionPtr connection, Behind behind)
{
    if (!connection || !RowStore::driverOf(*connection).looksAhead())
        return;
    Driver &driver = RowStore::driverOf(*connection);
    d = std::make_unique<Private>(Private{std::move(connection), driver, behind});
    ++standing[&driver];
}

Foresight::Foresight(Foresight &&) noexcept = default;

Foresight::~Foresight()
{
    if (!d)
        return;
    if (d->behind == Behind::Commit)
        d->driver.foreseeBehindCommit({});
    if (--standing[&d->driver] > 0)
        return;
    standing.remove(&d->driver);
    d->driver.foresee({});
}

bool Foresight::isOfFarServer() const
{
    return d && d->driver.isFar();
}

Foresight &Foresight::open(const QString &source, CursorType cursor)
{
    if (!d || !d->known)
        return *this;
    const SelectShape shape(source, d->driver.dialect());
    const bool keyset = cursor == CursorType::Keyset;
    d->known = !keyset || !shape.base() || shape.base()->keyIsTold; // else the catalogue is asked in between
    if (!d->known)
        return *this;
    add(RowStore::readings(d->driver, shape, keyset));
    return *this;
}

Foresight &Foresight::row(const Recordset &list, int row)
{
    if (d && d->known && list.isOpen() && list.d->rows->keyed() && row >= 0 && row < list.rowCount())
        add({list.d->rows->readingOf(row)});
    return *this;
}

Foresight &Foresight::hold(const QString &table, const QString &key, qint32 value, const QString &also)
{
    if (d && d->known)
        add({d->connection->layer().holding(table, key, value, also)});
    return *this;
}

Foresight &Foresight::read(const QString &statement)
{
    if (d && d->known)
        add({d->driver.command() << statement});
    return *this;
}

void Foresight::send()
{
    if (d && d->behind == Behind::Statement)
        d->driver.sendForeseen();
}

std::vector<qint32> Foresight::keysThatCame(const QString &source) const
{
    const SelectShape shape(source, d ? d->driver.dialect() : Dialect::SQLite);
    const std::optional<CellTable> came = d && !shape.key().isEmpty()
                                              ? d->driver.cameFor(RowStore::readings(d->driver, shape, true).front())
                                              : std::nullopt;
    std::vector<qint32> keys;
    for (int row = 0; came && row < came->rowCount(); ++row)
        keys.push_back(came->raw(row, 0).toInt()); // what is no number is told by whoever opens the list
    return keys;
}

void Foresight::add(const std::vector<Command> &readings)
{
    d->next.insert(d->next.end(), readings.begin(), readings.end());
    if (d->behind == Behind::Commit)
        d->driver.foreseeBehindCommit(d->next);
    else
        d->driver.foresee(d->next);
}

} // namespace ado
