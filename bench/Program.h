#pragma once

#include <functional>

namespace bench {

/// A program of benchmarks in settings of its own. `argc` and `argv` lose what Google Benchmark takes before the work is done,
/// which gives whether all limits were met; what it throws is told on standard error. Returns the program's status.
int runProgram(int &argc, char **argv, const char *name, const std::function<bool()> &work);

} // namespace bench
