#include "bench/Table.h"

#include <algorithm>
#include <cstdio>
#include <regex>

namespace bench {

void Table::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        const std::string name = run.run_name.function_name;
        if (run.error_occurred) {
            std::fprintf(stderr, "%s: %s\n", name.c_str(), run.error_message.c_str());
            failed_ = true;
        } else if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
            medians_[name] = run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1000;
            std::fprintf(stderr, "%-44s %10.3f ms\n", name.c_str(), medians_[name]);
        }
    }
}

void Table::takeMedians()
{
    for (auto &[name, times] : times_) {
        const auto middle = times.begin() + std::ptrdiff_t(times.size() / 2);
        std::ranges::nth_element(times, middle);
        medians_[name] = *middle;
    }
}

bool Table::print()
{
    takeMedians();
    std::printf(
        "| what | measured | bare API | ratio | stock model | ratio | limit |\n|---|---:|---:|---:|---:|---:|---:|\n");
    bool kept = !failed_;
    for (const Line &line : lines_) {
        if (const auto median = medians_.find(line.measured); median != medians_.end())
            kept = print(line, median->second) && kept;
    }
    return kept;
}

void Table::printGrowth(long from, long to)
{
    takeMedians();
    const std::string small = std::to_string(from), great = std::to_string(to);
    std::printf("| what | %s | %s | ratio | bare API, %s | %s | ratio |\n|---|---:|---:|---:|---:|---:|---:|\n",
                small.c_str(), great.c_str(), small.c_str(), great.c_str());
    const auto printPair = [&](std::string name) {
        const auto before = medians_.find(name);
        std::string grown = name + '/';
        if (const std::size_t place = grown.find('/' + small + '/'); place != std::string::npos)
            grown.replace(place + 1, small.size(), great);
        grown.pop_back();
        const auto after = medians_.find(grown);
        if (grown == name || before == medians_.end() || after == medians_.end())
            return false;
        std::printf(" %.3g ms | %.3g ms | %.2f |", before->second, after->second, after->second / before->second);
        return true;
    };
    static const std::regex sizes(", [0-9,]+ (orders|patients)");
    for (const Line &line : lines_) {
        if (line.measured.find('/' + great) != std::string::npos || !medians_.contains(line.measured))
            continue;
        std::printf("| %s |", std::regex_replace(line.what, sizes, "").c_str());
        printPair(line.measured);
        std::printf(printPair(line.bare) ? "\n" : " | | |\n");
    }
}

/// Prints two cells and gives the ratio, 0 where there is nothing to compare with.
double Table::printRatio(const std::string &other, double median) const
{
    const auto compared = medians_.find(other);
    if (compared == medians_.end()) {
        std::printf(" | |");
        return 0;
    }
    const double ratio = median / compared->second;
    std::printf(" %.3g ms | %.2f |", compared->second, ratio);
    return ratio;
}

bool Table::print(const Line &line, double median) const
{
    std::printf("| %s | %.3g ms |", line.what.c_str(), median);
    const double ratio = printRatio(line.bare, median);
    const double stockRatio = printRatio(line.stock, median);
    const bool missed = (line.limit > 0 && (line.bare.empty() ? median : ratio) > line.limit) || stockRatio > 1;
    if (line.limit > 0)
        std::printf(line.bare.empty() ? " %.0f ms" : " %.3g", line.limit);
    std::printf(missed ? " **missed** |\n" : " |\n");
    return !missed;
}

} // namespace bench
