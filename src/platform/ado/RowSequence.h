#pragma once

#include "platform/ado/RowOrder.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace ado {

/// The rows of a list in their order, and as they stood when it was loaded. A long list is put in order as far as somebody
/// looks: a window shows its first screen, and the others wait until they are asked for. A copy waits for the same.
class RowSequence
{
public:
    using Row = std::uint32_t;
    using Rows = std::vector<Row>;

    int size() const { return static_cast<int>(pending_ ? pending_->count : rows_.size()); }
    /// `row` from 0 to below size().
    Row at(int row) const;
    const Rows &all() const;
    const Rows &loaded() const;
    RowSequence likeLoaded() const;
    /// The one row that is it, looked for from that place on and around; -1 when none is.
    template <typename IsIt>
    int find(const IsIt &isIt, int from = 0) const
    {
        const int found = findAmong(isIt, from);
        if (found >= 0 || !pending_)
            return found;
        settle();
        return findAmong(isIt, from);
    }

    void load(Rows rows);
    /// `known` is told the order when it is known, as long as this stands.
    void loadLater(RowOrdering ordering, std::function<void(const Rows &)> known);
    /// Where it stood when all were loaded.
    int remove(int row);
    void insert(int row, Row inserted, int loadedRow);
    void append(Row row);
    /// The same rows in another order.
    void sort(Rows rows);
    void asLoaded();

private:
    struct Pending
    {
        RowOrdering ordering;
        std::function<void(const Rows &)> known;
        std::size_t count;
        std::optional<Rows> all = {}; ///< since the first that waited for it asked
    };

    template <typename IsIt>
    int findAmong(const IsIt &isIt, int from) const
    {
        const auto middle = rows_.begin() + std::clamp(from, 0, static_cast<int>(rows_.size()));
        const auto behind = std::find_if(middle, rows_.end(), isIt);
        if (behind != rows_.end())
            return static_cast<int>(behind - rows_.begin());
        const auto before = std::find_if(rows_.begin(), middle, isIt);
        return before != middle ? static_cast<int>(before - rows_.begin()) : -1;
    }
    void settle() const;

    mutable std::shared_ptr<Pending> pending_;
    mutable Rows rows_; ///< as long as there is something pending, the first ones
    mutable Rows loaded_;
};

} // namespace ado
