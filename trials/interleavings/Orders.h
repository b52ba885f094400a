#pragma once

#include <array>
#include <optional>
#include <random>
#include <vector>

namespace trial {

/// Whose statement is next, as a run found it.
struct Choice
{
    int taken = 0;
    int before = -1;   ///< who went last, -1 at the beginning
    unsigned able = 0; ///< a bit for each desk that could have gone
    bool interrupts(int desk) const { return before >= 0 && desk != before && (able & (1U << before)); }
};

/// Every order of the statements of some desks, each once: those first in which the fewest desks are interrupted, that is,
/// have to wait although they could go on. An order is known by the first choices of it; from there on nobody is
/// interrupted.
class Orders
{
public:
    /// At most so many orders, and interruptions in one; of those with equally many drawn by the seed.
    Orders(int most, int mostInterruptions, unsigned seed);

    /// The first choices of the next order; nothing when there is none any more.
    std::optional<std::vector<int>> next();
    /// What came of the order that next() gave.
    void ran(const std::vector<Choice> &choices);

    int count() const { return count_; }
    /// Up to so many interruptions all orders were given; -1 when not even those without, `everyOrder` when there are no more.
    int completeUpTo() const;
    static constexpr int everyOrder = 99;

private:
    std::vector<std::vector<std::vector<int>>> waiting_; ///< by their interruptions
    std::vector<int> given_;
    std::mt19937 random_;
    int most_;
    int mostInterruptions_;
    int count_ = 0;
};

} // namespace trial
