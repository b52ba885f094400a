#include "bench/Table.h"

#include <algorithm>
#include <cstdio>

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

bool Table::print()
{
    for (auto &[name, times] : times_) {
        const auto middle = times.begin() + std::ptrdiff_t(times.size() / 2);
        std::ranges::nth_element(times, middle);
        medians_[name] = *middle;
    }
    std::printf(
        "| what | measured | bare API | ratio | stock model | ratio | limit |\n|---|---:|---:|---:|---:|---:|---:|\n");
    bool kept = !failed_;
    for (const Line &line : lines_) {
        if (const auto median = medians_.find(line.measured); median != medians_.end())
            kept = print(line, median->second) && kept;
    }
    return kept;
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
        std::printf(line.bare.empty() ? " %.0f ms" : " %.1f", line.limit);
    std::printf(missed ? " **missed** |\n" : " |\n");
    return !missed;
}

} // namespace bench
