#include "platform/ado/RowSequence.h"

#include <algorithm>
#include <utility>

namespace ado {

RowSequence::Row RowSequence::at(int row) const
{
    constexpr std::size_t screen = 64; ///< rows, about what a grid shows
    const auto place = static_cast<std::size_t>(row);
    const bool isLong = pending_ && pending_->count > 2 * screen;
    if (isLong && rows_.empty() && place < screen)
        rows_ = pending_->ordering.first(screen);
    if (pending_ && place >= rows_.size())
        settle();
    return rows_.at(place);
}

const RowSequence::Rows &RowSequence::all() const
{
    settle();
    return rows_;
}

const RowSequence::Rows &RowSequence::loaded() const
{
    settle();
    return loaded_;
}

RowSequence RowSequence::likeLoaded() const
{
    RowSequence other(*this);
    if (!pending_)
        other.rows_ = loaded_;
    return other;
}

void RowSequence::load(Rows rows)
{
    pending_.reset();
    rows_ = std::move(rows);
    loaded_ = rows_;
}

void RowSequence::loadLater(RowOrdering ordering, std::function<void(const Rows &)> known)
{
    load({});
    const std::size_t count = ordering.count();
    pending_ = std::make_shared<Pending>(Pending{std::move(ordering), std::move(known), count});
}

void RowSequence::settle() const
{
    if (!pending_)
        return;
    const std::shared_ptr<Pending> settled = std::exchange(pending_, nullptr);
    if (!settled->all) {
        settled->all = settled->ordering.all();
        settled->known(*settled->all);
    }
    rows_ = loaded_ = *settled->all;
}

int RowSequence::remove(int row)
{
    settle();
    const auto stood = std::ranges::find(loaded_, rows_.at(static_cast<std::size_t>(row)));
    const auto place = static_cast<int>(stood - loaded_.begin());
    loaded_.erase(stood);
    rows_.erase(rows_.begin() + row);
    return place;
}

void RowSequence::insert(int row, Row inserted, int loadedRow)
{
    settle();
    rows_.insert(rows_.begin() + row, inserted);
    loaded_.insert(loaded_.begin() + std::min(loadedRow, static_cast<int>(loaded_.size())), inserted);
}

void RowSequence::append(Row row)
{
    settle();
    rows_.push_back(row);
    loaded_.push_back(row);
}

void RowSequence::sort(Rows rows)
{
    settle();
    rows_ = std::move(rows);
}

void RowSequence::asLoaded()
{
    settle();
    rows_ = loaded_;
}

} // namespace ado
