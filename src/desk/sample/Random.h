#pragma once

#include <cstdint>

namespace sample {

/// The same numbers on every machine and with every compiler, which the standard distributions do not promise.
class Random
{
public:
    explicit Random(std::uint64_t seed)
        : state_(seed)
    {
    }

    /// 0 to limit - 1.
    int below(int limit) { return int(next() % std::uint64_t(limit)); }
    int between(int low, int high) { return low + below(high - low + 1); }
    bool percent(int chance) { return below(100) < chance; }

    template <typename List>
    const auto &pick(const List &list)
    {
        return list[std::size_t(below(int(std::size(list))))];
    }

private:
    std::uint64_t next()
    {
        state_ += 0x9E3779B97F4A7C15u;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }

    std::uint64_t state_;
};

} // namespace sample
