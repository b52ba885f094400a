#include "bench/Table.h"

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

bool Table::print() const
{
    std::printf("| what | measured | bare API | ratio | limit |\n|---|---:|---:|---:|---:|\n");
    bool kept = !failed_;
    for (const Line &line : lines_) {
        if (const auto median = medians_.find(line.measured); median != medians_.end())
            kept = print(line, median->second) && kept;
    }
    return kept;
}

bool Table::print(const Line &line, double median) const
{
    const auto bare = medians_.find(line.bare);
    const bool compared = bare != medians_.end();
    const double ratio = compared ? median / bare->second : 0;
    const bool missed = line.limit > 0 && (line.bare.empty() ? median : ratio) > line.limit;

    std::printf("| %s | %.3g ms |", line.what.c_str(), median);
    if (compared)
        std::printf(" %.3g ms | %.2f |", bare->second, ratio);
    else
        std::printf(" | |");
    if (line.limit > 0)
        std::printf(line.bare.empty() ? " %.0f ms%s |\n" : " %.1f%s |\n", line.limit, missed ? " **missed**" : "");
    else
        std::printf(" |\n");
    return !missed;
}

} // namespace bench
