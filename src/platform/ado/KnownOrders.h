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
        if (order.size() < LongList)
            return;
        if (orders_.size() == MostLists && !orders_.contains(statement))
            orders_.clear();
        orders_.insert(statement, order);
    }

private:
    static constexpr std::size_t LongList = 1000;
    static constexpr qsizetype MostLists = 8;

    QHash<QString, Rows> orders_;
};

} // namespace ado
