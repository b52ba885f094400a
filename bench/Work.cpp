#include "bench/Work.h"

#include "bench/BareStatement.h"
#include "bench/StatementTrace.h"
#include "session/modGlobalVars.h"

#include <chrono>
#include <memory>
#include <stdexcept>
#include <vector>

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

/// `trace`: none on a server, which has no bare interface here.
void checkSame(const Work &work, const StatementTrace *trace)
{
    const std::string before = stateAfter(work, [] {});
    const std::string after = stateAfter(work, work.run);
    const std::string bare = trace ? stateAfter(work, [&] { trace->replay(); }) : after;
    const std::string stock = work.stock ? stateAfter(work,
                                                      [&] {
                                                          call(work.prepareStock);
                                                          work.stock();
                                                      })
                                         : after;
    if (work.state && (before == after || bare != after || stock != after))
        throw std::runtime_error(work.name + ": the ways do not leave the same:\n" + before + "\n" + after + "\n" + bare
                                 + "\n" + stock);
    call(work.prepare);
}

/// One way of doing the work.
struct Way
{
    std::string name; ///< in the table
    std::function<void()> prepare;
    std::function<void()> go;
};

double millisecondsOf(const std::function<void()> &way)
{
    const auto start = std::chrono::steady_clock::now();
    way();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The ways take turns, each time another one first: a disk or a neighbour that is slow for a while meets all of them.
void registerWays(const std::string &name, const ado::ConnectionPtr &connection, const std::vector<Way> &ways,
                  Table &table)
{
    benchmark::RegisterBenchmark(name.c_str(), [=, &table](benchmark::State &state) {
        gcnnMasterDB = connection;
        std::size_t first = 0;
        for (auto _ : state) {
            double all = 0;
            for (std::size_t at = 0; at < ways.size(); ++at) {
                const Way &way = ways[(first + at) % ways.size()];
                call(way.prepare);
                const double taken = millisecondsOf(way.go);
                table.addTime(way.name, taken);
                all += taken;
            }
            state.SetIterationTime(all / 1000);
            ++first;
        }
        call(ways.front().prepare);
        gcnnMasterDB.reset();
    })->UseManualTime();
}

} // namespace

void registerWork(const ado::ConnectionPtr &connection, Work work, Table &table)
{
    gcnnMasterDB = connection;
    call(work.prepare);
    std::shared_ptr<StatementTrace> trace;
    if (connection->engine() == ado::Engine::SQLite)
        trace = std::make_shared<StatementTrace>(bareHandle(*connection), work.whole ? work.whole : work.run);
    checkSame(work, trace.get());
    std::vector<Way> ways{{work.name + "/component", work.prepare, work.run}};
    if (trace)
        ways.push_back({work.name + "/bare", work.prepare, [trace] { trace->replay(); }});
    if (work.stock) {
        const auto prepare = [work] {
            call(work.prepare);
            call(work.prepareStock);
        };
        ways.push_back({work.name + "/stock", prepare, work.stock});
    }
    registerWays(work.name, connection, ways, table);
    table.add(
        {work.what, work.name + "/component", work.name + "/bare", work.limit, work.stock ? work.name + "/stock" : ""});
    gcnnMasterDB.reset();
}

std::string grouped(long number)
{
    std::string text = std::to_string(number);
    for (auto place = std::ptrdiff_t(text.size()) - 3; place > 0; place -= 3)
        text.insert(std::size_t(place), 1, ',');
    return text;
}

} // namespace bench
