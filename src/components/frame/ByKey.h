#pragma once

#include <map>

namespace statistics {

/// Values by keys, whole numbers mostly, in their order. Rows mostly come by key, so the next places are looked at before all others
/// are searched.
template <typename Value, typename Key = int>
class ByKey
{
public:
    void clear()
    {
        values_.clear();
        last_ = values_.end();
    }
    Value *find(const Key &key)
    {
        const auto at = seek(key);
        return at != values_.end() && at->first == key ? &at->second : nullptr;
    }
    const Value *find(const Key &key) const
    {
        const auto at = values_.find(key);
        return at != values_.end() ? &at->second : nullptr;
    }
    /// A new one where there is none.
    Value &operator[](const Key &key)
    {
        const auto at = seek(key);
        if (at == values_.end() || at->first != key)
            last_ = values_.emplace_hint(at, key, Value());
        return last_->second;
    }

    auto begin() const { return values_.begin(); }
    auto end() const { return values_.end(); }

private:
    using Values = std::map<Key, Value>;
    static constexpr int near = 8;

    /// The first that is not below the key.
    typename Values::iterator seek(const Key &key)
    {
        int steps = 0;
        if (last_ == values_.end() || last_->first > key)
            steps = near;
        for (; steps < near && last_ != values_.end() && last_->first < key; ++steps)
            ++last_;
        if (steps == near)
            last_ = values_.lower_bound(key);
        return last_;
    }

    Values values_;
    typename Values::iterator last_ = values_.end();
};

} // namespace statistics
