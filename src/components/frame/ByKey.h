#pragma once

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <vector>

namespace statistics {

/// Values by keys, whole numbers mostly. Rows often come by key, so the last one is looked at before all others.
template <typename Value, typename Key = int, typename Hash = std::hash<Key>>
class ByKey
{
public:
    using Values = std::unordered_map<Key, Value, Hash>;

    void clear()
    {
        values_.clear();
        last_ = nullptr;
    }
    Value *find(const Key &key)
    {
        if (!last_ || last_->first != key) {
            const auto found = values_.find(key);
            if (found == values_.end())
                return nullptr;
            last_ = &*found;
        }
        return &last_->second;
    }
    const Value *find(const Key &key) const
    {
        const auto found = values_.find(key);
        return found != values_.end() ? &found->second : nullptr;
    }
    /// A new one where there is none.
    Value &operator[](const Key &key)
    {
        if (!last_ || last_->first != key)
            last_ = &*values_.try_emplace(key).first;
        return last_->second;
    }

    /// By rising keys; as long as nothing is cleared.
    std::vector<const typename Values::value_type *> inOrder() const
    {
        std::vector<const typename Values::value_type *> all;
        all.reserve(values_.size());
        for (const auto &one : values_)
            all.push_back(&one);
        std::sort(all.begin(), all.end(), [](const auto *a, const auto *b) { return a->first < b->first; });
        return all;
    }

private:
    Values values_;
    typename Values::value_type *last_ = nullptr;
};

} // namespace statistics
