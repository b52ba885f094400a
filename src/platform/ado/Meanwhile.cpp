#include "platform/ado/Meanwhile.h"

#include "platform/ado/Wait.h"

#include <utility>
#include <vector>

namespace ado {

namespace {

std::vector<Meanwhile *> waiting; ///< those that stand, whose work may be done

} // namespace

Meanwhile::Meanwhile(std::function<void()> work)
    : work_(std::move(work))
{
    waiting.push_back(this);
}

Meanwhile::~Meanwhile()
{
    std::erase(waiting, this);
}

void doMeanwhile()
{
    if (waiting.empty())
        return;
    Meanwhile *const next = waiting.front();
    waiting.erase(waiting.begin());
    const LetIn underWait;
    try {
        next->work_();
    } catch (...) {
        // The answers that travel must be read; the work fails once more where it is needed.
    }
}

} // namespace ado
