#pragma once

#include <QHash>
#include <QString>

#include <cstdint>
#include <vector>

namespace ado {

/// Where the rows of long lists stood when they were last read. No more than a guess for the next reading, which tells by
/// the rows themselves whether they still stand so: a window that opens sorts nothing that the one before it sorted.
class KnownOrders
{
public:
    using Rows = std::vector<std::uint32_t>;

    /// Empty where nothing is known.
    Rows of(const QString &statement) const { return orders_.value(statement); }

    void remember(const QString &statement, const Rows &order)
    {
        constexpr std::size_t long_ = 1000;
        constexpr qsizetype most = 8;
        if (order.size() < long_)
            return;
        if (orders_.size() == most && !orders_.contains(statement))
            orders_.clear();
        orders_.insert(statement, order);
    }

private:
    QHash<QString, Rows> orders_;
};

} // namespace ado
