#pragma once

#include <functional>

namespace ado {

/// A piece of work that asks nothing of a database, to be done while the next answer of a server travels instead of behind it.
/// It may come to nothing: no server is asked as long as this stands, or the work fails. Whoever needs it looks, and does it.
class Meanwhile
{
public:
    explicit Meanwhile(std::function<void()> work);
    ~Meanwhile();
    Meanwhile(const Meanwhile &) = delete;
    Meanwhile &operator=(const Meanwhile &) = delete;

private:
    friend void doMeanwhile();
    std::function<void()> work_;
};

} // namespace ado
