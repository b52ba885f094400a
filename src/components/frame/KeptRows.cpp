#include "components/frame/KeptRows.h"

namespace statistics {

KeptRows &KeptRows::ofComponent()
{
    static KeptRows rows;
    return rows;
}

KeptRows::Slices KeptRows::find(const ado::ConnectionPtr &connection, const QByteArray &state,
                                const QString &statement) const
{
    const bool same = !state.isEmpty() && state == state_ && connection_.lock() == connection;
    return same ? rows_.value(statement) : Slices();
}

void KeptRows::keep(const ado::ConnectionPtr &connection, const QByteArray &state, QHash<QString, Slices> rows)
{
    connection_ = connection;
    state_ = state;
    rows_ = std::move(rows);
}

} // namespace statistics
