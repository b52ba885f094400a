#include "bench/Work.h"

#include "bench/BareStatement.h"
#include "bench/StatementTrace.h"
#include "session/modGlobalVars.h"

#include <memory>
#include <stdexcept>

namespace bench {

namespace {

void call(const std::function<void()> &optional)
{
    if (optional)
        optional();
}

/// What stands in the database after `way` was gone from the same beginning.
std::string stateAfter(const Work &work, const std::function<void()> &way)
{
    call(work.prepare);
    way();
    return work.state ? work.state() : std::string();
}

void checkSame(const Work &work, const StatementTrace &trace)
{
    const std::string before = stateAfter(work, [] {});
    const std::string after = stateAfter(work, work.run);
    const std::string bare = stateAfter(work, [&] { trace.replay(); });
    const std::string stock = work.stock ? stateAfter(work, [&] {
        call(work.prepareStock);
        work.stock();
    }) : after;
    if (work.state && (before == after || bare != after || stock != after))
        throw std::runtime_error(work.name + ": the ways do not leave the same:\n" + before + "\n" + after + "\n" + bare + "\n" + stock);
    call(work.prepare);
}

void registerWay(const std::string &name, const ado::ConnectionPtr &connection, std::function<void()> prepare,
                 std::function<void()> way)
{
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
        gcnnMasterDB = connection;
        for (auto _ : state) {
            if (prepare) {
                state.PauseTiming();
                prepare();
                state.ResumeTiming();
            }
            way();
        }
        if (prepare)
            prepare();
        gcnnMasterDB.reset();
    })->UseRealTime();
}

} // namespace

void registerWork(const ado::ConnectionPtr &connection, Work work, Table &table)
{
    gcnnMasterDB = connection;
    call(work.prepare);
    const auto trace = std::make_shared<StatementTrace>(bareHandle(*connection), work.run);
    checkSame(work, *trace);
    registerWay(work.name + "/component", connection, work.prepare, work.run);
    registerWay(work.name + "/bare", connection, work.prepare, [trace] { trace->replay(); });
    if (work.stock) {
        const auto prepare = [work] {
            call(work.prepare);
            call(work.prepareStock);
        };
        registerWay(work.name + "/stock", connection, work.prepare || work.prepareStock ? std::function<void()>(prepare) : nullptr,
                    work.stock);
    }
    table.add({work.what, work.name + "/component", work.name + "/bare", work.limit, work.stock ? work.name + "/stock" : ""});
    gcnnMasterDB.reset();
}

std::string grouped(long number)
{
    std::string text = std::to_string(number);
    for (auto place = std::ptrdiff_t(text.size()) - 3; place > 0; place -= 3)
        text.insert(std::size_t(place), ",");
    return text;
}

} // namespace bench
