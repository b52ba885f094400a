#pragma once

#include "platform/ado/CellTable.h"
#include "platform/ado/Connection.h"

#include <QHash>

#include <memory>
#include <vector>

namespace statistics {

/// The rows that a component's figures gave last, each figure under its statement. They are those of one state of the
/// database (ado::Connection::stateSign) and given out only while it has that state.
class KeptRows
{
public:
    using Slices = std::vector<std::shared_ptr<const ado::CellTable>>;

    /// One for all windows of a component: a report that is left and opened again is another window.
    static KeptRows &ofComponent();

    /// None where the state is unknown or another one.
    Slices find(const ado::ConnectionPtr &connection, const QByteArray &state, const QString &statement) const;
    /// In the place of what was kept before.
    void keep(const ado::ConnectionPtr &connection, const QByteArray &state, QHash<QString, Slices> rows);
    void forget() { *this = {}; }

private:
    std::weak_ptr<ado::Connection> connection_;
    QByteArray state_;
    QHash<QString, Slices> rows_;
};

} // namespace statistics
