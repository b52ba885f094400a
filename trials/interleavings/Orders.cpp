#include "trials/interleavings/Orders.h"

#include <algorithm>

namespace trial {

Orders::Orders(int most, int mostInterruptions, unsigned seed)
    : waiting_(1, {{}})
    , random_(seed)
    , most_(most)
    , mostInterruptions_(mostInterruptions)
{
}

std::optional<std::vector<int>> Orders::next()
{
    const auto level = std::ranges::find_if(waiting_, [](const auto &orders) { return !orders.empty(); });
    if (level == waiting_.end() || level - waiting_.begin() > mostInterruptions_ || count_ == most_)
        return std::nullopt;
    std::swap((*level)[random_() % level->size()], level->back());
    given_ = std::move(level->back());
    level->pop_back();
    ++count_;
    return given_;
}

void Orders::ran(const std::vector<Choice> &choices)
{
    std::vector<int> first;
    std::size_t interruptions = 0;
    for (const Choice &choice : choices) {
        for (int desk = 0; first.size() >= given_.size() && (choice.able >> desk) != 0; ++desk) {
            if (desk == choice.taken || !(choice.able & (1U << desk)))
                continue;
            const std::size_t level = interruptions + choice.interrupts(desk);
            if (waiting_.size() <= level)
                waiting_.resize(level + 1);
            waiting_[level].push_back(first);
            waiting_[level].back().push_back(desk);
        }
        interruptions += choice.interrupts(choice.taken);
        first.push_back(choice.taken);
    }
}

int Orders::completeUpTo() const
{
    const auto level = std::ranges::find_if(waiting_, [](const auto &orders) { return !orders.empty(); });
    return level == waiting_.end() ? everyOrder : int(level - waiting_.begin()) - 1;
}

} // namespace trial
