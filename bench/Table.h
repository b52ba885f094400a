#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace bench {

/// One line of the table: a limit in milliseconds, or as a multiple of what the bare database interface takes. What the
/// toolkit's own model takes is never to be exceeded.
struct Line
{
    std::string what;
    std::string measured;   ///< name of the benchmark
    std::string bare;       ///< name of the benchmark it is compared with; empty where the limit is a time
    double limit = 0;       ///< 0: for information
    std::string stock = {}; ///< name of the benchmark of the toolkit's model; empty where it has none for the work
};

/// Collects the medians of a run and prints them against their limits.
class Table : public benchmark::BenchmarkReporter
{
public:
    void add(Line line) { lines_.push_back(std::move(line)); }
    /// One more time that a benchmark took itself, in milliseconds: the median of all of them is its figure.
    void addTime(const std::string &name, double milliseconds) { times_[name].push_back(milliseconds); }

    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override;

    /// Prints the lines that were measured; false when a limit was missed or a benchmark failed.
    bool print();
    /// Prints, without limits, the lines that were measured at both numbers of orders, which stand in their names: what
    /// the greater takes, times the smaller.
    void printGrowth(long from, long to);

private:
    void takeMedians();
    bool print(const Line &line, double median) const;
    double printRatio(const std::string &other, double median) const;

    std::vector<Line> lines_;
    std::map<std::string, double> medians_; ///< milliseconds
    std::map<std::string, std::vector<double>> times_;
    bool failed_ = false;
};

} // namespace bench
