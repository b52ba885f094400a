#pragma once

#include "bench/Table.h"
#include "platform/ado/Connection.h"

#include <functional>

namespace bench {

/// Something that the component does with the database, beside the same statements on the bare interface and, where there
/// is one, the toolkit's model. Each raises when it did not do its work.
struct Work
{
    std::string name; ///< of the benchmark
    std::string what; ///< in the table
    double limit = 0; ///< times the bare interface
    std::function<void()> run;
    std::function<void()> whole = {};        ///< all that the bare interface has to do, where `run` may do with less
    std::function<void()> stock = {};        ///< none where the toolkit has no model for it
    std::function<void()> prepare = {};      ///< before each run, not timed: brings the rows to where they were
    std::function<void()> prepareStock = {}; ///< the same for the model's own rows
    std::function<std::string()> state = {}; ///< what a run leaves in the database; none for reading
};

/// Checks that all ways leave the same in the database, then registers them with their line of the table.
void registerWork(const ado::ConnectionPtr &connection, Work work, Table &table);

/// "1,000,000".
std::string grouped(long number);

} // namespace bench
