#pragma once

#include "platform/ado/RowOrder.h"

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
    /// -1 when none of them is.
    int find(const std::function<bool(Row)> &isIt) const;

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

    void settle() const;

    mutable std::shared_ptr<Pending> pending_;
    mutable Rows rows_; ///< as long as there is something pending, the first ones
    mutable Rows loaded_;
};

} // namespace ado
